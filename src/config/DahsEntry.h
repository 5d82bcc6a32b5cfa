// One DAHS of a site: the settings of one [DahsN] section of the site file.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace v5 {

// Whether a DAHS sends its output by itself. The values are published.
enum class AutoOutput : std::int32_t {
    kUnknown = -1,
    kDisabled = 0,
    kEnabled = 1,
    kAutoPrimaryDas = 2,
    kAutoSecondaryDas = 3,
    kAutoDahsId = 4,
};

// The part that a DAHS plays where two of them serve one site. The values are published.
enum class RedundantDasRole : std::int32_t { kStandalone = 0, kPrimary = 1, kSecondary = 2 };

// The kinds of program that may be pinned to processors of their own. The values are published.
enum class AppCategory : std::int32_t { kNotApplicable = 0, kIos = 1, kDm = 2, kRg = 3, kDbe = 4, kDr = 5 };
inline constexpr size_t kAppCategoryCount = 6;

// The product's databases, in the order in which their settings stand everywhere.
enum class Database { kAlarms, kConfig, kData, kDataShortTerm, kRealtime, kOstra };
inline constexpr size_t kDatabaseCount = 6;

// The connection strings of the six databases in one form.
using ConnectionStrings = std::array<std::wstring, kDatabaseCount>;

// The four forms of a connection string: for OLE DB or the .NET data provider, for programs with or without a user.
enum class ConnectionForm { kOleDb, kOleDbNoninteractive, kDotNet, kDotNetNoninteractive };
inline constexpr size_t kConnectionFormCount = 4;

constexpr ConnectionForm ConnectionFormFor(bool noninteractive, bool dotNet) {
    return static_cast<ConnectionForm>((noninteractive ? 1 : 0) + (dotNet ? 2 : 0));
}

struct DahsEntry {
    std::int32_t dahsID = 0;  // the N of the section; 0: none
    std::wstring siteID;      // upper case
    std::wstring languageId;
    std::wstring computerName;
    std::wstring description;
    bool hdrEnabled = false;
    AutoOutput autoOutput = AutoOutput::kDisabled;
    std::int32_t autoOutputTimeout = 0;  // seconds that a redundant DAS waits before it takes output over
    bool extraTraceMsgsEnabled = false;
    bool logFlushEnabled = false;
    std::wstring reportsUrl;
    std::wstring vantorDir;
    std::wstring logsDir;
    std::wstring primaryBackupDir;
    RedundantDasRole role = RedundantDasRole::kStandalone;
    bool syncStagingEnabled = false;
    bool syncCompareEnabled = false;
    bool syncMergeEnabled = false;
    std::wstring drCurrentHealthTimeouts;
    std::array<ConnectionStrings, kConnectionFormCount> connectionStrings;  // by ConnectionForm, then Database
    std::array<std::int32_t, kAppCategoryCount> affinityMasks{};            // by AppCategory; 0: leave alone

    // Only a DAHS that is told so keeps its output to itself; the unknown setting counts as enabled.
    bool AutoOutputEnabled() const { return autoOutput != AutoOutput::kDisabled; }

    const ConnectionStrings& Connections(ConnectionForm form) const {
        return connectionStrings[static_cast<size_t>(form)];
    }
};

}  // namespace v5
