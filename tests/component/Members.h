// Every member of every published class, as the type library describes it, and calls on them with arguments made up
// from the description: for tests that ask the same of all members.
#pragma once

#include <array>
#include <set>
#include <string>
#include <vector>

#include "component/TypeDescription.h"

namespace v5::test {

struct MemberParameter {
    VARTYPE type = VT_EMPTY;  // of the value; VT_UNKNOWN for every kind of object
    bool isReference = false;
    bool isOutput = false;
};

struct PublishedMember {
    std::wstring name;
    DISPID id = 0;
    INVOKEKIND kind = INVOKE_FUNC;
    ULONG_PTR offset = 0;  // in the table of virtual functions
    std::vector<MemberParameter> parameters;
    bool hasResult = false;  // the last parameter is the result

    bool HasOutput() const {
        for (const MemberParameter& parameter : parameters) {
            if (parameter.isOutput) {
                return true;
            }
        }
        return false;
    }
    // How many arguments a late-bound call gives at most.
    size_t Arguments() const { return parameters.size() - (hasResult ? 1 : 0); }
    // A window that waits for the user.
    bool ShowsWindow() const {
        static const std::set<std::wstring> kNames = {L"AsyncMsgBox",           L"ShowVantorAboutBox",
                                                      L"ShowVantorSupportInfo", L"GetDateFromUser",
                                                      L"GetTimeFromUser",       L"GetDahsIDFromUser",
                                                      L"GetDahsIDFromUser2",    L"GetDahsIDFromUser3",
                                                      L"GetDahsIDFromUser4",    L"ShowHelp"};
        return kNames.contains(name);
    }
};

struct PublishedClass {
    std::wstring name;
    CLSID clsid{};
    IID iid{};  // of the default interface
    std::vector<PublishedMember> members;
};

inline VARTYPE ValueType(const TypeDescription& owner, const TYPEDESC& type) {
    if (type.vt == VT_PTR) {
        return ValueType(owner, *type.lptdesc);
    }
    if (type.vt != VT_USERDEFINED) {
        return type.vt == VT_DISPATCH ? static_cast<VARTYPE>(VT_UNKNOWN) : type.vt;
    }
    return TypeDescription(owner.Referenced(type.hreftype))->typekind == TKIND_ENUM ? VT_I4 : VT_UNKNOWN;
}

inline PublishedMember DescribeMember(const TypeDescription& owner, const FUNCDESC& function) {
    PublishedMember member{
        owner.Name(function.memid), function.memid, function.invkind, static_cast<ULONG_PTR>(function.oVft), {}, false};
    for (SHORT i = 0; i < function.cParams; ++i) {
        const ELEMDESC& element = function.lprgelemdescParam[i];
        const bool isOutput = (element.paramdesc.wParamFlags & PARAMFLAG_FOUT) != 0;
        member.hasResult = member.hasResult || (element.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0;
        member.parameters.push_back({ValueType(owner, element.tdesc), isOutput, isOutput});
    }
    return member;
}

inline std::vector<PublishedClass> PublishedClasses(ITypeLib& library) {
    std::vector<PublishedClass> classes;
    ForEachType(library, [&](const TypeDescription& type) {
        if (type->typekind == TKIND_COCLASS) {
            const TypeDescription published(type.Implemented(0)), view(published.View());
            PublishedClass found{type.Name(), type->guid, published->guid, {}};
            view.ForEachFunction(
                [&](const FUNCDESC& function) { found.members.push_back(DescribeMember(view, function)); });
            classes.push_back(std::move(found));
        }
    });
    return classes;
}

enum class Outputs { Null, Real };

// Calls a member of `object`, a pointer to the default interface itself, as a compiled client would: `number` or
// `date`, null texts and null objects go in; what comes out is dropped. Gives the member's status.
inline HRESULT CallByTable(void* object, const PublishedMember& member, Outputs outputs, long number = 0,
                           DATE date = 0) {
    std::array<VARIANT, 20> slots{}, arguments{};
    std::array<VARTYPE, 20> types{};
    std::array<VARIANTARG*, 20> pointers{};
    const size_t count = member.parameters.size();
    for (size_t i = 0; i < count; ++i) {
        const MemberParameter& parameter = member.parameters[i];
        V_VT(&arguments[i]) = parameter.type;
        if (parameter.type == VT_DATE) {
            V_DATE(&arguments[i]) = date;
        } else if (parameter.type == VT_I4) {
            V_I4(&arguments[i]) = number;
        }
        if (parameter.isReference) {
            V_VT(&arguments[i]) = VT_BYREF | VT_I4;  // a pointer is a pointer
            void* slot = parameter.type == VT_VARIANT ? static_cast<void*>(&slots[i]) : &V_BYREF(&slots[i]);
            V_BYREF(&arguments[i]) = outputs == Outputs::Real ? slot : nullptr;
        }
        types[i] = V_VT(&arguments[i]);
        pointers[i] = &arguments[i];
    }
    VARIANT returned{};
    const HRESULT status = DispCallFunc(object, member.offset, CC_STDCALL, VT_ERROR, static_cast<UINT>(count),
                                        types.data(), pointers.data(), &returned);
    for (size_t i = 0; i < count; ++i) {
        if (member.parameters[i].isReference && member.parameters[i].type != VT_VARIANT) {
            V_VT(&slots[i]) = member.parameters[i].type;
        }
        VariantClear(&slots[i]);
    }
    return FAILED(status) ? status : V_ERROR(&returned);
}

}  // namespace v5::test
