#include "config/SiteFile.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <utility>

#include "base/Numbers.h"
#include "base/Text.h"
#include "config/ConnectionString.h"

namespace v5 {

namespace {

// The keys of a [DahsN] section, in the order in which they are read and their messages appear.
enum Key : size_t {
    kSiteId,
    kLanguageId,
    kComputerName,
    kDescription,
    kHdr,
    kAutoOutput,
    kTrace,
    kLogFlush,
    kReportsUrl,
    kVantorDir,
    kLogsDir,
    kRole,
    kSyncStaging,
    kSyncCompare,
    kSyncMerge,
    kHealthTimeouts,
    kConnections,  // the first of 24: by ConnectionForm, then Database
    kBackupDir = kConnections + kConnectionFormCount * kDatabaseCount,
    kKeyCount,
};

constexpr std::array<std::string_view, kKeyCount> kKeyNames = {
    "SiteID",
    "LanguageID",
    "DahsComputerName",
    "DahsDescription",
    "HDR",
    "AutoOutputEnabled",
    "TraceEnabled",
    "LogFlushEnabled",
    "ReportsURL",
    "VantorDir",
    "LogsDir",
    "RedundantDasRole",
    "RedundantDasSyncStagingEnabled",
    "RedundantDasSyncCompareEnabled",
    "RedundantDASSyncMergeEnabled",
    "DRCurrentHealthTimeouts",
    "SQLAlarms",
    "SQLConfig",
    "SQLData",
    "SQLDataShortTerm",
    "SQLRealtime",
    "SQLOstra",
    "SQLAlarmsNoninteractive",
    "SQLConfigNoninteractive",
    "SQLDataNoninteractive",
    "SQLDataShortTermNoninteractive",
    "SQLRealtimeNoninteractive",
    "SQLOstraNoninteractive",
    "SQLAlarms.NET",
    "SQLConfig.NET",
    "SQLData.NET",
    "SQLDataShortTerm.NET",
    "SQLRealtime.NET",
    "SQLOstra.NET",
    "SQLAlarmsNoninteractive.NET",
    "SQLConfigNoninteractive.NET",
    "SQLDataNoninteractive.NET",
    "SQLDataShortTermNoninteractive.NET",
    "SQLRealtimeNoninteractive.NET",
    "SQLOstraNoninteractive.NET",
    "BackupDir",
};

// The tags of the messages for blank connection strings. A blank Ostra string has a default instead.
constexpr std::array<std::wstring_view, kDatabaseCount> kBlankConnectionTags = {L"STR-086",  L"STR-087", L"STR-088",
                                                                                L"STR-0160", L"STR-089", L""};

// The keys of the [AffinityMasks] section and the kind of program that each is for.
constexpr std::array<std::string_view, 5> kMaskNames = {"IOS", "DR", "DM", "RG", "DBE"};
constexpr std::array<AppCategory, 5> kMaskCategories = {AppCategory::kIos, AppCategory::kDr, AppCategory::kDm,
                                                        AppCategory::kRg, AppCategory::kDbe};

constexpr size_t kMasksSection = kMaxDahsId;  // its position in SiteSections, behind Dahs1 to Dahs99
constexpr size_t kMaxNetBiosName = 15;        // characters

bool IsOneOf(std::wstring_view word, std::initializer_list<std::wstring_view> words) {
    return std::any_of(words.begin(), words.end(), [&](auto other) { return EqualsIgnoreCase(word, other); });
}

// A word as the file's authors may write it: Auto-Primary, AUTO_PRIMARY and autoprimary are the same.
std::wstring CanonicalWord(std::wstring_view text) {
    std::wstring word = ToUpper(text);
    std::erase_if(word, [](wchar_t c) { return c == L'-' || c == L'_'; });
    return word;
}

std::optional<AutoOutput> AutoOutputFromWord(std::wstring_view text) {
    constexpr std::pair<std::wstring_view, AutoOutput> kWords[] = {
        {L"YES", AutoOutput::kEnabled},
        {L"TRUE", AutoOutput::kEnabled},
        {L"NO", AutoOutput::kDisabled},
        {L"FALSE", AutoOutput::kDisabled},
        {L"FASLE", AutoOutput::kDisabled},  // a misspelling that sites rely on
        {L"AUTOPRIMARY", AutoOutput::kAutoPrimaryDas},
        {L"AUTOSECONDARY", AutoOutput::kAutoSecondaryDas},
        {L"AUTODAHSID", AutoOutput::kAutoDahsId},
        {L"AUTODASID", AutoOutput::kAutoDahsId},
    };
    const std::wstring word = CanonicalWord(text);
    for (const auto& [name, value] : kWords) {
        if (word == name) {
            return value;
        }
    }
    return std::nullopt;
}

std::optional<RedundantDasRole> RoleFromWord(std::wstring_view text) {
    constexpr std::pair<std::wstring_view, RedundantDasRole> kWords[] = {
        {L"STANDALONE", RedundantDasRole::kStandalone},
        {L"PRIMARY", RedundantDasRole::kPrimary},
        {L"SECONDARY", RedundantDasRole::kSecondary},
    };
    const std::wstring word = CanonicalWord(text);
    for (const auto& [name, value] : kWords) {
        if (word == name) {
            return value;
        }
    }
    return std::nullopt;
}

std::array<std::int32_t, kAppCategoryCount> ReadAffinityMasks(const IniFile& file) {
    static const IniNames keys(kMaskNames);
    std::array<std::string_view, kMaskNames.size()> values;
    file.ReadSection(kMasksSection, keys, values);
    std::array<std::int32_t, kAppCategoryCount> masks{};
    for (size_t i = 0; i < values.size(); ++i) {
        const std::wstring value(Trim(file.Decode(values[i])));
        masks[static_cast<size_t>(kMaskCategories[i])] = ToLong(ReplaceAll(value, L"0x", L"&H")).value_or(0);
    }
    return masks;
}

// Reads and judges one section.
class DahsSectionReader {
  public:
    DahsSectionReader(const IniFile& file, std::int32_t dahsID, const std::wstring& path, BlankConnections option,
                      std::vector<std::wstring>& problems)
        : mFile(file), mPath(path), mOption(option), mProblems(problems) {
        static const IniNames keys(kKeyNames);
        file.ReadSection(static_cast<size_t>(dahsID) - 1, keys, mValues);
        mEntry.dahsID = dahsID;
    }

    // The entry, or nullopt when there is no such section or its entry cannot be used.
    std::optional<DahsEntry> Read() {
        if (!ReadIdentity()) {
            return std::nullopt;
        }
        ReadSwitches();
        ReadFolders();
        ReadRedundancy();
        ReadOleDbConnections();
        ReadDotNetConnections();
        ReadBackupDir();
        return Judge() ? std::optional<DahsEntry>(std::move(mEntry)) : std::nullopt;
    }

  private:
    std::wstring Value(size_t key) const {
        std::wstring value = mFile.Decode(mValues[key]);
        const std::wstring_view trimmed = Trim(value);
        return trimmed.size() == value.size() ? std::move(value) : std::wstring(trimmed);
    }

    // Adds a message in which $file$ and $n$ stand for the file's path and the number of the entry, and $name$ for
    // the computer name.
    void Report(std::wstring_view text) {
        const std::pair<std::wstring_view, std::wstring> words[] = {
            {L"$file$", mPath}, {L"$n$", std::to_wstring(mEntry.dahsID)}, {L"$name$", mEntry.computerName}};
        std::wstring message;
        while (!text.empty()) {
            const auto word = std::find_if(std::begin(words), std::end(words),
                                           [&](const auto& w) { return text.starts_with(w.first); });
            message += word == std::end(words) ? std::wstring(1, text.front()) : word->second;
            text.remove_prefix(word == std::end(words) ? 1 : word->first.size());
        }
        mProblems.push_back(std::move(message));
    }

    void ReportMissing(std::wstring_view tag, size_t key, std::wstring_view detail = {}) {
        std::wstring text(tag);
        text += L": '$file$', DAHS $n$: missing or invalid value for '";
        text.append(kKeyNames[key].begin(), kKeyNames[key].end()).append(L"'");
        if (!detail.empty()) {
            text.append(L"; ").append(detail);
        }
        Report(text);
    }

    // False when the section does not exist.
    bool ReadIdentity() {
        mEntry.siteID = ToUpper(Value(kSiteId));
        if (mEntry.siteID.empty()) {
            return false;
        }
        if (IsNumeric(mEntry.siteID)) {
            ReportMissing(L"STR-084", kSiteId, L"may not be a number");
            mValid = false;
        }
        mEntry.languageId = Value(kLanguageId);
        ReadComputerName();
        mEntry.description = Value(kDescription);
        if (EqualsIgnoreCase(mEntry.description, L"{optional DAHS description}")) {
            mEntry.description.clear();
        }
        return true;
    }

    void ReadComputerName() {
        mEntry.computerName = Value(kComputerName);
        const std::wstring& name = mEntry.computerName;
        if (name.empty()) {
            ReportMissing(L"STR-091", kComputerName, L"may not be blank");
            mValid = false;
        }
        if (name.size() > kMaxNetBiosName) {
            Report(
                L"STR-0189: '$file$', DAHS $n$: Computer name '$name$' exceeds the max length of a NetBIOS name (15 "
                L"chars); this may be correct but is unusual");
        }
        if (name.find(L'\u2014') != std::wstring::npos) {
            Report(
                L"STR-161: '$file$', DAHS $n$: 'DahsComputerName' contains an em dash. This may be incorrect, and a "
                L"hyphen may be correct.");
        }
        if (name.find(L'\u2013') != std::wstring::npos) {
            Report(
                L"STR-162: '$file$', DAHS $n$: 'DahsComputerName' contains an en dash. This may be incorrect, and a "
                L"hyphen may be correct.");
        }
    }

    // A switch that is on unless the file turns it off, and one that is off unless the file turns it on.
    bool IsOnByDefault(size_t key) const {
        const std::wstring value = Value(key);
        const std::optional<double> number = ParseNumber(value);
        return number ? *number != 0 : !IsOneOf(value, {L"FALSE", L"NO", L"FASLE"});
    }
    bool IsOffByDefault(size_t key) const {
        const std::wstring value = Value(key);
        const std::optional<double> number = ParseNumber(value);
        return number ? *number != 0 : IsOneOf(value, {L"TRUE", L"YES"});
    }

    void ReadSwitches() {
        mEntry.hdrEnabled = IsOnByDefault(kHdr);
        ReadAutoOutput();
        mEntry.extraTraceMsgsEnabled = IsOnByDefault(kTrace);
        mEntry.logFlushEnabled = IsOnByDefault(kLogFlush);
    }

    void ReadAutoOutput() {
        mEntry.autoOutput = AutoOutput::kUnknown;
        mEntry.autoOutputTimeout = 60;
        const std::wstring value = Value(kAutoOutput);
        if (value.empty()) {
            return;
        }
        if (const std::optional<double> number = ParseNumber(value)) {
            mEntry.autoOutput = *number != 0 ? AutoOutput::kEnabled : AutoOutput::kDisabled;
            return;
        }
        const std::vector<std::wstring> parts = Split(value, L',');
        if (const std::optional<AutoOutput> setting = AutoOutputFromWord(parts[0])) {
            mEntry.autoOutput = *setting;
        } else {
            Report(L"STR-0172: '$file$', DAHS $n$: 'AutoOutputEnabled' entry is not valid. Will assume 'YES'.");
        }
        if (parts.size() < 2) {
            return;
        }
        if (IsNumeric(parts[1])) {
            mEntry.autoOutputTimeout = std::max(ToLong(parts[1]).value_or(-1), 0);
        } else {
            Report(L"STR-0173: '$file$', DAHS $n$: 'AutoOutputEnabled' timeout is not valid. Will use 60.");
        }
    }

    void ReadFolders() {
        mEntry.reportsUrl = Value(kReportsUrl);
        mEntry.vantorDir = Value(kVantorDir);
        if (mEntry.vantorDir.empty()) {
            ReportMissing(L"STR-085", kVantorDir);
            mValid = false;
        }
        mEntry.logsDir = Value(kLogsDir);
        if (mEntry.logsDir.empty() && !mEntry.vantorDir.empty()) {
            mEntry.logsDir = mEntry.vantorDir + L"\\Logs";
        }
        if (mEntry.logsDir.empty()) {
            ReportMissing(L"STR-142", kLogsDir);
            mValid = false;
        }
    }

    void ReadRedundancy() {
        ReadRole();
        mEntry.syncStagingEnabled = IsOffByDefault(kSyncStaging);
        mEntry.syncCompareEnabled = IsOffByDefault(kSyncCompare);
        mEntry.syncMergeEnabled = IsOffByDefault(kSyncMerge);
        mEntry.drCurrentHealthTimeouts = Value(kHealthTimeouts);
        std::erase(mEntry.drCurrentHealthTimeouts, L' ');
    }

    void ReadRole() {
        const std::wstring value = Value(kRole);
        if (value.empty()) {
            return;
        }
        if (const std::optional<RedundantDasRole> role = RoleFromWord(value)) {
            mEntry.role = *role;
        } else {
            Report(L"STR-0179: '$file$', DAHS $n$: 'RedundantDasRole' entry is not valid. Will assume 'STANDALONE'.");
        }
        // In these two texts the quote before RedundantDasRole stays open: programs know them so.
        if (mEntry.role == RedundantDasRole::kPrimary && mEntry.autoOutput == AutoOutput::kAutoSecondaryDas) {
            Report(
                L"STR-0180: '$file$', DAHS $n$: 'RedundantDasRole=PRIMARY is inconsistent with "
                L"AutoOutputEnabled=AUTOSECONDARY. Will assume 'STANDALONE'.");
            mEntry.role = RedundantDasRole::kStandalone;
        } else if (mEntry.role == RedundantDasRole::kSecondary && mEntry.autoOutput == AutoOutput::kAutoPrimaryDas) {
            Report(
                L"STR-0181: '$file$', DAHS $n$: 'RedundantDasRole=SECONDARY is inconsistent with "
                L"AutoOutputEnabled=AUTOPRIMARY. Will assume 'STANDALONE'.");
            mEntry.role = RedundantDasRole::kStandalone;
        }
    }

    std::wstring& Connection(ConnectionForm form, size_t database) {
        return mEntry.connectionStrings[static_cast<size_t>(form)][database];
    }
    std::wstring ConnectionValue(ConnectionForm form, size_t database) const {
        return Value(kConnections + static_cast<size_t>(form) * kDatabaseCount + database);
    }

    void ReadOleDbConnections() {
        for (size_t database = 0; database < kDatabaseCount; ++database) {
            std::wstring& plain = Connection(ConnectionForm::kOleDb, database);
            plain = ConnectionValue(ConnectionForm::kOleDb, database);
            if (plain.empty() && database == static_cast<size_t>(Database::kOstra)) {
                plain = OstraConnection(Connection(ConnectionForm::kOleDb, static_cast<size_t>(Database::kData)));
            } else if (plain.empty()) {
                ReportMissing(kBlankConnectionTags[database], kConnections + database);
                mBlankConnection = true;
            }
        }
        for (size_t database = 0; database < kDatabaseCount; ++database) {
            std::wstring& noninteractive = Connection(ConnectionForm::kOleDbNoninteractive, database);
            noninteractive = ConnectionValue(ConnectionForm::kOleDbNoninteractive, database);
            if (noninteractive.empty()) {
                noninteractive = Connection(ConnectionForm::kOleDb, database);
            }
        }
    }

    void ReadDotNetConnections() {
        constexpr std::pair<ConnectionForm, ConnectionForm> kForms[] = {
            {ConnectionForm::kDotNet, ConnectionForm::kOleDb},
            {ConnectionForm::kDotNetNoninteractive, ConnectionForm::kOleDbNoninteractive}};
        for (const auto& [dotNetForm, oleDbForm] : kForms) {
            for (size_t database = 0; database < kDatabaseCount; ++database) {
                std::wstring& dotNet = Connection(dotNetForm, database);
                dotNet = ConnectionValue(dotNetForm, database);
                if (dotNet.empty()) {
                    dotNet = DotNetConnection(Connection(oleDbForm, database));
                }
            }
        }
    }

    void ReadBackupDir() {
        mEntry.primaryBackupDir = Value(kBackupDir);
        if (mEntry.primaryBackupDir.empty()) {
            ReportMissing(L"STR-024", kBackupDir);
        }
    }

    // Whether the entry can be used.
    bool Judge() {
        if (mBlankConnection && mOption == BlankConnections::kIgnoreEntry) {
            Report(L"STR-0174: DAHS$n$ in '$file$' cannot be used because one or more connection strings are blank");
            return false;
        }
        if (!mValid) {
            Report(L"STR-031: DAHS$n$ in '$file$' cannot be used because one or more entries are invalid");
        }
        return mValid;
    }

    const IniFile& mFile;
    const std::wstring& mPath;
    const BlankConnections mOption;
    std::vector<std::wstring>& mProblems;
    std::array<std::string_view, kKeyCount> mValues;
    DahsEntry mEntry;
    bool mValid = true;
    bool mBlankConnection = false;
};

std::vector<std::string> SiteSectionNames() {
    std::vector<std::string> names;
    for (std::int32_t number = 1; number <= kMaxDahsId; ++number) {
        names.push_back("Dahs" + std::to_string(number));
    }
    names.emplace_back("AffinityMasks");
    return names;
}

}  // namespace

const IniNames& SiteSections() {
    static const std::vector<std::string> names = SiteSectionNames();
    static const IniNames sections(std::vector<std::string_view>(names.begin(), names.end()));
    return sections;
}

void ReadDahsEntries(const IniFile& file, const std::wstring& path, BlankConnections option, DahsEntryList& entries,
                     std::vector<std::wstring>& problems) {
    const auto masks = ReadAffinityMasks(file);
    for (std::int32_t number = 1; number <= kMaxDahsId; ++number) {
        if (std::optional<DahsEntry> entry = DahsSectionReader(file, number, path, option, problems).Read()) {
            entry->affinityMasks = masks;
            entries.Add(std::move(*entry));
        }
    }
}

}  // namespace v5
