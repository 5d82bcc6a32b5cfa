#include <wrl/client.h>

#include <stdexcept>

#include "Describe.h"

namespace v5describe {

namespace {

using Microsoft::WRL::ComPtr;

void Check(HRESULT status) {
    if (FAILED(status)) {
        throw std::runtime_error("cannot read the type library");
    }
}

std::wstring Take(BSTR text) {
    std::wstring result = text == nullptr ? L"" : text;
    SysFreeString(text);
    return result;
}

struct Documentation {
    std::wstring name, help;
};
Documentation DocumentationOf(ITypeInfo& type, MEMBERID member = MEMBERID_NIL) {
    BSTR name = nullptr;
    BSTR help = nullptr;
    Check(type.GetDocumentation(member, &name, &help, nullptr, nullptr));
    return {Take(name), Take(help)};
}

// How the wrapper spells one type: as an argument, as an in/out argument, as an answer.
struct Spelling {
    std::wstring in, inOut, answer;
};

Spelling SpellingOf(ITypeInfo& owner, const TYPEDESC& type) {
    switch (type.vt) {
        case VT_BSTR:
            return {L"std::wstring_view", L"std::wstring&", L"std::wstring"};
        case VT_BOOL:
            return {L"bool", L"bool&", L"bool"};
        case VT_I4:
            return {L"long", L"long&", L"long"};
        case VT_DATE:
            return {L"DATE", L"DATE&", L"DATE"};
        case VT_VARIANT:
            return {L"", L"", L"std::vector<std::wstring>"};  // the contract's are arrays of texts
        case VT_DISPATCH:
            return {L"IDispatch*", L"", L"Microsoft::WRL::ComPtr<IDispatch>"};
        case VT_UNKNOWN:
            return {L"IUnknown*", L"", L"Microsoft::WRL::ComPtr<IUnknown>"};
        default:
            break;
    }
    ComPtr<ITypeInfo> named;
    TYPEATTR* attributes = nullptr;
    if (type.vt == VT_PTR) {
        const Spelling pointed = SpellingOf(owner, *type.lptdesc);
        return {pointed.answer.front() == L'_' ? L"::" + pointed.answer + L"*" : pointed.answer + L"*", L"",
                pointed.answer.front() == L'_' ? pointed.answer.substr(1)
                                               : L"Microsoft::WRL::ComPtr<" + pointed.answer + L">"};
    }
    if (type.vt != VT_USERDEFINED) {
        throw std::runtime_error("the C++ header has no spelling for a type of the library");
    }
    Check(owner.GetRefTypeInfo(type.hreftype, &named));
    Check(named->GetTypeAttr(&attributes));
    const bool isEnumeration = attributes->typekind == TKIND_ENUM;
    named->ReleaseTypeAttr(attributes);
    const std::wstring name = DocumentationOf(*named.Get()).name;
    if (isEnumeration) {
        const std::wstring qualified = L"V5Strings::" + name;
        return {qualified, qualified + L"&", qualified};
    }
    // "Picture" is the name that the standard library gives the dispatch interface of pictures.
    return {name, L"", name == L"Picture" ? L"IPictureDisp" : name};
}

// Whether a call may leave the parameter out. The answer is none of a call's arguments.
bool HasDefault(USHORT flags) {
    return (flags & PARAMFLAG_FRETVAL) != 0 || ((flags & PARAMFLAG_FHASDEFAULT) != 0 && (flags & PARAMFLAG_FOUT) == 0);
}

std::wstring DefaultValue(const PARAMDESC& parameter, const std::wstring& type) {
    if ((parameter.wParamFlags & PARAMFLAG_FHASDEFAULT) == 0) {
        return L"";
    }
    const VARIANT& value = parameter.pparamdescex->varDefaultValue;
    switch (V_VT(&value)) {
        case VT_BSTR:
            return L" = {}";
        case VT_BOOL:
            return V_BOOL(&value) != VARIANT_FALSE ? L" = true" : L" = false";
        default:
            return type.compare(0, 3, L"V5S") == 0 ? L" = " + type + L"(" + std::to_wstring(V_I4(&value)) + L")"
                                                   : L" = " + std::to_wstring(V_I4(&value));
    }
}

// The contract's collections are late-bound objects; what their items are, only its descriptions say.
std::wstring ItemsOf(const std::wstring& member) {
    return member == L"GetAllFootnotes" ? L"Footnote" : L"";
}

std::wstring Method(ITypeInfo& type, const std::wstring& interfaceName, const FUNCDESC& function) {
    const Documentation documentation = DocumentationOf(type, function.memid);
    BSTR names[32] = {};
    UINT nameCount = 0;
    Check(type.GetNames(function.memid, names, 32, &nameCount));

    // C++ wants a default for every parameter behind the first that has one.
    SHORT firstDefault = function.cParams;
    while (firstDefault > 0 && HasDefault(function.lprgelemdescParam[firstDefault - 1].paramdesc.wParamFlags)) {
        --firstDefault;
    }

    std::wstring answer = L"void", parameters, arguments;
    for (SHORT i = 0; i < function.cParams; ++i) {
        const ELEMDESC& element = function.lprgelemdescParam[i];
        const USHORT flags = element.paramdesc.wParamFlags;
        if ((flags & PARAMFLAG_FRETVAL) != 0) {
            const std::wstring items = ItemsOf(documentation.name);
            answer = items.empty() ? SpellingOf(type, *element.tdesc.lptdesc).answer : L"std::vector<" + items + L">";
            continue;
        }
        const bool isInOut = (flags & PARAMFLAG_FOUT) != 0;
        // A property's new value has no name in the type library.
        const std::wstring name = function.invkind == INVOKE_PROPERTYPUT ? L"value" : std::wstring(names[i + 1]);
        const Spelling spelling = SpellingOf(type, isInOut ? *element.tdesc.lptdesc : element.tdesc);
        const std::wstring& spelled = isInOut ? spelling.inOut : spelling.in;
        parameters += parameters.empty() ? L"" : L", ";
        parameters.append(spelled).append(L" ").append(name);
        parameters += i < firstDefault ? L"" : DefaultValue(element.paramdesc, spelled);
        arguments += L", " + std::wstring(isInOut ? L"InOut(" : L"In(") + name + L")";
    }
    for (UINT i = 0; i < nameCount; ++i) {
        SysFreeString(names[i]);
    }
    const bool isPut = function.invkind == INVOKE_PROPERTYPUT;
    const std::wstring prefix = isPut ? L"put_" : function.invkind == INVOKE_PROPERTYGET ? L"get_" : L"";
    return L"    /// " + documentation.help + L"\n    " + answer + L" " + (isPut ? L"Set" : L"") + documentation.name +
           L"(" + parameters + L") const { " + (answer == L"void" ? L"Do" : L"Get<" + answer + L">") + L"(&::" +
           interfaceName + L"::" + prefix + documentation.name + arguments + L"); }\n";
}

std::wstring WithReturn(std::wstring method) {
    const size_t call = method.find(L"{ Get<");
    if (call != std::wstring::npos) {
        method.insert(call + 2, L"return ");
    }
    return method;
}

// For each event of a class, the function that subscribes to it.
std::wstring EventMethods(ITypeInfo& coClass) {
    TYPEATTR* attributes = nullptr;
    Check(coClass.GetTypeAttr(&attributes));
    const UINT interfaces = attributes->cImplTypes;
    coClass.ReleaseTypeAttr(attributes);
    std::wstring text;
    for (UINT i = 0; i < interfaces; ++i) {
        INT flags = 0;
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> events;
        Check(coClass.GetImplTypeFlags(i, &flags));
        if ((flags & IMPLTYPEFLAG_FSOURCE) == 0) {
            continue;
        }
        Check(coClass.GetRefTypeOfImplType(i, &reference));
        Check(coClass.GetRefTypeInfo(reference, &events));
        FUNCDESC* function = nullptr;
        for (UINT f = 0; SUCCEEDED(events->GetFuncDesc(f, &function)); ++f) {
            const Documentation event = DocumentationOf(*events.Get(), function->memid);
            std::wstring types, arguments;
            for (SHORT p = 0; p < function->cParams; ++p) {
                const std::wstring type = SpellingOf(*events.Get(), function->lprgelemdescParam[p].tdesc).answer;
                types.append(p == 0 ? L"" : L", ").append(type == L"std::wstring" ? L"const std::wstring&" : type);
                arguments.append(p == 0 ? L"detail::EventArgument<" : L", detail::EventArgument<").append(type);
                arguments.append(L">(arguments, ").append(std::to_wstring(p)).append(L")");
            }
            text.append(L"    /// The event: ").append(event.help).append(L"\n    Subscription On").append(event.name);
            text.append(L"(std::function<void(").append(types).append(L")> handler) const {\n        return ");
            text.append(L"detail::Subscribe(Pointer(), __uuidof(::").append(DocumentationOf(*events.Get()).name);
            text.append(L"), ").append(std::to_wstring(function->memid));
            text.append(L", [handler = std::move(handler)](const DISPPARAMS& arguments) { handler(");
            text.append(arguments).append(L"); });\n    }\n");
            events->ReleaseFuncDesc(function);
        }
    }
    return text;
}

// The default interface of a class, in its form with virtual functions.
ComPtr<ITypeInfo> DefaultInterface(ITypeInfo& coClass) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> dispatch, dual;
    Check(coClass.GetRefTypeOfImplType(0, &reference));
    Check(coClass.GetRefTypeInfo(reference, &dispatch));
    Check(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
    Check(dispatch->GetRefTypeInfo(reference, &dual));
    return dual;
}

std::wstring ClassText(ITypeInfo& coClass) {
    const Documentation documentation = DocumentationOf(coClass);
    const ComPtr<ITypeInfo> type = DefaultInterface(coClass);
    const std::wstring interfaceName = DocumentationOf(*type.Get()).name;
    const std::wstring base = L"Object<::" + interfaceName + L", ::" + documentation.name + L">";
    TYPEATTR* attributes = nullptr;
    Check(type->GetTypeAttr(&attributes));
    const UINT count = attributes->cFuncs;
    type->ReleaseTypeAttr(attributes);
    std::wstring text = L"/// " + documentation.help + L"\nclass " + documentation.name + L" : public " + base +
                        L" {\n  public:\n    using Object::Object;\n" + std::wstring(count > 0 ? 1 : 0, L'\n');
    std::wstring item;
    for (UINT i = 0; i < count; ++i) {
        FUNCDESC* function = nullptr;
        Check(type->GetFuncDesc(i, &function));
        text += WithReturn(Method(*type.Get(), interfaceName, *function));
        if (DocumentationOf(*type.Get(), function->memid).name == L"Item") {
            item = SpellingOf(*type.Get(), *function->lprgelemdescParam[function->cParams - 1].tdesc.lptdesc).answer;
        }
        if (function->memid == DISPID_NEWENUM) {
            text.append(L"    /// For range-for.\n    detail::Iterator<")
                .append(item)
                .append(L"> begin() const { return ");
            text.append(L"detail::Iterator<").append(item).append(L">(");
            text.append(DocumentationOf(*type.Get(), function->memid).name).append(L"()); }\n");
            text.append(L"    std::default_sentinel_t end() const { return {}; }\n");
        }
        type->ReleaseFuncDesc(function);
    }
    return text + EventMethods(coClass) + L"};\n\n";
}

}  // namespace

std::wstring ClientClasses(ITypeLib& library) {
    std::wstring forwards, classes;
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        TYPEKIND kind{};
        Check(library.GetTypeInfoType(i, &kind));
        if (kind == TKIND_COCLASS) {
            ComPtr<ITypeInfo> type;
            Check(library.GetTypeInfo(i, &type));
            const std::wstring name = DocumentationOf(*type.Get()).name;
            forwards += L"class " + name + L";\n";
            // A class stands behind those that its members answer; the library lists containers first.
            classes.insert(0, ClassText(*type.Get()));
        }
    }
    return forwards + L"\n" + classes;
}

}  // namespace v5describe
