#include "security/NimboSecurity.h"

#include "dialogs/Dialogs.h"
#include "security/frmGetPasswordFromUser.h"

namespace v5 {

namespace {

void Answer(BSTR* inOut, std::wstring_view value) {
    if (inOut != nullptr) {
        Replace(inOut, value);
    }
}

}  // namespace

void SecurityHostWithForms::AskForPassword(const PasswordDialogTexts& texts,
                                           const std::function<bool(SecretText)>& isSettled) {
    v5::AskForPassword(texts, isSettled);
}

void SecurityHostWithForms::ShowMessageBox(std::wstring_view text, std::int32_t style, std::wstring_view title) {
    TimedMessageBoxSettings settings;
    settings.Prompt = text;
    settings.Title = title;
    settings.Buttons = static_cast<std::uint32_t>(style);
    settings.hasOwner = false;
    ShowTimedMessageBox(settings);
}

STDMETHODIMP NimboSecurity::Setup(BSTR strSiteID, BSTR strLanguageID, BSTR strSqlConnectionString_ConfigDB,
                                  BSTR strSqlConnectionString_AlarmsDB, BSTR strApplicationName,
                                  VARIANT_BOOL blnIsNoninteractiveProcess, VARIANT_BOOL* Result) {
    return ReturnQuietly(Result, false, [&] {
        SiteConnection connection;
        connection.siteID = View(strSiteID);
        connection.languageID = View(strLanguageID);
        connection.configDatabase = View(strSqlConnectionString_ConfigDB);
        connection.alarmsDatabase = View(strSqlConnectionString_AlarmsDB);
        connection.isNoninteractive = ToBool(blnIsNoninteractiveProcess);
        return mSecurity.Setup(connection, View(strApplicationName));
    });
}

STDMETHODIMP NimboSecurity::CheckUserPrivilegeLevel(RestrictionIDEnum lngRestrictionID,
                                                    VARIANT_BOOL blnAllowUserToEnterVantorPassword,
                                                    VARIANT_BOOL* Result) {
    return CheckUserPrivilegeLevelEx(lngRestrictionID, blnAllowUserToEnterVantorPassword, nullptr, nullptr, nullptr,
                                     nullptr, Result);
}

STDMETHODIMP NimboSecurity::CheckUserPrivilegeLevelEx(RestrictionIDEnum lngRestrictionID,
                                                      VARIANT_BOOL blnAllowUserToEnterVantorPassword, BSTR* strErrorMsg,
                                                      BSTR strPasswordDialogMessage, BSTR strPasswordDialogTitle,
                                                      VARIANT_BOOL* blnEnteredMasterPwd, VARIANT_BOOL* Result) {
    DoQuietly([&] { Answer(strErrorMsg, L""); });
    if (blnEnteredMasterPwd != nullptr) {
        *blnEnteredMasterPwd = VARIANT_FALSE;
    }
    return ReturnQuietly(Result, false, [&] {
        const CheckResult check = mSecurity.Check(
            lngRestrictionID,
            {.allowed = ToBool(blnAllowUserToEnterVantorPassword),
             .texts = {std::wstring(View(strPasswordDialogMessage)), std::wstring(View(strPasswordDialogTitle))}});
        if (blnEnteredMasterPwd != nullptr && check.enteredMasterPassword) {
            *blnEnteredMasterPwd = VARIANT_TRUE;
        }
        return check.isAllowed;
    });
}

STDMETHODIMP NimboSecurity::GetSidsForPrivilegeLevels(BSTR* strLevel1SidList, BSTR* strLevel2SidList,
                                                      BSTR* strLevel3SidList, VARIANT_BOOL* Result) {
    return ReturnQuietly(Result, false, [&] {
        AccountListTexts lists;
        const bool done = mSecurity.GetAccountLists(lists);
        Answer(strLevel1SidList, lists.level1);
        Answer(strLevel2SidList, lists.level2);
        Answer(strLevel3SidList, lists.level3);
        return done;
    });
}

STDMETHODIMP NimboSecurity::SetSidsForAllPrivilegeLevels(BSTR strLevel1SidList, BSTR strLevel2SidList,
                                                         BSTR strLevel3SidList,
                                                         VARIANT_BOOL blnAllowUserToEnterVantorPassword,
                                                         VARIANT_BOOL* Result) {
    return ReturnQuietly(Result, false, [&] {
        const AccountListTexts lists = {std::wstring(View(strLevel1SidList)), std::wstring(View(strLevel2SidList)),
                                        std::wstring(View(strLevel3SidList))};
        return mSecurity.SetAccountLists(lists, ToBool(blnAllowUserToEnterVantorPassword));
    });
}

void NimboSecurity::RaiseMessage(long type, std::wstring_view text) {
    constexpr DISPID kMessageEvent = 1;
    GuardedQuietly([&] { RaiseEvent(kMessageEvent, {type, TextVariant(text)}); });
}

}  // namespace v5
