// Privilege levels, restrictions and what is fixed about them. The values are the published ones
// (PrivilegeLevelEnum, RestrictionIDEnum, SecurityEnabledEnum); clients pass any integer where one is expected.
#pragma once

#include <cstdint>
#include <optional>

namespace v5 {

// Compared as plain integers: more is a higher privilege, except for kManualConfirmation and kOSAdmin.
using PrivilegeLevel = std::int32_t;

namespace level {
inline constexpr PrivilegeLevel kManualConfirmation = 33;  // the alarm-reset password satisfies it, no account does
inline constexpr PrivilegeLevel kNone = 50;
inline constexpr PrivilegeLevel k1 = 51;
inline constexpr PrivilegeLevel k2 = 52;
inline constexpr PrivilegeLevel kOSAdmin = 53;  // a Windows administrator who is not in the level 3 list
inline constexpr PrivilegeLevel k3Low = 54;     // the default minimum of configurable restrictions
inline constexpr PrivilegeLevel k3High = 55;
inline constexpr PrivilegeLevel kMaster = 56;
}  // namespace level

using RestrictionID = std::int32_t;

namespace restriction {
inline constexpr RestrictionID kCloseManualConfirmation = 231;
inline constexpr RestrictionID kResetAlarmsManualConfirmation = 233;
inline constexpr RestrictionID kEnterDebugMode = 250;
inline constexpr RestrictionID kEraseHDR = 251;
inline constexpr RestrictionID kEditShortAvgData = 312;
inline constexpr RestrictionID kOpenSecurityForm = 398;
inline constexpr RestrictionID kUseNimboMenu = 399;
inline constexpr RestrictionID kCreateModifyNimboReports = 403;
inline constexpr RestrictionID kChangeFirstCemsDate = 405;
}  // namespace restriction

enum class SecurityStatus : std::int32_t {
    EnabledOther = 0,       // unknown: guarded like a site with security switched on
    EnabledByDefault = 1,   // never configured
    EnabledConfigured = 2,  // switched on
    DisabledConfigured = 3  // switched off
};

// Whether configurable restrictions are open to everybody: security never configured, or switched off.
bool IsOpen(SecurityStatus status);

// Whether a level can be configured as a minimum. kOSAdmin cannot, although users can hold it.
bool IsValidLevel(std::int32_t value);

// The minimum level of a restriction that is not configurable; nullopt for every other identifier.
std::optional<PrivilegeLevel> FixedMinimumLevel(RestrictionID restriction);

bool IsManualConfirmation(RestrictionID restriction);

// Whether a user of level `held` may do what `restriction` guards, given its minimum level.
bool IsSufficient(PrivilegeLevel held, RestrictionID restriction, PrivilegeLevel minimum);

}  // namespace v5
