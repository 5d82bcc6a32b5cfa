#include "security/Levels.h"

#include <algorithm>
#include <array>

namespace v5 {

namespace {

constexpr std::array kConfigurableLevels = {
    level::kManualConfirmation, level::kNone, level::k1, level::k2, level::k3Low, level::k3High, level::kMaster};

struct FixedMinimum {
    RestrictionID restriction;
    PrivilegeLevel minimum;
};
constexpr FixedMinimum kFixedMinimums[] = {
    {restriction::kEnterDebugMode, level::kMaster},
    {restriction::kEraseHDR, level::k3Low},
    {restriction::kOpenSecurityForm, level::k3High},
    {restriction::kEditShortAvgData, level::k3Low},
    {restriction::kCreateModifyNimboReports, level::kMaster},
    {restriction::kChangeFirstCemsDate, level::k3Low},
    {restriction::kCloseManualConfirmation, level::kManualConfirmation},
    {restriction::kResetAlarmsManualConfirmation, level::kManualConfirmation},
};

}  // namespace

bool IsOpen(SecurityStatus status) {
    return status == SecurityStatus::EnabledByDefault || status == SecurityStatus::DisabledConfigured;
}

bool IsValidLevel(std::int32_t value) {
    return std::find(kConfigurableLevels.begin(), kConfigurableLevels.end(), value) != kConfigurableLevels.end();
}

std::optional<PrivilegeLevel> FixedMinimumLevel(RestrictionID restriction) {
    for (const FixedMinimum& row : kFixedMinimums) {
        if (row.restriction == restriction) {
            return row.minimum;
        }
    }
    return std::nullopt;
}

bool IsManualConfirmation(RestrictionID restriction) {
    return restriction == restriction::kCloseManualConfirmation ||
           restriction == restriction::kResetAlarmsManualConfirmation;
}

bool IsSufficient(PrivilegeLevel held, RestrictionID restriction, PrivilegeLevel minimum) {
    if (IsManualConfirmation(restriction)) {
        return held == level::kManualConfirmation || held == level::kMaster;
    }
    if (restriction == restriction::kOpenSecurityForm && held == level::kOSAdmin) {
        return true;  // an administrator can always open the security settings
    }
    return held >= minimum;
}

}  // namespace v5
