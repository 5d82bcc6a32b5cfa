// What the component tests share: a late-bound client, small enough to see through.
#pragma once

#include <windows.h>
#include <gtest/gtest.h>

#include <comdef.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <string>
#include <vector>

namespace v5::test {

using Microsoft::WRL::ComPtr;

// What one late-bound call gave: the status, the returned value, and the error information when it failed.
struct CallResult {
    HRESULT status = S_OK;
    _variant_t value;
    long errorNumber = 0;
    std::wstring errorSource, errorDescription;
    UINT badArgument = static_cast<UINT>(-1);
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

// Calls a member as a script engine would. `arguments` are in the order of the declaration.
inline CallResult Invoke(IDispatch* object, DISPID id, WORD flags, std::vector<_variant_t> arguments) {
    CallResult result;
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());  // shallow copies, owned by `arguments`
    DISPID putName = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    if ((flags & DISPATCH_PROPERTYPUT) != 0) {
        parameters.rgdispidNamedArgs = &putName;
        parameters.cNamedArgs = 1;
    }
    EXCEPINFO exception = {};
    result.status = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &result.value, &exception,
                                   &result.badArgument);
    result.errorNumber = exception.scode;
    result.errorSource = Taken(exception.bstrSource);
    result.errorDescription = Taken(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    return result;
}

inline CallResult Call(IDispatch* object, const wchar_t* method, std::vector<_variant_t> arguments = {}) {
    return Invoke(object, IdOf(object, method), DISPATCH_METHOD, std::move(arguments));
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
