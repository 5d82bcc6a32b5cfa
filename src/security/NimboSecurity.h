// NimboSecurity: the product's user security. See security/Security.h for what each member does.
//
// No member raises: what goes wrong is reported by the event Message, and the caller gets the member's default.
#pragma once

#include "V5Msgs.h"
#include "V5MsgsMembers.h"
#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "com/EventSource.h"
#include "com/Values.h"
#include "security/Security.h"
#include "security/WindowsSecurityHost.h"

namespace v5 {

// The machine, with the library's own password form and message box.
class SecurityHostWithForms final : public WindowsSecurityHost {
  public:
    void AskForPassword(const PasswordDialogTexts& texts, const std::function<bool(SecretText)>& isSettled) override;
    void ShowMessageBox(std::wstring_view text, std::int32_t style, std::wstring_view title) override;
};

class NimboSecurity final : public EventfulObject<NimboSecurity, _NimboSecurity, ::NimboSecurity, __NimboSecurity>,
                            private MessageSink {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.NimboSecurity";

    STDMETHODIMP Setup(BSTR strSiteID, BSTR strLanguageID, BSTR strSqlConnectionString_ConfigDB,
                       BSTR strSqlConnectionString_AlarmsDB, BSTR strApplicationName,
                       VARIANT_BOOL blnIsNoninteractiveProcess, VARIANT_BOOL* Result) override;
    STDMETHODIMP Teardown() override {
        return DoQuietly([&] { mSecurity.Teardown(); });
    }
    STDMETHODIMP ClearLogonMemory() override {
        return DoQuietly([&] { mSecurity.ClearLogonMemory(); });
    }

    STDMETHODIMP get_SecurityEnabledStatus(SecurityEnabledEnum* Result) override {
        return ReturnQuietly(Result, SecurityStatus::EnabledOther, [&] { return mSecurity.Status(); });
    }
    STDMETHODIMP EnableSecurity() override {
        return DoQuietly([&] { mSecurity.SetEnabled(true); });
    }
    STDMETHODIMP DisableSecurity() override {
        return DoQuietly([&] { mSecurity.SetEnabled(false); });
    }

    STDMETHODIMP GetUserPrivilegeLevel(PrivilegeLevelEnum* Result) override {
        return ReturnQuietly(Result, V5Strings::PrivLevel_None, [&] { return Published(mSecurity.UserLevel()); });
    }
    STDMETHODIMP CheckUserPrivilegeLevel(RestrictionIDEnum lngRestrictionID,
                                         VARIANT_BOOL blnAllowUserToEnterVantorPassword, VARIANT_BOOL* Result) override;
    STDMETHODIMP CheckUserPrivilegeLevelEx(RestrictionIDEnum lngRestrictionID,
                                           VARIANT_BOOL blnAllowUserToEnterVantorPassword, BSTR* strErrorMsg,
                                           BSTR strPasswordDialogMessage, BSTR strPasswordDialogTitle,
                                           VARIANT_BOOL* blnEnteredMasterPwd, VARIANT_BOOL* Result) override;
    STDMETHODIMP SetManualAlarmResetPwd(BSTR strNewEncryptedPwd, VARIANT_BOOL* Result) override {
        return ReturnQuietly(Result, false, [&] { return mSecurity.SetAlarmResetPassword(View(strNewEncryptedPwd)); });
    }

    STDMETHODIMP GetSidsForPrivilegeLevels(BSTR* strLevel1SidList, BSTR* strLevel2SidList, BSTR* strLevel3SidList,
                                           VARIANT_BOOL* Result) override;
    STDMETHODIMP SetSidsForAllPrivilegeLevels(BSTR strLevel1SidList, BSTR strLevel2SidList, BSTR strLevel3SidList,
                                              VARIANT_BOOL blnAllowUserToEnterVantorPassword,
                                              VARIANT_BOOL* Result) override;

    STDMETHODIMP GetMinPrivilegeLevelForRID(RestrictionIDEnum lngRestrictionID, PrivilegeLevelEnum* Result) override {
        return GetMinPrivilegeLevelForPID(lngRestrictionID, Result);
    }
    STDMETHODIMP GetMinPrivilegeLevelForPID(long lngPID, PrivilegeLevelEnum* Result) override {
        return ReturnQuietly(Result, V5Strings::PrivLevel_3Low,
                             [&] { return Published(mSecurity.MinimumLevel(lngPID)); });
    }
    STDMETHODIMP SetMinPrivilegeLevelForRID(RestrictionIDEnum lngRestrictionID, PrivilegeLevelEnum lngNewMinPrivLevel,
                                            VARIANT_BOOL* Result) override {
        return SetMinPrivilegeLevelForPID(lngRestrictionID, lngNewMinPrivLevel, Result);
    }
    STDMETHODIMP SetMinPrivilegeLevelForPID(long lngPID, PrivilegeLevelEnum lngNewMinPrivLevel,
                                            VARIANT_BOOL* Result) override {
        return ReturnQuietly(Result, false, [&] { return mSecurity.SetMinimumLevel(lngPID, lngNewMinPrivLevel); });
    }

    STDMETHODIMP GetCurrentUserName(BSTR* Result) override {
        return ReturnQuietly(Result, std::wstring_view(), [&] { return mSecurity.User().Name(); });
    }
    STDMETHODIMP GetCurrentUserNameNoncached(BSTR* Result) override {
        return ReturnQuietly(Result, std::wstring_view(), [&] { return mSecurity.User().NameNoncached(); });
    }
    STDMETHODIMP GetWindowsUsername(BSTR* Result) override {
        return ReturnQuietly(Result, std::wstring_view(), [&] { return mSecurity.User().WindowsName(); });
    }
    STDMETHODIMP IsSqlAuthenticationEnabledInSqlServer(VARIANT_BOOL* Result) override {
        return ReturnQuietly(Result, false, [&] { return mSecurity.User().IsSqlAuthenticationEnabled(); });
    }
    STDMETHODIMP IsSqlAuthenticationUsedInConnStrings(VARIANT_BOOL* Result) override {
        return ReturnQuietly(Result, false, [&] { return mSecurity.User().IsSqlAuthenticationUsed(); });
    }

  protected:
    void* FindMore(REFIID iid) override {
        return iid == __uuidof(IRaiseMsg) ? static_cast<IRaiseMsg*>(&mIncoming) : nullptr;
    }

  private:
    // The object as a message sink of the product: a dual interface of its own, one object with its owner.
    class IncomingMessages final : public DualInterface<IRaiseMsg> {
      public:
        explicit IncomingMessages(NimboSecurity& owner) : mOwner(owner) {}
        STDMETHODIMP QueryInterface(REFIID iid, void** object) override { return mOwner.QueryInterface(iid, object); }
        STDMETHODIMP_(ULONG) AddRef() override { return mOwner.AddRef(); }
        STDMETHODIMP_(ULONG) Release() override { return mOwner.Release(); }
        STDMETHODIMP RaiseMsg(long type, BSTR description) override {
            mOwner.RaiseMessage(type, View(description));
            return S_OK;
        }

      private:
        NimboSecurity& mOwner;
    };

    // Every message, the library's own and those passed on, becomes the event Message.
    void RaiseMessage(long type, std::wstring_view text) override;

    static PrivilegeLevelEnum Published(PrivilegeLevel level) { return static_cast<PrivilegeLevelEnum>(level); }

    IncomingMessages mIncoming{*this};
    SecurityHostWithForms mHost;
    Security mSecurity{mHost, *this};
};

}  // namespace v5
