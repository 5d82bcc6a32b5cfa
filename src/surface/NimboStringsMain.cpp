#include "surface/NimboStringsMain.h"

#include "com/RaiseMsgSink.h"
#include "config/DahsChooserForm.h"
#include "config/WindowsSiteHost.h"
#include "dialogs/Dialogs.h"
#include "platform/SystemClock.h"
#include "productinfo/FactoryFlag.h"
#include "productinfo/Pictures.h"
#include "productinfo/ProductBoxes.h"
#include "productinfo/ReleaseNumber.h"
#include "productinfo/WindowsInstaller.h"
#include "productinfo/WindowsRegistry.h"

namespace v5 {

STDMETHODIMP NimboStringsMain::AsyncMsgBox(BSTR Prompt, long Buttons, BSTR Title, long /*lngReserved*/,
                                           VARIANT_BOOL blnBeep, long lngTimeout, long* Result) {
    return Return(Result, [&] {
        return static_cast<std::int32_t>(ShowTimedMessageBox({.Prompt = std::wstring(View(Prompt)),
                                                              .Title = std::wstring(View(Title)),
                                                              .Buttons = static_cast<std::uint32_t>(Buttons),
                                                              .Timeout = lngTimeout,
                                                              .beep = ToBool(blnBeep)}));
    });
}

STDMETHODIMP NimboStringsMain::ShowVantorAboutBox(IRaiseMsg* irm, BSTR AppTitle) {
    return Do([&] {
        RaiseMsgSink sink(irm);
        WindowsInstaller installer;
        ShowAboutBox(installer, &sink, View(AppTitle));
    });
}

STDMETHODIMP NimboStringsMain::ShowVantorSupportInfo(IRaiseMsg* irm) {
    return Do([&] {
        RaiseMsgSink sink(irm);
        WindowsInstaller installer;
        ShowSupportBox(ReadSupportInfo(installer, WindowsRegistry(), &sink));
    });
}

STDMETHODIMP NimboStringsMain::GetDateFromUser(BSTR Caption, DATE InitialDate, VARIANT_BOOL GetDateOnly,
                                               VARIANT_BOOL GetMinutesAlso, VARIANT_BOOL DateCannotBeNull,
                                               DATE* Result) {
    return Return(Result, [&] {
        return ShowDateDialog({.Title = std::wstring(View(Caption)),
                               .DateTimeValue = InitialDate,
                               .Use24HourFormat = false,
                               .UseDateOnly = ToBool(GetDateOnly),
                               .GetMinutesAlso = ToBool(GetMinutesAlso),
                               .DateCannotBeNull = ToBool(DateCannotBeNull)},
                              SystemClock());
    });
}

STDMETHODIMP NimboStringsMain::GetTimeFromUser(BSTR Caption, DATE InitialTime, VARIANT_BOOL* UserCancelled,
                                               DATE* Result) {
    if (UserCancelled == nullptr) {
        return E_POINTER;
    }
    return Return(Result, [&] {
        const TimeDialogResult answer = ShowTimeDialog(
            {.Title = std::wstring(View(Caption)), .DateTimeValue = InitialTime, .AllowUserToCancel = true});
        Pack(answer.cancelled, UserCancelled);
        return answer.time;
    });
}

STDMETHODIMP NimboStringsMain::GetVantorReleaseNumber(IRaiseMsg* irm, VantorReleaseEnum lngReleaseType, BSTR* Result) {
    return ReturnQuietly(Result, std::wstring_view(), [&] {
        RaiseMsgSink sink(irm);
        WindowsInstaller installer;
        return ReleaseNumber(installer, &sink, static_cast<ReleaseKind>(lngReleaseType));
    });
}

STDMETHODIMP NimboStringsMain::LoadVantorBitmap(VantorBitmapEnum BitmapID, IPictureDisp** Result) {
    return Return(Result, [&] { return LoadBitmapPicture(BitmapID); });
}

STDMETHODIMP NimboStringsMain::LoadVantorIcon(VantorIconsEnum IconID, IPictureDisp** Result) {
    return Return(Result, [&] { return LoadIconPicture(IconID); });
}

STDMETHODIMP NimboStringsMain::get_IsFactoryComputer(VARIANT_BOOL* Result) {
    return Return(Result, [&] { return IsFactoryComputer(WindowsRegistry()); });
}

STDMETHODIMP NimboStringsMain::GetDahsIDFromUser(long lngInitialDahsID, long* lngUserSelectedDahsID,
                                                 VARIANT_BOOL* Result) {
    return GetDahsIDFromUser2(lngInitialDahsID, lngUserSelectedDahsID, V5Strings::IgnoreEntriesWithBlankConnStrings,
                              Result);
}

STDMETHODIMP NimboStringsMain::GetDahsIDFromUser2(long lngInitialDahsID, long* lngUserSelectedDahsID,
                                                  DahsEntryOptionsEnum lngConnStringOption, VARIANT_BOOL* Result) {
    return GetDahsIDFromUser3(lngInitialDahsID, lngUserSelectedDahsID, lngConnStringOption, VARIANT_TRUE, Result);
}

STDMETHODIMP NimboStringsMain::GetDahsIDFromUser3(long lngInitialDahsID, long* lngUserSelectedDahsID,
                                                  DahsEntryOptionsEnum lngConnStringOption,
                                                  VARIANT_BOOL blnAllowSecondaryDas, VARIANT_BOOL* Result) {
    return GetDahsIDFromUser4(lngInitialDahsID, lngUserSelectedDahsID, lngConnStringOption, blnAllowSecondaryDas,
                              VARIANT_TRUE, Result);
}

STDMETHODIMP NimboStringsMain::GetDahsIDFromUser4(long lngInitialDahsID, long* lngUserSelectedDahsID,
                                                  DahsEntryOptionsEnum lngConnStringOption,
                                                  VARIANT_BOOL blnAllowSecondaryDas, VARIANT_BOOL blnAllowRemoteDas,
                                                  VARIANT_BOOL* Result) {
    if (lngUserSelectedDahsID == nullptr) {
        return E_POINTER;
    }
    *lngUserSelectedDahsID = lngInitialDahsID;
    return ReturnQuietly(Result, false, [&] {
        WindowsSiteHost host;
        const DahsChoice choice =
            ShowDahsChooser({.blankConnections = static_cast<BlankConnections>(lngConnStringOption),
                             .allowSecondary = ToBool(blnAllowSecondaryDas),
                             .allowRemote = ToBool(blnAllowRemoteDas),
                             .initialDahsId = lngInitialDahsID},
                            host);
        if (choice.Cancelled) {
            return false;
        }
        *lngUserSelectedDahsID = choice.DahsID;
        return choice.DahsID != lngInitialDahsID;
    });
}

}  // namespace v5
