// What the component tests share: a late-bound client, small enough to see through.
#pragma once

#include <windows.h>
#include <gtest/gtest.h>

#include <comdef.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <string>
#include <string_view>
#include <vector>

namespace v5::test {

using Microsoft::WRL::ComPtr;

constexpr UINT kNoArgument = static_cast<UINT>(-1);

// What one late-bound call gave: the status, the returned value, and the error information when it failed.
struct CallResult {
    HRESULT status = S_OK;
    _variant_t value;
    long errorNumber = 0;
    std::wstring errorSource, errorDescription;
    UINT badArgument = kNoArgument;  // index of the refused argument, counted from the last one as IDispatch does
};

// An argument that is given by its parameter's name.
struct NamedArgument {
    const wchar_t* name;
    _variant_t value;
};

// A new object by its programmatic identifier; null, with a test failure, when it cannot be created.
inline ComPtr<IDispatch> CreateByName(const wchar_t* progId) {
    CLSID clsid;
    ComPtr<IDispatch> object;
    EXPECT_EQ(CLSIDFromProgID(progId, &clsid), S_OK) << progId;
    EXPECT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), S_OK) << progId;
    return object;
}

inline DISPID IdOf(IDispatch* object, const wchar_t* member) {
    DISPID id = DISPID_UNKNOWN;
    auto* name = const_cast<wchar_t*>(member);
    object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    return id;
}

// The text of a BSTR that is ours to free.
inline std::wstring Taken(BSTR text) {
    std::wstring result(text != nullptr ? text : L"", SysStringLen(text));
    SysFreeString(text);
    return result;
}

// A variable of the client's as an argument, for the member to change; a script's is a VARIANT.
inline _variant_t ByReference(VARTYPE type, void* variable) {
    VARIANT argument;
    V_VT(&argument) = static_cast<VARTYPE>(type | VT_BYREF);
    V_BYREF(&argument) = variable;
    return _variant_t(argument);
}
inline _variant_t ByReference(_variant_t& variable) {
    return ByReference(VT_VARIANT, &variable);
}

// Names and other texts that are ASCII, for messages and comparisons.
inline std::string Narrow(std::wstring_view text) {
    return {text.begin(), text.end()};
}

// Calls a member as a script engine would. `arguments` are in the order of the declaration; `named` ones have their
// identifiers in `names`.
inline CallResult Invoke(IDispatch* object, DISPID id, WORD flags, const std::vector<_variant_t>& arguments,
                         const std::vector<NamedArgument>& named = {}, std::vector<DISPID> names = {}) {
    CallResult result;
    std::vector<VARIANT> passed;  // shallow copies: first the named arguments, then the others from last to first
    for (const NamedArgument& argument : named) {
        passed.push_back(argument.value);
    }
    passed.insert(passed.end(), arguments.rbegin(), arguments.rend());
    if ((flags & DISPATCH_PROPERTYPUT) != 0) {
        names.push_back(DISPID_PROPERTYPUT);
    }
    DISPPARAMS parameters = {passed.data(), names.data(), static_cast<UINT>(passed.size()),
                             static_cast<UINT>(names.size())};
    EXCEPINFO exception = {};
    result.status = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &result.value, &exception,
                                   &result.badArgument);
    result.errorNumber = exception.scode;
    result.errorSource = Taken(exception.bstrSource);
    result.errorDescription = Taken(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    return result;
}

inline CallResult Call(IDispatch* object, const wchar_t* method, const std::vector<_variant_t>& arguments = {},
                       const std::vector<NamedArgument>& named = {}) {
    std::vector<LPOLESTR> names{const_cast<LPOLESTR>(method)};
    for (const NamedArgument& argument : named) {
        names.push_back(const_cast<LPOLESTR>(argument.name));
    }
    std::vector<DISPID> ids(names.size());
    CallResult unknown;
    unknown.status =
        object->GetIDsOfNames(IID_NULL, names.data(), static_cast<UINT>(names.size()), LOCALE_USER_DEFAULT, ids.data());
    return FAILED(unknown.status)
               ? unknown
               : Invoke(object, ids[0], DISPATCH_METHOD, arguments, named, {ids.begin() + 1, ids.end()});
}

inline _variant_t Get(IDispatch* object, const wchar_t* property) {
    const CallResult result = Invoke(object, IdOf(object, property), DISPATCH_PROPERTYGET, {});
    EXPECT_EQ(result.status, S_OK) << property;
    return result.value;
}

inline std::wstring Text(const _variant_t& value) {
    return V_VT(&value) == VT_BSTR && V_BSTR(&value) != nullptr
               ? std::wstring(V_BSTR(&value), SysStringLen(V_BSTR(&value)))
               : std::wstring();
}

}  // namespace v5::test
