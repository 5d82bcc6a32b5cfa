#include "security/Security.h"

namespace v5 {

bool Security::Setup(const SiteConnection& connection, std::wstring_view applicationName) {
    return site_.Guard([&] { site_.Connect(connection, applicationName); });
}

void Security::Teardown() {
    site_.Guard([&] { site_.Disconnect(); });
}

void Security::ClearLogonMemory() {
    site_.Guard([&] { site_.Database()->ForgetLogons(site_.SiteID()); });
}

void Security::SetEnabled(bool enabled) {
    site_.Guard([&] {
        const SecurityStatus wanted = enabled ? SecurityStatus::EnabledConfigured : SecurityStatus::DisabledConfigured;
        if (switch_.Status() != wanted) {
            switch_.Set(enabled, lists_.UserLevel());
        }
    });
}

bool Security::SetAlarmResetPassword(std::wstring_view scrambled) {
    return site_.Guard([&] { alarmReset_.Set(scrambled, lists_.UserLevel()); });
}

bool Security::GetAccountLists(AccountListTexts& lists) {
    lists = {};
    return site_.Guard([&] { lists = lists_.Read(); });
}

bool Security::SetAccountLists(const AccountListTexts& lists, bool allowPassword) {
    return site_.Guard([&] {
        if (!check_.Check(restriction::kOpenSecurityForm, {.allowed = allowPassword, .message = {}, .title = {}})
                 .isAllowed) {
            throw SecurityProblem(L"Insufficient privileges to set privilege level [STR-0156]");
        }
        RequireChangeable(L"User database not available [STR-0157]", L"Security features are not enabled [STR-0158]");
        lists_.Replace(level::k1, lists.level1);
        lists_.Replace(level::k2, lists.level2);
        lists_.Replace(level::k3High, lists.level3);
    });
}

bool Security::SetMinimumLevel(RestrictionID restriction, PrivilegeLevel minimum) {
    return site_.Guard([&] {
        if (lists_.UserLevel() < level::kOSAdmin) {
            throw SecurityProblem(L"Insufficient privileges to change password level [STR-0133]");
        }
        RequireChangeable(L"User database not available [STR-0134]", L"Security features are not enabled [STR-0135]");
        minimums_.Set(restriction, minimum);
    });
}

void Security::RequireChangeable(std::wstring_view noDatabase, std::wstring_view notEnabled) {
    if (!site_.HasDatabase()) {
        throw SecurityProblem(noDatabase);
    }
    if (switch_.Status() == SecurityStatus::DisabledConfigured) {
        throw SecurityProblem(notEnabled);
    }
}

}  // namespace v5
