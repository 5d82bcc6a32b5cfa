#include "config/SiteFile.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "base/Numbers.h"
#include "base/Text.h"

namespace v5 {

namespace {

// The keys of a [DahsN] section, in the order in which they are read and their messages appear.
namespace key {
enum : size_t {
    SiteID,
    LanguageID,
    DahsComputerName,
    DahsDescription,
    HDR,
    AutoOutputEnabled,
    TraceEnabled,
    LogFlush,
    ReportsURL,
    VantorDir,
    LogsDir,
    RedundantDasRole,
    RedundantDasSyncStagingEnabled,
    RedundantDasSyncCompareEnabled,
    RedundantDASSyncMergeEnabled,
    DRCurrentHealthTimeouts,
    SQL,  // the first of 24: by ConnectionForm, then Database
    BackupDir = SQL + kConnectionFormCount * kDatabaseCount,
    Count,
};
}  // namespace key

constexpr std::array<std::wstring_view, key::Count> kKeyNames = {
    L"SiteID",
    L"LanguageID",
    L"DahsComputerName",
    L"DahsDescription",
    L"HDR",
    L"AutoOutputEnabled",
    L"TraceEnabled",
    L"LogFlushEnabled",
    L"ReportsURL",
    L"VantorDir",
    L"LogsDir",
    L"RedundantDasRole",
    L"RedundantDasSyncStagingEnabled",
    L"RedundantDasSyncCompareEnabled",
    L"RedundantDASSyncMergeEnabled",
    L"DRCurrentHealthTimeouts",
    L"SQLAlarms",
    L"SQLConfig",
    L"SQLData",
    L"SQLDataShortTerm",
    L"SQLRealtime",
    L"SQLOstra",
    L"SQLAlarmsNoninteractive",
    L"SQLConfigNoninteractive",
    L"SQLDataNoninteractive",
    L"SQLDataShortTermNoninteractive",
    L"SQLRealtimeNoninteractive",
    L"SQLOstraNoninteractive",
    L"SQLAlarms.NET",
    L"SQLConfig.NET",
    L"SQLData.NET",
    L"SQLDataShortTerm.NET",
    L"SQLRealtime.NET",
    L"SQLOstra.NET",
    L"SQLAlarmsNoninteractive.NET",
    L"SQLConfigNoninteractive.NET",
    L"SQLDataNoninteractive.NET",
    L"SQLDataShortTermNoninteractive.NET",
    L"SQLRealtimeNoninteractive.NET",
    L"SQLOstraNoninteractive.NET",
    L"BackupDir",
};

// The tags of the messages for blank connection strings. A blank Ostra string has a default instead.
constexpr EnumArray<Database, std::wstring_view, kDatabaseCount> kBlankConnectionTags = {
    {L"STR-086", L"STR-087", L"STR-088", L"STR-0160", L"STR-089", L""}};

// The keys of the [AffinityMasks] section and the kind of program that each is for.
constexpr auto kMaskNames = std::to_array<std::wstring_view>({L"IOS", L"DR", L"DM", L"RG", L"DBE"});
constexpr AppCategory kMaskCategories[] = {AppCategory::Ios, AppCategory::Dr, AppCategory::Dm, AppCategory::Rg,
                                           AppCategory::Dbe};

constexpr size_t kMasksSection = kMaxDahsId;  // its position in SiteSections, behind Dahs1 to Dahs99
constexpr size_t kMaxNetBiosName = 15;        // characters

// A word as the file's authors may write it: Auto-Primary, AUTO_PRIMARY and autoprimary are the same.
std::wstring CanonicalWord(std::wstring_view text) {
    std::wstring word = ToUpper(text);
    std::erase_if(word, [](wchar_t c) { return c == L'-' || c == L'_'; });
    return word;
}

template <class Value>
using Spelling = std::pair<std::wstring_view, Value>;

// What a word stands for; nothing when it is none of `words`.
template <class Value, size_t count>
std::optional<Value> FromWord(std::wstring_view text, const Spelling<Value> (&words)[count]) {
    const std::wstring word = CanonicalWord(text);
    for (const auto& [name, value] : words) {
        if (word == name) {
            return value;
        }
    }
    return std::nullopt;
}

constexpr Spelling<AutoOutput> kAutoOutputWords[] = {
    {L"YES", AutoOutput::Enabled},
    {L"TRUE", AutoOutput::Enabled},
    {L"NO", AutoOutput::Disabled},
    {L"FALSE", AutoOutput::Disabled},
    {L"FASLE", AutoOutput::Disabled},  // a misspelling that sites rely on
    {L"AUTOPRIMARY", AutoOutput::AutoPrimaryDas},
    {L"AUTOSECONDARY", AutoOutput::AutoSecondaryDas},
    {L"AUTODAHSID", AutoOutput::AutoDahsId},
    {L"AUTODASID", AutoOutput::AutoDahsId},
};

constexpr Spelling<bool> kSwitchWords[] = {
    {L"TRUE", true}, {L"YES", true}, {L"FALSE", false}, {L"NO", false}, {L"FASLE", false}};

constexpr Spelling<RedundantDasRole> kRoleWords[] = {
    {L"STANDALONE", RedundantDasRole::Standalone},
    {L"PRIMARY", RedundantDasRole::Primary},
    {L"SECONDARY", RedundantDasRole::Secondary},
};

// The string for the .NET data provider: without the first Provider and the first DataTypeCompatibility setting. A
// keyword counts wherever it stands, inside a value too; the setting ends at the next semicolon.
std::wstring DotNetConnection(std::wstring connection) {
    for (const std::wstring_view keyword : {L"Provider", L"DataTypeCompatibility"}) {
        const size_t start = FindIgnoreCase(connection, keyword);
        if (start != std::wstring::npos) {
            const size_t end = connection.find(L';', start);
            connection.erase(start, end == std::wstring::npos ? end : end + 1 - start);
        }
    }
    return std::wstring(Trim(connection));
}

AffinityMasks ReadAffinityMasks(const IniFile& file) {
    static const IniNames keys(kMaskNames);
    std::array<std::wstring_view, kMaskNames.size()> values;
    file.ReadSection(kMasksSection, keys, values);
    AffinityMasks masks{};
    for (size_t i = 0; i < values.size(); ++i) {
        masks[kMaskCategories[i]] = AffinityMaskFromText(values[i]).value_or(0);
    }
    return masks;
}

// Reads and judges one section.
class DahsSectionReader {
  public:
    DahsSectionReader(const IniFile& file, std::int32_t dahsID, const std::wstring& path, BlankConnections option,
                      std::vector<std::wstring>& problems)
        : mPath(path), mOption(option), mProblems(problems) {
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
    std::wstring_view Value(size_t key) const { return Trim(mValues[key]); }

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
        text.append(kKeyNames[key]).append(L"'");
        if (!detail.empty()) {
            text.append(L"; ").append(detail);
        }
        Report(text);
    }

    // False when the section does not exist.
    bool ReadIdentity() {
        mEntry.siteID = ToUpper(Value(key::SiteID));
        if (mEntry.siteID.empty()) {
            return false;
        }
        if (IsNumeric(mEntry.siteID)) {
            ReportMissing(L"STR-084", key::SiteID, L"may not be a number");
            mValid = false;
        }
        mEntry.languageId = Value(key::LanguageID);
        ReadComputerName();
        mEntry.description = Value(key::DahsDescription);
        if (EqualsIgnoreCase(mEntry.description, L"{optional DAHS description}")) {
            mEntry.description.clear();
        }
        return true;
    }

    void ReadComputerName() {
        mEntry.computerName = Value(key::DahsComputerName);
        const std::wstring& name = mEntry.computerName;
        if (name.empty()) {
            ReportMissing(L"STR-091", key::DahsComputerName, L"may not be blank");
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

    bool IsOnByDefault(size_t key) const { return SwitchFromText(Value(key)).value_or(true); }
    bool IsOffByDefault(size_t key) const { return SwitchFromText(Value(key)).value_or(false); }

    void ReadSwitches() {
        mEntry.hdrEnabled = IsOnByDefault(key::HDR);
        ReadAutoOutput();
        mEntry.extraTraceMsgsEnabled = IsOnByDefault(key::TraceEnabled);
        mEntry.logFlushEnabled = IsOnByDefault(key::LogFlush);
    }

    void ReadAutoOutput() {
        mEntry.autoOutput = AutoOutput::Unknown;
        mEntry.autoOutputTimeout = 60;
        const std::wstring_view value = Value(key::AutoOutputEnabled);
        if (value.empty()) {
            return;
        }
        if (const std::optional<double> number = ParseNumber(value)) {
            mEntry.autoOutput = *number != 0 ? AutoOutput::Enabled : AutoOutput::Disabled;
            return;
        }
        const std::vector<std::wstring> parts = Split(value, L',');
        if (const std::optional<AutoOutput> setting = FromWord(parts[0], kAutoOutputWords)) {
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
        mEntry.reportsUrl = Value(key::ReportsURL);
        mEntry.vantorDir = Value(key::VantorDir);
        if (mEntry.vantorDir.empty()) {
            ReportMissing(L"STR-085", key::VantorDir);
            mValid = false;
        }
        mEntry.logsDir = Value(key::LogsDir);
        if (mEntry.logsDir.empty() && !mEntry.vantorDir.empty()) {
            mEntry.logsDir = mEntry.vantorDir + L"\\Logs";
        }
        if (mEntry.logsDir.empty()) {
            ReportMissing(L"STR-142", key::LogsDir);
            mValid = false;
        }
    }

    void ReadRedundancy() {
        ReadRole();
        mEntry.syncStagingEnabled = IsOffByDefault(key::RedundantDasSyncStagingEnabled);
        mEntry.syncCompareEnabled = IsOffByDefault(key::RedundantDasSyncCompareEnabled);
        mEntry.syncMergeEnabled = IsOffByDefault(key::RedundantDASSyncMergeEnabled);
        mEntry.drCurrentHealthTimeouts = Value(key::DRCurrentHealthTimeouts);
        std::erase(mEntry.drCurrentHealthTimeouts, L' ');
    }

    void ReadRole() {
        const std::wstring_view value = Value(key::RedundantDasRole);
        if (value.empty()) {
            return;
        }
        if (const std::optional<RedundantDasRole> role = FromWord(value, kRoleWords)) {
            mEntry.role = *role;
        } else {
            Report(L"STR-0179: '$file$', DAHS $n$: 'RedundantDasRole' entry is not valid. Will assume 'STANDALONE'.");
        }
        // In these two texts the quote before RedundantDasRole stays open: programs know them so.
        if (mEntry.role == RedundantDasRole::Primary && mEntry.autoOutput == AutoOutput::AutoSecondaryDas) {
            Report(
                L"STR-0180: '$file$', DAHS $n$: 'RedundantDasRole=PRIMARY is inconsistent with "
                L"AutoOutputEnabled=AUTOSECONDARY. Will assume 'STANDALONE'.");
            mEntry.role = RedundantDasRole::Standalone;
        } else if (mEntry.role == RedundantDasRole::Secondary && mEntry.autoOutput == AutoOutput::AutoPrimaryDas) {
            Report(
                L"STR-0181: '$file$', DAHS $n$: 'RedundantDasRole=SECONDARY is inconsistent with "
                L"AutoOutputEnabled=AUTOPRIMARY. Will assume 'STANDALONE'.");
            mEntry.role = RedundantDasRole::Standalone;
        }
    }

    std::wstring_view ConnectionValue(ConnectionForm form, Database database) const {
        return Value(key::SQL + static_cast<size_t>(form) * kDatabaseCount + static_cast<size_t>(database));
    }

    void ReadOleDbConnections() {
        ConnectionStrings& plain = mEntry.connectionStrings[ConnectionForm::OleDb];
        ConnectionStrings& noninteractive = mEntry.connectionStrings[ConnectionForm::OleDbNoninteractive];
        for (const Database database : kDatabases) {
            plain[database] = ConnectionValue(ConnectionForm::OleDb, database);
            if (plain[database].empty() && database == Database::Ostra) {  // it stands beside the Data database
                plain[database] = ReplaceAll(plain[Database::Data], L"Vantor5Data", L"Vantor5Ostra");
            } else if (plain[database].empty()) {
                ReportMissing(kBlankConnectionTags[database], key::SQL + static_cast<size_t>(database));
                mBlankConnection = true;
            }
            noninteractive[database] = ConnectionValue(ConnectionForm::OleDbNoninteractive, database);
            if (noninteractive[database].empty()) {
                noninteractive[database] = plain[database];
            }
        }
    }

    void ReadDotNetConnections() {
        constexpr std::pair<ConnectionForm, ConnectionForm> kForms[] = {
            {ConnectionForm::DotNet, ConnectionForm::OleDb},
            {ConnectionForm::DotNetNoninteractive, ConnectionForm::OleDbNoninteractive}};
        for (const auto& [dotNetForm, oleDbForm] : kForms) {
            for (const Database database : kDatabases) {
                std::wstring& dotNet = mEntry.connectionStrings[dotNetForm][database];
                dotNet = ConnectionValue(dotNetForm, database);
                if (dotNet.empty()) {
                    dotNet = DotNetConnection(mEntry.connectionStrings[oleDbForm][database]);
                }
            }
        }
    }

    void ReadBackupDir() {
        mEntry.primaryBackupDir = Value(key::BackupDir);
        if (mEntry.primaryBackupDir.empty()) {
            ReportMissing(L"STR-024", key::BackupDir);
        }
    }

    // Whether the entry can be used.
    bool Judge() {
        if (mBlankConnection && mOption == BlankConnections::IgnoreEntry) {
            Report(L"STR-0174: DAHS$n$ in '$file$' cannot be used because one or more connection strings are blank");
            return false;
        }
        if (!mValid) {
            Report(L"STR-031: DAHS$n$ in '$file$' cannot be used because one or more entries are invalid");
        }
        return mValid;
    }

    const std::wstring& mPath;
    const BlankConnections mOption;
    std::vector<std::wstring>& mProblems;
    std::array<std::wstring_view, key::Count> mValues;
    DahsEntry mEntry;
    bool mValid = true;
    bool mBlankConnection = false;
};

std::vector<std::wstring> SiteSectionNames() {
    std::vector<std::wstring> names;
    for (std::int32_t number = 1; number <= kMaxDahsId; ++number) {
        names.push_back(L"Dahs" + std::to_wstring(number));
    }
    names.emplace_back(L"AffinityMasks");
    return names;
}

}  // namespace

const IniNames& SiteSections() {
    static const std::vector<std::wstring> names = SiteSectionNames();
    static const IniNames sections(std::vector<std::wstring_view>(names.begin(), names.end()));
    return sections;
}

std::optional<bool> SwitchFromText(std::wstring_view value) {
    if (const std::optional<double> number = ParseNumber(value)) {
        return *number != 0;
    }
    for (const auto& [word, isOn] : kSwitchWords) {
        if (EqualsIgnoreCase(value, word)) {
            return isOn;
        }
    }
    return std::nullopt;
}

std::optional<std::int32_t> AffinityMaskFromText(std::wstring_view value) {
    return ToLong(ReplaceAll(Trim(value), L"0x", L"&H"));
}

std::span<const std::wstring_view> DahsKeys() {
    return kKeyNames;
}

std::span<const std::wstring_view> AffinityMaskKeys() {
    return kMaskNames;
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
