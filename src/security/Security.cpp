#include "security/Security.h"

namespace v5 {

bool Security::Setup(const SiteConnection& connection, std::wstring_view applicationName) {
    return mSite.ReportFailures([&] { mSite.Connect(connection, applicationName); });
}

void Security::Teardown() {
    mSite.ReportFailures([&] { mSite.Disconnect(); });
}

void Security::ClearLogonMemory() {
    mSite.ReportFailures([&] { mSite.Database()->ForgetLogons(mSite.SiteID()); });
}

void Security::SetEnabled(bool enabled) {
    mSite.ReportFailures([&] {
        const SecurityStatus wanted = enabled ? SecurityStatus::EnabledConfigured : SecurityStatus::DisabledConfigured;
        if (mSwitch.ReadStatus() != wanted) {
            mSwitch.Set(enabled, mLists.UserLevel());
        }
    });
}

bool Security::SetAlarmResetPassword(std::wstring_view scrambled) {
    return mSite.ReportFailures([&] { mAlarmReset.Set(scrambled, mLists.UserLevel()); });
}

bool Security::GetAccountLists(AccountListTexts& lists) {
    lists = {};
    return mSite.ReportFailures([&] { lists = mLists.Read(); });
}

bool Security::SetAccountLists(const AccountListTexts& lists, bool allowPassword) {
    return mSite.ReportFailures([&] {
        if (!mCheck.Check(restriction::kOpenSecurityForm, {.allowed = allowPassword}).isAllowed) {
            throw SecurityProblem(L"Insufficient privileges to set privilege level [STR-0156]");
        }
        RequireChangeable(L"User database not available [STR-0157]", L"Security features are not enabled [STR-0158]");
        mLists.Replace(lists);
    });
}

bool Security::SetMinimumLevel(RestrictionID restriction, PrivilegeLevel minimum) {
    return mSite.ReportFailures([&] {
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
    if (mSwitch.ReadStatus() == SecurityStatus::DisabledConfigured) {
        throw SecurityProblem(notEnabled);
    }
}

}  // namespace v5
