#include "com/Guard.h"

#include <comdef.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <new>

#include "com/Values.h"
#include "platform/SystemText.h"

namespace v5 {

namespace {

// As CurrentError, which does not know what _variant_t and _bstr_t throw.
AutomationError ErrorToReport() {
    try {
        try {
            throw;  // cppcheck-suppress rethrowNoCurrentException ; it is called where one is being handled
        } catch (const _com_error& error) {
            SetErrorInfo(0, nullptr);  // it belongs to an earlier call
            Check(error.Error());
            throw;
        }
    } catch (...) {
        return CurrentError();
    }
}

}  // namespace

HRESULT ReportCurrentException(REFIID iid, const wchar_t* source) noexcept {
    try {
        const AutomationError error = ErrorToReport();
        ComPtr<ICreateErrorInfo> create;
        ComPtr<IErrorInfo> info;
        if (SUCCEEDED(CreateErrorInfo(&create)) && SUCCEEDED(create.As(&info))) {
            create->SetGUID(iid);
            create->SetSource(const_cast<wchar_t*>(source));
            create->SetDescription(const_cast<wchar_t*>(error.Description().c_str()));
            SetErrorInfo(0, info.Get());
        }
        return static_cast<HRESULT>(error.Status());
    } catch (...) {  // out of memory while reporting: the bare status has to do
        SetErrorInfo(0, nullptr);
        return kOutOfMemory;
    }
}

HRESULT DescribeFailure(HRESULT status, EXCEPINFO* exception) noexcept {
    if (exception != nullptr) {
        *exception = {};
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
