// LogFileClass: writes the text log file of a program. See log/LogWriter.h for what each member does.
#pragma once

#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "com/AutomationObject.h"
#include "log/DiskLogFile.h"
#include "log/LogWriter.h"
#include "log/MachineLogHost.h"
#include "platform/AnsiCodePage.h"
#include "platform/SystemClock.h"

namespace v5 {

class LogFileClass final : public AutomationObject<LogFileClass, _LogFileClass, ::LogFileClass> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.LogFileClass";

    STDMETHODIMP get_Active(VARIANT_BOOL* result) override { return get_IsActive(result); }
    STDMETHODIMP get_IsActive(VARIANT_BOOL* result) override {
        return Return(result, [&] { return mLog.IsActive(); });
    }
    STDMETHODIMP get_Filename(BSTR* result) override {
        return Return(result, [&] { return std::wstring_view(mLog.Filename()); });
    }
    STDMETHODIMP get_LogError(BSTR* result) override {
        return Return(result, [&] { return std::wstring_view(mLog.Error()); });
    }
    STDMETHODIMP StartLog(BSTR filename, BSTR title, VARIANT_BOOL showMilliseconds, VARIANT_BOOL showTimestamp,
                          VARIANT_BOOL* result) override {
        return StartLog2(filename, title, showMilliseconds, showTimestamp, 0, result);
    }
    STDMETHODIMP StartLog2(BSTR filename, BSTR title, VARIANT_BOOL showMilliseconds, VARIANT_BOOL showTimestamp,
                           long maxTimeGapExpectedSeconds, VARIANT_BOOL* result) override {
        return Return(result, [&] {
            return mLog.Start(View(filename), View(title),
                              {ToBool(showMilliseconds), ToBool(showTimestamp), maxTimeGapExpectedSeconds});
        });
    }
    STDMETHODIMP StopLog() override {
        return DoQuietly([&] { mLog.Stop(); });
    }
    STDMETHODIMP WriteToLog(BSTR text) override { return WriteToLog2(text, VARIANT_FALSE); }
    STDMETHODIMP WriteToLog2(BSTR text, VARIANT_BOOL forceFlushToDisk) override {
        return DoQuietly([&] { mLog.Write(View(text), ToBool(forceFlushToDisk)); });
    }
    STDMETHODIMP Flush() override {
        return DoQuietly([&] { mLog.Flush(); });
    }

  private:
    DiskLogFile mFile;
    SystemClock mClock;
    AnsiCodePage mCodePage;
    MachineLogHost mHost;
    LogWriter mLog{mFile, mClock, mCodePage, mHost};  // last: it is the first to end, and still writes then
};

}  // namespace v5
