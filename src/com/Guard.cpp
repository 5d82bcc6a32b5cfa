#include "com/Guard.h"

#include <comdef.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <new>

#include "com/Values.h"

namespace v5 {

AutomationError CurrentError() {
    try {
        throw;
    } catch (const AutomationError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return SystemError(E_OUTOFMEMORY);
    } catch (const _com_error& error) {  // of _variant_t and _bstr_t
        return SystemError(error.Error());
    } catch (const std::exception& error) {
        const std::string_view what = error.what();
        return {static_cast<std::uint32_t>(E_FAIL), std::wstring(what.begin(), what.end())};
    } catch (...) {
        return SystemError(E_UNEXPECTED);
    }
}

HRESULT ReportCurrentException(REFIID iid, const wchar_t* source) noexcept {
    HRESULT status = E_OUTOFMEMORY;
    try {
        const AutomationError error = CurrentError();
        status = static_cast<HRESULT>(error.Status());
        ComPtr<ICreateErrorInfo> create;
        ComPtr<IErrorInfo> info;
        if (SUCCEEDED(CreateErrorInfo(&create)) && SUCCEEDED(create.As(&info))) {
            create->SetGUID(iid);
            create->SetSource(const_cast<wchar_t*>(source));
            create->SetDescription(const_cast<wchar_t*>(error.Description().c_str()));
            SetErrorInfo(0, info.Get());
        }
    } catch (...) {  // out of memory while reporting: the bare status has to do
        SetErrorInfo(0, nullptr);
    }
    return status;
}

void Check(HRESULT status) {
    if (SUCCEEDED(status)) {
        return;
    }
    if (status == E_OUTOFMEMORY || status == STG_E_INSUFFICIENTMEMORY) {  // the second from type libraries
        throw std::bad_alloc();
    }
    ComPtr<IErrorInfo> info;
    BSTR description = nullptr;
    if (GetErrorInfo(0, &info) == S_OK && SUCCEEDED(info->GetDescription(&description)) && description != nullptr) {
        throw AutomationError(static_cast<std::uint32_t>(status), TakeText(description));
    }
    throw SystemError(status);
}

}  // namespace v5
