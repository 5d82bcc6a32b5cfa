#include "com/DispatchTable.h"

#include <oleauto.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "com/Guard.h"

namespace v5 {

namespace {

// Whether a name of ours is the one that a client wants, whatever the case.
bool IsNamed(const char* name, const wchar_t* wanted) {
    const auto fold = [](wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 0x20) : c; };
    return wanted != nullptr && std::equal(name, name + std::strlen(name) + 1, wanted, [&](char ours, wchar_t theirs) {
               return fold(static_cast<wchar_t>(ours)) == fold(theirs);
           });
}

bool IsObject(VARTYPE type) {
    return type == VT_DISPATCH || type == VT_UNKNOWN;
}

// The bytes of a variable of a simple type; 0 for all other types.
size_t SizeOf(VARTYPE type) {
    switch (type) {
        case VT_I1:
        case VT_UI1:
            return 1;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            return 2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
            return 4;
        case VT_R8:
        case VT_DATE:
        case VT_CY:
        case VT_I8:
        case VT_UI8:
            return 8;
        default:
            return 0;
    }
}

// Whether a client's variable can take what a parameter of type `type` gives back.
bool CanHold(const VARIANT& variable, VARTYPE type) {
    const auto own = static_cast<VARTYPE>(V_VT(&variable) & ~VT_BYREF);
    const bool isVariant = (V_VT(&variable) & VT_BYREF) == 0 || own == VT_VARIANT;
    return isVariant || own == type || own == VT_BSTR || (type != VT_BSTR && (SizeOf(own) != 0 || own == VT_DECIMAL));
}

// The values of one call on their way into the method and back.
class Values {
  public:
    Values() = default;  // cppcheck-suppress uninitMemberVar ; each slot is set when its value is taken
    ~Values() {
        for (size_t i = 0; i < mCount; ++i) {
            if (mSlots[i].isOwned) {
                VariantClear(&mValues[i]);
            }
        }
    }
    Values(const Values&) = delete;
    Values& operator=(const Values&) = delete;

    VARIANT* All() { return mValues; }

    // Converts `given`, the caller's argument for the next parameter, or takes the default when it is null or marked as
    // omitted.
    HRESULT Take(const DispatchParameter& parameter, VARIANT* given) {
        VARIANT& value = mValues[mCount];
        Slot& slot = mSlots[mCount];
        ++mCount;
        slot = {nullptr, parameter.byReference};
        V_VT(&value) = VT_EMPTY;
        bool isVariable = false;
        if (given != nullptr && V_VT(given) == (VT_BYREF | VT_VARIANT)) {
            isVariable = true;
            given = V_VARIANTREF(given);
            if (given == nullptr) {
                return E_POINTER;
            }
        }
        const VARTYPE type = parameter.type.type;
        if (given == nullptr || (V_VT(given) == VT_ERROR && V_ERROR(given) == DISP_E_PARAMNOTFOUND)) {
            return parameter.optional ? TakeDefault(type, parameter.defaultValue, value) : DISP_E_PARAMNOTOPTIONAL;
        }
        if ((V_VT(given) & VT_BYREF) != 0) {
            isVariable = true;
            if (V_BYREF(given) == nullptr) {
                return E_POINTER;
            }
        }
        if (parameter.byReference && isVariable) {
            if (!CanHold(*given, type)) {
                return DISP_E_TYPEMISMATCH;
            }
            slot.variable = given;
        }
        // A text that only travels in is borrowed, unless its variable can change while the member is under way.
        const bool isBorrowed = type == VT_BSTR ? !isVariable && !parameter.byReference : SizeOf(type) != 0;
        if (V_VT(given) == type && isBorrowed) {
            value = *given;
            return S_OK;
        }
        slot.isOwned = true;
        if (type == VT_VARIANT) {
            return VariantCopyInd(&value, given);
        }
        return IsObject(type) ? TakeObject(parameter.type, *given, value)
                              : VariantChangeTypeEx(&value, given, LOCALE_USER_DEFAULT, 0, type);
    }

    // After the call: the caller's variable gets what the method has left.
    HRESULT GiveBack(size_t at) {
        VARIANT* variable = mSlots[at].variable;
        VARIANT& value = mValues[at];
        if (variable == nullptr) {
            return S_OK;
        }
        if (V_VT(variable) == (VT_BYREF | VT_VARIANT)) {
            variable = V_VARIANTREF(variable);
        } else if ((V_VT(variable) & VT_BYREF) != 0) {
            const auto type = static_cast<VARTYPE>(V_VT(variable) & ~VT_BYREF);
            const HRESULT status = VariantChangeTypeEx(&value, &value, LOCALE_USER_DEFAULT, 0, type);
            if (SUCCEEDED(status)) {
                MoveInto(V_BYREF(variable), type, value);
            }
            return status;
        }
        const HRESULT status = VariantClear(variable);
        if (SUCCEEDED(status)) {
            *variable = value;
            mSlots[at].isOwned = false;
        }
        return status;
    }

  private:
    struct Slot {
        VARIANT* variable;  // the client's, that gets the value back
        bool isOwned;
    };

    static HRESULT TakeDefault(VARTYPE type, long number, VARIANT& value) {
        V_BYREF(&value) = nullptr;
        V_VT(&value) = type;
        if (type == VT_VARIANT) {
            V_VT(&value) = VT_ERROR;
            V_ERROR(&value) = DISP_E_PARAMNOTFOUND;
        }
        if (type == VT_BOOL) {
            V_BOOL(&value) = static_cast<VARIANT_BOOL>(number);
        } else if (type == VT_I4) {
            V_I4(&value) = number;
        }
        return S_OK;
    }

    // Nothing, Empty and Null are no object; any other object must have the interface.
    static HRESULT TakeObject(const DispatchType& type, const VARIANT& given, VARIANT& value) {
        const bool isReference = (V_VT(&given) & VT_BYREF) != 0;
        const auto kind = static_cast<VARTYPE>(V_VT(&given) & ~VT_BYREF);
        const bool isNone = kind == VT_EMPTY || kind == VT_NULL;
        if (!isNone && !IsObject(kind)) {
            return DISP_E_TYPEMISMATCH;
        }
        IUnknown* const object = isNone ? nullptr : isReference ? *V_UNKNOWNREF(&given) : V_UNKNOWN(&given);
        V_UNKNOWN(&value) = nullptr;
        V_VT(&value) = type.type;
        return object == nullptr || SUCCEEDED(object->QueryInterface(type.iid(), &V_BYREF(&value)))
                   ? S_OK
                   : DISP_E_TYPEMISMATCH;
    }

    static void MoveInto(void* target, VARTYPE type, VARIANT& value) {
        if (type == VT_BSTR) {
            std::swap(*static_cast<BSTR*>(target), V_BSTR(&value));
        } else if (type == VT_DECIMAL) {
            V_DECIMAL(&value).wReserved = 0;  // where a VARIANT has its type
            std::memcpy(target, &V_DECIMAL(&value), sizeof(DECIMAL));
            V_VT(&value) = VT_EMPTY;
        } else {
            std::memcpy(target, &V_BYREF(&value), SizeOf(type));
        }
    }

    size_t mCount = 0;
    Slot mSlots[kMostParameters];          // set one by one as values are taken
    VARIANT mValues[kMostParameters + 1];  // the last one used is the result, which is not ours
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

    // Tells the caller which argument was refused, by the index in the caller's array.
    void Report(UINT position, UINT* badArgument) const {
        const UINT index = IndexOf(position);
        if (badArgument != nullptr && index != kNone) {
            *badArgument = index;
        }
    }

  private:
    static constexpr UINT kNone = static_cast<UINT>(-1);

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

    const DISPPARAMS& mArguments;
    UINT mNamed;
    UINT mPositional;
};

}  // namespace

HRESULT DispatchIdsOfNames(std::span<const DispatchMember> members, LPOLESTR* names, UINT count, DISPID* ids) noexcept {
    if (names == nullptr || ids == nullptr) {
        return E_POINTER;
    }
    std::fill(ids, ids + count, DISPID_UNKNOWN);
    if (count == 0 || names[0] == nullptr) {
        return count == 0 ? E_INVALIDARG : DISP_E_UNKNOWNNAME;
    }
    const std::uint32_t hash = DispatchNameHash(names[0]);
    const auto member = std::find_if(members.begin(), members.end(), [&](const DispatchMember& candidate) {
        return candidate.nameHash == hash && IsNamed(candidate.name, names[0]);
    });
    if (member == members.end()) {
        return DISP_E_UNKNOWNNAME;
    }
    ids[0] = member->id;
    bool areKnown = true;
    for (UINT i = 1; i < count; ++i) {
        const auto parameter =
            std::find_if(member->parameters.begin(), member->parameters.end(),
                         [&](const DispatchParameter& candidate) { return IsNamed(candidate.name, names[i]); });
        if (parameter == member->parameters.end()) {
            areKnown = false;
        } else {
            ids[i] = static_cast<DISPID>(parameter - member->parameters.begin());
        }
    }
    return areKnown ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT DispatchInvoke(std::span<const DispatchMember> members, void* object, DISPID id, WORD flags,
                       DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept {
    if (arguments == nullptr) {
        return E_POINTER;
    }
    const auto member = std::find_if(members.begin(), members.end(), [&](const DispatchMember& candidate) {
        return candidate.id == id && (candidate.kind & flags) != 0;
    });
    if (member == members.end()) {
        return DISP_E_MEMBERNOTFOUND;
    }
    const CallersArguments given(*arguments, member->kind == INVOKE_PROPERTYPUT);
    HRESULT status = given.CheckAgainst(*member);
    if (FAILED(status)) {
        return status;
    }
    const auto count = static_cast<UINT>(member->parameters.size());
    Values values;
    for (UINT i = 0; i < count; ++i) {
        status = values.Take(member->parameters[i], given.At(i));
        if (FAILED(status)) {
            given.Report(i, badArgument);
            return status;
        }
    }

    SetErrorInfo(0, nullptr);
    VARIANT& answer = values.All()[count];
    answer = {};
    status = member->call(object, values.All());
    if (member->result != VT_VARIANT) {
        V_VT(&answer) = member->result;
    }
    if (FAILED(status)) {
        VariantClear(&answer);
        return DescribeFailure(status, exception);
    }
    status = S_OK;
    for (UINT i = 0; i < count; ++i) {  // one that does not fit keeps none of the others
        const HRESULT givenBack = values.GiveBack(i);
        if (FAILED(givenBack)) {
            status = givenBack;
            given.Report(i, badArgument);
        }
    }
    if (result != nullptr && SUCCEEDED(status)) {
        *result = answer;
    } else {
        VariantClear(&answer);
    }
    return status;
}

}  // namespace v5
