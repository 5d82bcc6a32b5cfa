#include "com/LateBound.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "base/AutomationError.h"
#include "com/Values.h"
#include "platform/SystemText.h"

namespace v5 {
namespace {

void ThrowIfFailed(HRESULT status) {
    if (FAILED(status)) {
        throw SystemError(status);
    }
}

// The object gives a number of its own (wCode) or a status (scode).
[[noreturn]] void Throw(Raised& raised) {
    if (raised.pfnDeferredFillIn != nullptr) {
        raised.pfnDeferredFillIn(&raised);
    }
    const std::wstring description(View(raised.bstrDescription));
    if (raised.wCode != 0) {
        throw AutomationError::RunTime(raised.wCode, description);
    }
    throw AutomationError(static_cast<std::uint32_t>(raised.scode),
                          description.empty() ? SystemText(raised.scode) : description);
}

_variant_t ConvertedTo(VARTYPE type, const _variant_t& value) {
    _variant_t converted;
    ThrowIfFailed(VariantChangeType(&converted, const_cast<_variant_t*>(&value), VARIANT_ALPHABOOL, type));
    return converted;
}

}  // namespace

HRESULT InvokeInOrder(IDispatch& object, DISPID id, WORD flags, std::initializer_list<_variant_t> arguments,
                      VARIANT* result, Raised& raised) {
    std::vector<VARIANT> reversed(arguments.size());  // IDispatch takes the last argument first; borrowed values
    std::copy(arguments.begin(), arguments.end(), reversed.rbegin());
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    return object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, &raised, nullptr);
}

LateBound::LateBound(const wchar_t* progId) {
    CLSID clsid{};
    ThrowIfFailed(CLSIDFromProgID(progId, &clsid));
    ThrowIfFailed(CoCreateInstance(clsid, nullptr, CLSCTX_ALL, IID_PPV_ARGS(&mObject)));
}

LateBound::LateBound(const _variant_t& object) {
    if (object.vt != VT_DISPATCH || object.pdispVal == nullptr) {
        throw SystemError(DISP_E_TYPEMISMATCH);
    }
    mObject = object.pdispVal;
}

_variant_t LateBound::Call(const wchar_t* member, std::initializer_list<_variant_t> arguments) const {
    auto* name = const_cast<wchar_t*>(member);
    DISPID id = DISPID_UNKNOWN;
    ThrowIfFailed(mObject->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));

    _variant_t result;
    Raised raised;
    const HRESULT status =
        InvokeInOrder(*mObject.Get(), id, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments, &result, raised);
    if (status == DISP_E_EXCEPTION) {
        Throw(raised);
    }
    ThrowIfFailed(status);
    return result;
}

std::wstring LateBound::CallText(const wchar_t* member, std::initializer_list<_variant_t> arguments) const {
    return std::wstring(View(ConvertedTo(VT_BSTR, Call(member, arguments)).bstrVal));
}

long LateBound::CallLong(const wchar_t* member, std::initializer_list<_variant_t> arguments) const {
    return ConvertedTo(VT_I4, Call(member, arguments)).lVal;
}

}  // namespace v5
