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
#include "security/MachineSecurityHost.h"
#include "security/Security.h"

namespace v5 {

// The machine, with the library's own password form and message box.
class SecurityHostWithForms final : public MachineSecurityHost {
  public:
    void AskForPassword(const PasswordDialogTexts& texts, const std::function<bool(SecretText)>& isSettled) override;
    void ShowMessageBox(std::wstring_view text, std::int32_t style, std::wstring_view title) override;
};

class NimboSecurity final : public EventfulObject<NimboSecurity, _NimboSecurity, ::NimboSecurity, __NimboSecurity>,
                            private MessageSink {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.NimboSecurity";

    STDMETHODIMP Setup(BSTR siteID, BSTR languageID, BSTR configDatabase, BSTR alarmsDatabase, BSTR applicationName,
                       VARIANT_BOOL isNoninteractive, VARIANT_BOOL* result) override;
    STDMETHODIMP Teardown() override {
        return DoQuietly([&] { mSecurity.Teardown(); });
    }
    STDMETHODIMP ClearLogonMemory() override {
        return DoQuietly([&] { mSecurity.ClearLogonMemory(); });
    }

    STDMETHODIMP get_SecurityEnabledStatus(SecurityEnabledEnum* result) override {
        return ReturnQuietly(result, SecurityStatus::EnabledOther, [&] { return mSecurity.Status(); });
    }
    STDMETHODIMP EnableSecurity() override {
        return DoQuietly([&] { mSecurity.SetEnabled(true); });
    }
    STDMETHODIMP DisableSecurity() override {
        return DoQuietly([&] { mSecurity.SetEnabled(false); });
    }

    STDMETHODIMP GetUserPrivilegeLevel(PrivilegeLevelEnum* result) override {
        return ReturnQuietly(result, V5Strings::PrivLevel_None, [&] { return Published(mSecurity.UserLevel()); });
    }
    STDMETHODIMP CheckUserPrivilegeLevel(RestrictionIDEnum restriction, VARIANT_BOOL allowPassword,
                                         VARIANT_BOOL* result) override;
    STDMETHODIMP CheckUserPrivilegeLevelEx(RestrictionIDEnum restriction, VARIANT_BOOL allowPassword,
                                           BSTR* errorMessage, BSTR dialogMessage, BSTR dialogTitle,
                                           VARIANT_BOOL* enteredMasterPassword, VARIANT_BOOL* result) override;
    STDMETHODIMP SetManualAlarmResetPwd(BSTR scrambled, VARIANT_BOOL* result) override {
        return ReturnQuietly(result, false, [&] { return mSecurity.SetAlarmResetPassword(View(scrambled)); });
    }

    STDMETHODIMP GetSidsForPrivilegeLevels(BSTR* level1, BSTR* level2, BSTR* level3, VARIANT_BOOL* result) override;
    STDMETHODIMP SetSidsForAllPrivilegeLevels(BSTR level1, BSTR level2, BSTR level3, VARIANT_BOOL allowPassword,
                                              VARIANT_BOOL* result) override;

    STDMETHODIMP GetMinPrivilegeLevelForRID(RestrictionIDEnum restriction, PrivilegeLevelEnum* result) override {
        return GetMinPrivilegeLevelForPID(restriction, result);
    }
    STDMETHODIMP GetMinPrivilegeLevelForPID(long restriction, PrivilegeLevelEnum* result) override {
        return ReturnQuietly(result, V5Strings::PrivLevel_3Low,
                             [&] { return Published(mSecurity.MinimumLevel(restriction)); });
    }
    STDMETHODIMP SetMinPrivilegeLevelForRID(RestrictionIDEnum restriction, PrivilegeLevelEnum minimum,
                                            VARIANT_BOOL* result) override {
        return SetMinPrivilegeLevelForPID(restriction, minimum, result);
    }
    STDMETHODIMP SetMinPrivilegeLevelForPID(long restriction, PrivilegeLevelEnum minimum,
                                            VARIANT_BOOL* result) override {
        return ReturnQuietly(result, false, [&] { return mSecurity.SetMinimumLevel(restriction, minimum); });
    }

    STDMETHODIMP GetCurrentUserName(BSTR* result) override {
        return ReturnQuietly(result, std::wstring_view(), [&] { return mSecurity.User().Name(); });
    }
    STDMETHODIMP GetCurrentUserNameNoncached(BSTR* result) override {
        return ReturnQuietly(result, std::wstring_view(), [&] { return mSecurity.User().NameNoncached(); });
    }
    STDMETHODIMP GetWindowsUsername(BSTR* result) override {
        return ReturnQuietly(result, std::wstring_view(), [&] { return mSecurity.User().WindowsName(); });
    }
    STDMETHODIMP IsSqlAuthenticationEnabledInSqlServer(VARIANT_BOOL* result) override {
        return ReturnQuietly(result, false, [&] { return mSecurity.User().IsSqlAuthenticationEnabled(); });
    }
    STDMETHODIMP IsSqlAuthenticationUsedInConnStrings(VARIANT_BOOL* result) override {
        return ReturnQuietly(result, false, [&] { return mSecurity.User().IsSqlAuthenticationUsed(); });
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
