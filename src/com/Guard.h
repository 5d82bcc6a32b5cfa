// The one exception boundary: what a member's work throws becomes a status with error information.
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <wrl/client.h>

#include <string>
#include <utility>

#include "base/AutomationError.h"
#include "platform/SystemText.h"

namespace v5 {

// What a member answers when memory is out: run-time error 7.
constexpr auto kOutOfMemory = static_cast<HRESULT>(0x800A0007);

// Turns the exception that is being handled into a status and leaves number, description and `source` (the class's
// programmatic identifier) as the thread's error information. Call it from a catch block only.
HRESULT ReportCurrentException(REFIID iid, const wchar_t* source) noexcept;

// What a late-bound call answers when its member has failed: DISP_E_EXCEPTION, with `status` and the thread's error
// information in `exception`, which may be null.
HRESULT DescribeFailure(HRESULT status, EXCEPINFO* exception) noexcept;

// Throws AutomationError when a neighbour's call has failed, with the neighbour's own description where it left
// one and the system's text for the status otherwise.
void Check(HRESULT status);

// Throws AutomationError, the run-time's "no object" error, when a neighbour's call succeeded and answered nothing.
template <class Interface>
void Require(const Microsoft::WRL::ComPtr<Interface>& object) {
    if (!object) {
        throw AutomationError::RunTime(91, L"Object variable or With block variable not set");
    }
}

// Runs the work of a member that raises: S_OK, or the failure's status with error information.
template <class Work>
HRESULT Guarded(REFIID iid, const wchar_t* source, Work&& work) noexcept {
    try {
        std::forward<Work>(work)();
        return S_OK;
    } catch (...) {
        return ReportCurrentException(iid, source);
    }
}

// Runs the work of a member that must never raise: always S_OK.
template <class Work>
HRESULT GuardedQuietly(Work&& work) noexcept {
    try {
        std::forward<Work>(work)();
    } catch (...) {  // NOLINT(bugprone-empty-catch): this guard is how such a member says that nothing escapes
    }
    return S_OK;
}

}  // namespace v5
