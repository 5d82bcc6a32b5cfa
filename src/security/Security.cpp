#include "security/Security.h"

namespace v5 {

bool Security::Setup(const SiteConnection& connection, std::wstring_view applicationName) {
    return mSite.Guard([&] { mSite.Connect(connection, applicationName); });
}

void Security::Teardown() {
    mSite.Guard([&] { mSite.Disconnect(); });
}

void Security::ClearLogonMemory() {
    mSite.Guard([&] { mSite.Database()->ForgetLogons(mSite.SiteID()); });
}

void Security::SetEnabled(bool enabled) {
    mSite.Guard([&] {
        const SecurityStatus wanted = enabled ? SecurityStatus::EnabledConfigured : SecurityStatus::DisabledConfigured;
        if (mSwitch.Status() != wanted) {
            mSwitch.Set(enabled, mLists.UserLevel());
        }
    });
}

bool Security::SetAlarmResetPassword(std::wstring_view scrambled) {
    return mSite.Guard([&] { mAlarmReset.Set(scrambled, mLists.UserLevel()); });
}

bool Security::GetAccountLists(AccountListTexts& lists) {
    lists = {};
    return mSite.Guard([&] { lists = mLists.Read(); });
}

bool Security::SetAccountLists(const AccountListTexts& lists, bool allowPassword) {
    return mSite.Guard([&] {
        if (!mCheck.Check(restriction::kOpenSecurityForm, {.allowed = allowPassword, .message = {}, .title = {}})
                 .isAllowed) {
            throw SecurityProblem(L"Insufficient privileges to set privilege level [STR-0156]");
        }
        RequireChangeable(L"User database not available [STR-0157]", L"Security features are not enabled [STR-0158]");
        mLists.Replace(level::k1, lists.level1);
        mLists.Replace(level::k2, lists.level2);
        mLists.Replace(level::k3High, lists.level3);
    });
}

bool Security::SetMinimumLevel(RestrictionID restriction, PrivilegeLevel minimum) {
    return mSite.Guard([&] {
        if (mLists.UserLevel() < level::kOSAdmin) {
            throw SecurityProblem(L"Insufficient privileges to change password level [STR-0133]");
        }
        RequireChangeable(L"User database not available [STR-0134]", L"Security features are not enabled [STR-0135]");
        mMinimums.Set(restriction, minimum);
    });
}

void Security::RequireChangeable(std::wstring_view noDatabase, std::wstring_view notEnabled) {
    if (!mSite.HasDatabase()) {
        throw SecurityProblem(noDatabase);
    }
    if (mSwitch.Status() == SecurityStatus::DisabledConfigured) {
        throw SecurityProblem(notEnabled);
    }
}

}  // namespace v5
