// One DAHS of a site: the settings of one [DahsN] section of the site file.
#pragma once

#include <cstdint>
#include <string>

#include "base/EnumArray.h"

namespace v5 {

// Whether a DAHS sends its output by itself. The values are published.
enum class AutoOutput : std::int32_t {
    Unknown = -1,
    Disabled = 0,
    Enabled = 1,
    AutoPrimaryDas = 2,
    AutoSecondaryDas = 3,
    AutoDahsId = 4,
};

// The part that a DAHS plays where two of them serve one site. The values are published.
enum class RedundantDasRole : std::int32_t { Standalone = 0, Primary = 1, Secondary = 2 };

// The kinds of program that may be pinned to processors of their own. The values are published.
enum class AppCategory : std::int32_t { NotApplicable = 0, Ios = 1, Dm = 2, Rg = 3, Dbe = 4, Dr = 5 };
inline constexpr size_t kAppCategoryCount = 6;

// The product's databases, in the order in which their settings stand everywhere.
enum class Database { Alarms, Config, Data, DataShortTerm, Realtime, Ostra };
inline constexpr size_t kDatabaseCount = 6;
inline constexpr Database kDatabases[kDatabaseCount] = {Database::Alarms,        Database::Config,   Database::Data,
                                                        Database::DataShortTerm, Database::Realtime, Database::Ostra};

// The connection strings of the six databases in one form.
using ConnectionStrings = EnumArray<Database, std::wstring, kDatabaseCount>;

// The four forms of a connection string: for OLE DB or the .NET data provider, for programs with or without a user.
enum class ConnectionForm { OleDb, OleDbNoninteractive, DotNet, DotNetNoninteractive };
inline constexpr size_t kConnectionFormCount = 4;

constexpr ConnectionForm ConnectionFormFor(bool noninteractive, bool dotNet) {
    return static_cast<ConnectionForm>((noninteractive ? 1 : 0) + (dotNet ? 2 : 0));
}

// The processors of each kind of program, one bit each; 0: leave alone.
using AffinityMasks = EnumArray<AppCategory, std::int32_t, kAppCategoryCount>;

struct DahsEntry {
    std::int32_t dahsID = 0;  // the N of the section; 0: none
    std::wstring siteID;      // upper case
    std::wstring languageId;
    std::wstring computerName;
    std::wstring description;
    bool hdrEnabled = false;
    AutoOutput autoOutput = AutoOutput::Disabled;
    std::int32_t autoOutputTimeout = 0;  // seconds that a redundant DAS waits before it takes output over
    bool extraTraceMsgsEnabled = false;
    bool logFlushEnabled = false;
    std::wstring reportsUrl;
    std::wstring vantorDir;
    std::wstring logsDir;
    std::wstring primaryBackupDir;
    RedundantDasRole role = RedundantDasRole::Standalone;
    bool syncStagingEnabled = false;
    bool syncCompareEnabled = false;
    bool syncMergeEnabled = false;
    std::wstring drCurrentHealthTimeouts;
    EnumArray<ConnectionForm, ConnectionStrings, kConnectionFormCount> connectionStrings;
    AffinityMasks affinityMasks{};

    // Only a DAHS that is told so keeps its output to itself; the unknown setting counts as enabled.
    bool AutoOutputEnabled() const { return autoOutput != AutoOutput::Disabled; }
};

}  // namespace v5
