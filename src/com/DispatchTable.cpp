#include "com/DispatchTable.h"

#include <oleauto.h>

#include <algorithm>
#include <cstring>
#include <memory>

#include "com/Component.h"
#include "com/Guard.h"
#include "com/Values.h"

namespace v5 {

namespace {

// The interface (vtable) view of a dual interface's type information.
ComPtr<ITypeInfo> VtableView(ITypeInfo& dispatchInfo) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> vtableInfo;
    Check(dispatchInfo.GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
    Check(dispatchInfo.GetRefTypeInfo(reference, &vtableInfo));
    return vtableInfo;
}

// Follows aliases and names to the type that a VARIANT would hold; `iid` gets the interface of an object.
VARTYPE Resolve(ITypeInfo& info, const TYPEDESC& description, IID& iid) {
    if (description.vt == VT_PTR) {
        return Resolve(info, *description.lptdesc, iid);
    }
    if (description.vt != VT_USERDEFINED) {
        return description.vt;
    }
    ComPtr<ITypeInfo> named;
    TYPEATTR* attributes = nullptr;
    Check(info.GetRefTypeInfo(description.hreftype, &named));
    Check(named->GetTypeAttr(&attributes));
    const TYPEKIND kind = attributes->typekind;
    const TYPEDESC alias = attributes->tdescAlias;
    iid = attributes->guid;
    named->ReleaseTypeAttr(attributes);
    switch (kind) {
        case TKIND_ENUM:
            return VT_I4;
        case TKIND_ALIAS:
            return Resolve(*named.Get(), alias, iid);
        case TKIND_DISPATCH:
            return VT_DISPATCH;
        default:
            return VT_UNKNOWN;
    }
}

bool IsObject(VARTYPE type) {
    return type == VT_DISPATCH || type == VT_UNKNOWN;
}

// How many pointers stand before the type: an object by value has one, an object by reference two.
int PointerDepth(const TYPEDESC& description) {
    return description.vt == VT_PTR ? 1 + PointerDepth(*description.lptdesc) : 0;
}

DispatchMember ReadMember(ITypeInfo& info, const FUNCDESC& function) {
    DispatchMember member;
    member.id = function.memid;
    member.kind = function.invkind;
    member.vtableOffset = static_cast<ULONG_PTR>(function.oVft);
    for (int i = 0; i < function.cParams; ++i) {
        const ELEMDESC& element = function.lprgelemdescParam[i];
        const PARAMDESC& attributes = element.paramdesc;
        DispatchParameter parameter;
        parameter.type = Resolve(info, element.tdesc, parameter.iid);
        if ((attributes.wParamFlags & PARAMFLAG_FRETVAL) != 0) {
            member.result = parameter.type;
            continue;
        }
        const bool namedObject = element.tdesc.vt == VT_PTR && IsObject(parameter.type);
        parameter.byReference = PointerDepth(element.tdesc) > (namedObject ? 1 : 0);
        parameter.optional = (attributes.wParamFlags & PARAMFLAG_FOPT) != 0;
        if ((attributes.wParamFlags & PARAMFLAG_FHASDEFAULT) != 0) {
            parameter.optional = true;
            parameter.defaultValue = attributes.pparamdescex->varDefaultValue;
        }
        member.parameters.push_back(std::move(parameter));
    }
    return member;
}

// One argument on its way into the method: the value that the method sees, and the caller's variable behind it.
class Argument {
  public:
    // Converts `given`, the caller's argument, or takes the default when it is null or marked as omitted.
    HRESULT Take(const DispatchParameter& parameter, VARIANT* given, LCID locale) {
        mParameter = &parameter;
        if (given == nullptr || (V_VT(given) == VT_ERROR && V_ERROR(given) == DISP_E_PARAMNOTFOUND)) {
            return parameter.optional ? TakeDefault() : DISP_E_PARAMNOTOPTIONAL;
        }
        const bool isReference = (V_VT(given) & VT_BYREF) != 0;
        if (isReference && V_BYREF(given) == nullptr) {
            return E_POINTER;
        }
        if (isReference && parameter.byReference) {
            mCallers = given;
        }
        VARIANT plain;
        VariantInit(&plain);
        HRESULT status = VariantCopyInd(&plain, given);
        if (SUCCEEDED(status)) {
            status = Convert(plain, locale);
        }
        VariantClear(&plain);
        return status;
    }

    // The argument as DispCallFunc wants it.
    VARIANTARG Pass() {
        VARIANTARG passed;
        VariantInit(&passed);
        if (mParameter->byReference) {
            V_VT(&passed) = static_cast<VARTYPE>(mParameter->type | VT_BYREF);
            V_BYREF(&passed) = mParameter->type == VT_VARIANT ? static_cast<void*>(&mValue) : &V_BYREF(&mValue);
        } else {
            passed = static_cast<const VARIANT&>(mValue);  // a shallow copy: the argument stays the owner
        }
        return passed;
    }

    // After the call: the caller's variable gets what the method has left in the temporary.
    HRESULT GiveBack(LCID locale) {
        if (mCallers == nullptr) {
            return S_OK;
        }
        if (V_VT(mCallers) == (VT_BYREF | VT_VARIANT)) {
            return VariantCopy(V_VARIANTREF(mCallers), &mValue);
        }
        const auto type = static_cast<VARTYPE>(V_VT(mCallers) & ~VT_BYREF);
        const HRESULT status = VariantChangeTypeEx(&mValue, &mValue, locale, 0, type);
        return SUCCEEDED(status) ? MoveInto(type) : status;
    }

  private:
    HRESULT TakeDefault() {
        if (V_VT(&mParameter->defaultValue) == VT_EMPTY) {  // optional without a default: zero, false, no object
            V_VT(&mValue) = mParameter->type;
            return S_OK;
        }
        return VariantChangeType(&mValue, const_cast<_variant_t*>(&mParameter->defaultValue), 0, mParameter->type);
    }

    HRESULT Convert(VARIANT& plain, LCID locale) {
        if (mParameter->type == VT_VARIANT) {
            return VariantCopy(&mValue, &plain);
        }
        return IsObject(mParameter->type) ? ConvertObject(plain)
                                          : VariantChangeTypeEx(&mValue, &plain, locale, 0, mParameter->type);
    }

    // Nothing, Empty and Null are no object; any other object must have the interface.
    HRESULT ConvertObject(const VARIANT& plain) {
        V_VT(&mValue) = mParameter->type;
        if (V_VT(&plain) == VT_EMPTY || V_VT(&plain) == VT_NULL) {
            return S_OK;
        }
        if (!IsObject(V_VT(&plain))) {
            return DISP_E_TYPEMISMATCH;
        }
        IUnknown* object = V_UNKNOWN(&plain);
        if (object == nullptr) {
            return S_OK;
        }
        const IID wanted = mParameter->iid == IID_NULL
                               ? (mParameter->type == VT_DISPATCH ? IID_IDispatch : IID_IUnknown)
                               : mParameter->iid;
        return SUCCEEDED(object->QueryInterface(wanted, &V_BYREF(&mValue))) ? S_OK : DISP_E_TYPEMISMATCH;
    }

    // Moves the value into the typed variable that the caller's VT_BYREF argument points to.
    HRESULT MoveInto(VARTYPE type) {
        void* target = V_BYREF(mCallers);
        switch (type) {
            case VT_BSTR:
                std::swap(*static_cast<BSTR*>(target), V_BSTR(&mValue));
                return S_OK;
            case VT_I2:
            case VT_UI2:
            case VT_BOOL:
                std::memcpy(target, &V_I2(&mValue), sizeof(short));
                return S_OK;
            case VT_I4:
            case VT_UI4:
            case VT_INT:
            case VT_UINT:
            case VT_R4:
                std::memcpy(target, &V_I4(&mValue), sizeof(long));
                return S_OK;
            case VT_R8:
            case VT_DATE:
            case VT_CY:
            case VT_I8:
                std::memcpy(target, &V_R8(&mValue), sizeof(double));
                return S_OK;
            default:
                return DISP_E_TYPEMISMATCH;
        }
    }

    const DispatchParameter* mParameter = nullptr;
    VARIANT* mCallers = nullptr;
    _variant_t mValue;
};

// Finds the caller's argument for the parameter at `position`: by position first, then by name.
class CallersArguments {
  public:
    CallersArguments(const DISPPARAMS& arguments, bool isPropertyPut)
        : mArguments(arguments), mNamed(arguments.cNamedArgs), mPositional(arguments.cArgs - arguments.cNamedArgs) {
        if (isPropertyPut && mNamed == 1 && arguments.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT) {
            mNamed = 0;  // the new value of a property comes under a name of its own, as the last argument
            mPositional = arguments.cArgs;
        }
    }

    HRESULT CheckAgainst(const DispatchMember& member) const {
        const auto expected = static_cast<UINT>(member.parameters.size());
        if (mPositional + mNamed > expected) {
            return DISP_E_BADPARAMCOUNT;
        }
        for (UINT i = 0; i < mNamed; ++i) {
            const DISPID name = mArguments.rgdispidNamedArgs[i];
            if (name < 0 || static_cast<UINT>(name) >= expected || static_cast<UINT>(name) < mPositional) {
                return DISP_E_PARAMNOTFOUND;
            }
        }
        for (UINT i = mPositional; i < expected; ++i) {
            if (!member.parameters[i].optional && IndexOf(i) == kNone) {
                return DISP_E_BADPARAMCOUNT;
            }
        }
        return S_OK;
    }

    VARIANT* At(UINT position) const {
        const UINT index = IndexOf(position);
        return index == kNone ? nullptr : &mArguments.rgvarg[index];
    }

    // The index in the caller's array, as the error report names it.
    UINT IndexOf(UINT position) const {
        if (position < mPositional) {
            return mArguments.cArgs - 1 - position;
        }
        for (UINT i = 0; i < mNamed; ++i) {
            if (mArguments.rgdispidNamedArgs[i] == static_cast<DISPID>(position)) {
                return i;
            }
        }
        return kNone;
    }

    static constexpr UINT kNone = static_cast<UINT>(-1);

  private:
    const DISPPARAMS& mArguments;
    UINT mNamed;
    UINT mPositional;
};

HRESULT DescribeFailure(HRESULT status, EXCEPINFO* exception) {
    if (exception != nullptr) {
        std::memset(exception, 0, sizeof(*exception));
        ComPtr<IErrorInfo> info;
        if (GetErrorInfo(0, &info) == S_OK) {
            info->GetSource(&exception->bstrSource);
            info->GetDescription(&exception->bstrDescription);
            info->GetHelpFile(&exception->bstrHelpFile);
            info->GetHelpContext(&exception->dwHelpContext);
        }
        exception->scode = status;
    }
    return DISP_E_EXCEPTION;
}

}  // namespace

DispatchTable::DispatchTable(REFIID iid) {
    Check(ComponentTypeLibrary()->GetTypeInfoOfGuid(iid, &mDispatchInfo));
    const ComPtr<ITypeInfo> vtableInfo = VtableView(*mDispatchInfo.Get());
    TYPEATTR* attributes = nullptr;
    Check(vtableInfo->GetTypeAttr(&attributes));
    const UINT count = attributes->cFuncs;
    vtableInfo->ReleaseTypeAttr(attributes);
    mMembers.reserve(count);
    const auto release = [&](FUNCDESC* function) { vtableInfo->ReleaseFuncDesc(function); };
    for (UINT i = 0; i < count; ++i) {
        FUNCDESC* function = nullptr;
        Check(vtableInfo->GetFuncDesc(i, &function));
        const std::unique_ptr<FUNCDESC, decltype(release)> owner(function, release);
        mMembers.push_back(ReadMember(*vtableInfo.Get(), *function));
    }
}

HRESULT DispatchTable::GetIDsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const {
    return mDispatchInfo->GetIDsOfNames(names, count, ids);
}

const DispatchMember* DispatchTable::Find(DISPID id, WORD flags) const {
    const auto found = std::find_if(mMembers.begin(), mMembers.end(), [&](const DispatchMember& member) {
        return member.id == id && (member.kind & flags) != 0;
    });
    return found == mMembers.end() ? nullptr : &*found;
}

HRESULT DispatchTable::Invoke(void* object, DISPID id, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                              EXCEPINFO* exception, UINT* badArgument) const {
    if (arguments == nullptr) {
        return E_POINTER;
    }
    const DispatchMember* member = Find(id, flags);
    if (member == nullptr) {
        return DISP_E_MEMBERNOTFOUND;
    }
    const CallersArguments given(*arguments, member->kind == INVOKE_PROPERTYPUT);
    HRESULT status = given.CheckAgainst(*member);
    if (FAILED(status)) {
        return status;
    }
    const size_t count = member->parameters.size();
    std::vector<Argument> taken(count);
    for (UINT i = 0; i < count; ++i) {
        status = taken[i].Take(member->parameters[i], given.At(i), LOCALE_USER_DEFAULT);
        if (FAILED(status)) {
            if (badArgument != nullptr && given.IndexOf(i) != CallersArguments::kNone) {
                *badArgument = given.IndexOf(i);
            }
            return status;
        }
    }

    _variant_t answer;
    std::vector<VARIANTARG> passed;
    passed.reserve(count + 1);
    for (Argument& argument : taken) {
        passed.push_back(argument.Pass());
    }
    if (member->result != VT_EMPTY) {
        VARIANTARG out;
        V_VT(&out) = static_cast<VARTYPE>(member->result | VT_BYREF);
        V_BYREF(&out) = member->result == VT_VARIANT ? static_cast<void*>(&answer) : &V_BYREF(&answer);
        passed.push_back(out);
    }
    std::vector<VARTYPE> types;
    std::vector<VARIANTARG*> pointers;
    for (VARIANTARG& argument : passed) {
        types.push_back(V_VT(&argument));
        pointers.push_back(&argument);
    }

    SetErrorInfo(0, nullptr);
    VARIANT returned;
    VariantInit(&returned);
    status = DispCallFunc(object, member->vtableOffset, CC_STDCALL, VT_ERROR, static_cast<UINT>(passed.size()),
                          types.data(), pointers.data(), &returned);
    if (FAILED(status)) {
        return status;
    }
    if (member->result != VT_EMPTY && member->result != VT_VARIANT) {
        V_VT(&answer) = member->result;
    }
    if (FAILED(V_ERROR(&returned))) {
        return DescribeFailure(V_ERROR(&returned), exception);
    }
    for (Argument& argument : taken) {
        status = argument.GiveBack(LOCALE_USER_DEFAULT);
        if (FAILED(status)) {
            return status;
        }
    }
    if (result != nullptr) {
        *result = answer.Detach();
    }
    return S_OK;
}

}  // namespace v5
