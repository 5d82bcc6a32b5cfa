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

STDMETHODIMP NimboSecurity::Setup(BSTR siteID, BSTR languageID, BSTR configDatabase, BSTR alarmsDatabase,
                                  BSTR applicationName, VARIANT_BOOL isNoninteractive, VARIANT_BOOL* result) {
    return ReturnQuietly(result, false, [&] {
        SiteConnection connection;
        connection.siteID = View(siteID);
        connection.languageID = View(languageID);
        connection.configDatabase = View(configDatabase);
        connection.alarmsDatabase = View(alarmsDatabase);
        connection.isNoninteractive = ToBool(isNoninteractive);
        return mSecurity.Setup(connection, View(applicationName));
    });
}

STDMETHODIMP NimboSecurity::CheckUserPrivilegeLevel(RestrictionIDEnum restriction, VARIANT_BOOL allowPassword,
                                                    VARIANT_BOOL* result) {
    return CheckUserPrivilegeLevelEx(restriction, allowPassword, nullptr, nullptr, nullptr, nullptr, result);
}

STDMETHODIMP NimboSecurity::CheckUserPrivilegeLevelEx(RestrictionIDEnum restriction, VARIANT_BOOL allowPassword,
                                                      BSTR* errorMessage, BSTR dialogMessage, BSTR dialogTitle,
                                                      VARIANT_BOOL* enteredMasterPassword, VARIANT_BOOL* result) {
    DoQuietly([&] { Answer(errorMessage, L""); });
    if (enteredMasterPassword != nullptr) {
        *enteredMasterPassword = VARIANT_FALSE;
    }
    return ReturnQuietly(result, false, [&] {
        const CheckResult check = mSecurity.Check(
            restriction, {.allowed = ToBool(allowPassword),
                          .texts = {std::wstring(View(dialogMessage)), std::wstring(View(dialogTitle))}});
        if (enteredMasterPassword != nullptr && check.enteredMasterPassword) {
            *enteredMasterPassword = VARIANT_TRUE;
        }
        return check.isAllowed;
    });
}

STDMETHODIMP NimboSecurity::GetSidsForPrivilegeLevels(BSTR* level1, BSTR* level2, BSTR* level3, VARIANT_BOOL* result) {
    return ReturnQuietly(result, false, [&] {
        AccountListTexts lists;
        const bool done = mSecurity.GetAccountLists(lists);
        Answer(level1, lists.level1);
        Answer(level2, lists.level2);
        Answer(level3, lists.level3);
        return done;
    });
}

STDMETHODIMP NimboSecurity::SetSidsForAllPrivilegeLevels(BSTR level1, BSTR level2, BSTR level3,
                                                         VARIANT_BOOL allowPassword, VARIANT_BOOL* result) {
    return ReturnQuietly(result, false, [&] {
        const AccountListTexts lists = {std::wstring(View(level1)), std::wstring(View(level2)),
                                        std::wstring(View(level3))};
        return mSecurity.SetAccountLists(lists, ToBool(allowPassword));
    });
}

void NimboSecurity::RaiseMessage(long type, std::wstring_view text) {
    constexpr DISPID kMessageEvent = 1;
    GuardedQuietly([&] { RaiseEvent(kMessageEvent, {type, TextVariant(text)}); });
}

}  // namespace v5
