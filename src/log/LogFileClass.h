// LogFileClass: writes the text log file of a program. See log/LogWriter.h for what each member does.
#pragma once

#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "com/AutomationObject.h"
#include "log/DiskLogFile.h"
#include "log/LogWriter.h"
#include "log/WindowsLogHost.h"
#include "platform/AnsiCodePage.h"
#include "platform/SystemClock.h"

namespace v5 {

class LogFileClass final : public AutomationObject<LogFileClass, _LogFileClass, ::LogFileClass> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.LogFileClass";

    STDMETHODIMP get_Active(VARIANT_BOOL* Result) override { return get_IsActive(Result); }
    STDMETHODIMP get_IsActive(VARIANT_BOOL* Result) override { return Get(Result, mLog.IsActive()); }
    STDMETHODIMP get_Filename(BSTR* Result) override { return Get(Result, mLog.Filename()); }
    STDMETHODIMP get_LogError(BSTR* Result) override { return Get(Result, mLog.Error()); }
    STDMETHODIMP StartLog(BSTR strFilename, BSTR strLogTitle, VARIANT_BOOL blnShowMilliseconds,
                          VARIANT_BOOL blnShowTimestamp, VARIANT_BOOL* Result) override {
        return StartLog2(strFilename, strLogTitle, blnShowMilliseconds, blnShowTimestamp, 0, Result);
    }
    STDMETHODIMP StartLog2(BSTR strFilename, BSTR strLogTitle, VARIANT_BOOL blnShowMilliseconds,
                           VARIANT_BOOL blnShowTimestamp, long lngMaxTimeGapExpectedSeconds,
                           VARIANT_BOOL* Result) override {
        return Return(Result, [&] {
            return mLog.Start(View(strFilename), View(strLogTitle),
                              {ToBool(blnShowMilliseconds), ToBool(blnShowTimestamp), lngMaxTimeGapExpectedSeconds});
        });
    }
    STDMETHODIMP StopLog() override {
        return DoQuietly([&] { mLog.Stop(); });
    }
    STDMETHODIMP WriteToLog(BSTR strText) override { return WriteToLog2(strText, VARIANT_FALSE); }
    STDMETHODIMP WriteToLog2(BSTR strText, VARIANT_BOOL blnForceFlushToDisk) override {
        return DoQuietly([&] { mLog.Write(View(strText), ToBool(blnForceFlushToDisk)); });
    }
    STDMETHODIMP Flush() override {
        return DoQuietly([&] { mLog.Flush(); });
    }

  private:
    DiskLogFile mFile;
    SystemClock mClock;
    AnsiCodePage mCodePage;
    WindowsLogHost mHost;
    LogWriter mLog{mFile, mClock, mCodePage, mHost};  // last: it is the first to end, and still writes then
};

}  // namespace v5
