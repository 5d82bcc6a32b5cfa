#include "config/Site.h"

#include <algorithm>
#include <new>
#include <utility>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "config/SiteFileSearch.h"

namespace v5 {

namespace {

constexpr size_t kMaxSiteIdLength = 10;  // characters of a site identifier that ChooseSite looks at

std::wstring UpperHex(std::uint32_t number) {
    std::wstring digits;
    do {
        digits.insert(digits.begin(), L"0123456789ABCDEF"[number & 0xF]);
        number >>= 4;
    } while (number != 0);
    return digits;
}

const std::wstring& Word(bool value) {
    static const std::wstring words[] = {L"False", L"True"};
    return words[value ? 1 : 0];
}

template <typename Enumeration>
std::wstring Number(Enumeration value) {
    return std::to_wstring(static_cast<std::int32_t>(value));
}

}  // namespace

std::wstring_view RedundantDasRoleText(RedundantDasRole role) {
    switch (role) {
        case RedundantDasRole::Standalone:
            return L"Standalone";
        case RedundantDasRole::Primary:
            return L"Primary";
        case RedundantDasRole::Secondary:
            return L"Secondary";
    }
    return L"??";
}

bool CurrentDahs::MustUseReportsUrl() const {
    return !entry->reportsUrl.empty() &&
           std::any_of(std::begin(kDatabases), std::end(kDatabases),
                       [&](Database database) { return database != Database::Ostra && connections[database].empty(); });
}

bool Site::Read(AppCategory category, bool noninteractive, bool dotNet, BlankConnections option) {
    return ReadFrom({}, category, noninteractive, dotNet, option);
}

bool Site::ReadFrom(const std::wstring& path, AppCategory category, bool noninteractive, bool dotNet,
                    BlankConnections option) {
    if (mIsSetUp) {
        Report(L"STR-017: this instance has already been set up");
        return false;
    }
    mIsSetUp = true;
    try {
        mPath = path;
        if ((path.empty() && !Locate()) || !Parse(option)) {
            return false;
        }
        SelectFirst(noninteractive, dotNet);
    } catch (...) {
        ReportUnreadable(CurrentFailureText());
        return false;
    }
    SetAffinity(category);
    CreateMissingFolders(mCurrent.folders, mHost, mProblems);
    return true;
}

bool Site::Locate() {
    const std::wstring start = mHost.ExpandEnvironment(kSystemFolderReference);
    mPath = FindSiteFile(start, mHost);
    if (!mPath.empty()) {
        Report(L"STR-0183: found INI file '" + mPath + L"'");
        return true;
    }
    Report(L"STR-0184: Could not find Vantor5.INI file in '" + start + L"' or parent folders");
    const std::wstring libraryFolder = mHost.LibraryFolder();
    mPath = FindSiteFile(libraryFolder, mHost);
    if (!mPath.empty()) {
        Report(L"STR-094: found INI file '" + mPath + L"'");
        return true;
    }
    Report(L"STR-018: Could not find Vantor5.INI file in '" + libraryFolder + L"' or parent folders");
    return false;
}

bool Site::Parse(BlankConnections option) {
    try {
        std::wstring text;
        const std::wstring reason = mHost.ReadFile(mPath, text);
        if (!reason.empty()) {
            ReportUnreadable(reason);
            return false;
        }
        const IniFile file(std::move(text), SiteSections());
        ReadDahsEntries(file, mPath, option, *mEntries, mProblems);
    } catch (const std::bad_alloc&) {
        ReportUnreadable(L"it is too large");
        return false;
    }
    mHasEntriesFromFile = mEntries->Count() > 0;
    if (!mHasEntriesFromFile) {
        Report(L"STR-031: no DAHS entries found in '" + mPath + L"'");
    }
    return mHasEntriesFromFile;
}

bool Site::SetupForced(const std::wstring& siteID) {
    if (mIsSetUp) {
        Report(L"STR-0175: this instance has already been set up");
        return false;
    }
    mIsSetUp = true;
    Report(L"STR-0176: This instance can only be used for compile validation");
    Report(L"STR-0177: Will use certain defaults instead of looking for Vantor5.INI");
    DahsEntry entry;
    entry.dahsID = kForcedDahsId;
    entry.siteID = siteID;
    entry.computerName = mLocalComputerName;
    entry.description = L"For compile validation only";
    mEntries->Add(std::move(entry));
    return SelectFirst(false, false);
}

bool Site::SelectFirst(bool noninteractive, bool dotNet) {
    const DahsEntryPtr first = mEntries->At(0);
    if (first) {
        Select(first, noninteractive, dotNet);
    }
    return first != nullptr;
}

void Site::Select(const DahsEntryPtr& entry, bool noninteractive, bool dotNet) {
    CurrentDahs chosen;
    chosen.entry = entry;
    chosen.isRemote = IsRemote(*entry);
    chosen.connections = entry->connectionStrings[ConnectionFormFor(noninteractive, dotNet)];
    chosen.folders = FoldersOf(*entry, mHost);
    mCurrent = std::move(chosen);
}

bool Site::Choose(std::int32_t dahsID, bool noninteractive, bool dotNet) {
    if (dahsID == 0) {
        const bool chosen = SelectFirst(noninteractive, dotNet);
        if (!chosen) {
            Report(L"STR-029: no DAHS is defined");
        }
        return chosen;
    }
    const DahsEntryPtr entry = mEntries->Find(dahsID);
    if (entry) {
        Select(entry, noninteractive, dotNet);
    }
    return entry != nullptr;
}

bool Site::ChooseSite(std::wstring_view siteID, bool noninteractive, bool dotNet) {
    const std::wstring site(Trim(ToUpper(siteID)).substr(0, kMaxSiteIdLength));
    if (site.empty()) {
        const bool chosen = SelectFirst(noninteractive, dotNet);
        if (!chosen) {
            Report(L"STR-163: no DAHS is defined");
        }
        return chosen;
    }
    for (const DahsEntryPtr& entry : *mEntries) {
        if (entry->siteID == site) {
            Select(entry, noninteractive, dotNet);
            return true;
        }
    }
    Report(L"STR-164: no DAHS is defined for site ID '" + site + L"'");
    return false;
}

RedundantDasIds Site::FindRedundantDasIds(std::wstring_view siteID, std::int32_t initialDasID) const {
    std::wstring site(siteID);
    if (const DahsEntryPtr initial = initialDasID != 0 ? mEntries->Find(initialDasID) : nullptr) {
        site = initial->siteID;
        if (initial->role == RedundantDasRole::Standalone) {
            return {initialDasID, 0};
        }
    }
    RedundantDasIds ids;
    for (const DahsEntryPtr& entry : *mEntries) {
        if (!EqualsIgnoreCase(entry->siteID, site)) {
            continue;
        }
        if (entry->role == RedundantDasRole::Standalone) {
            return {entry->dahsID, 0};
        }
        (entry->role == RedundantDasRole::Primary ? ids.primary : ids.secondary) = entry->dahsID;
    }
    if (ids.primary == 0) {
        std::swap(ids.primary, ids.secondary);
    }
    return ids;
}

std::int32_t Site::FindLocalDahsId(bool preferPrimary) const {
    for (const DahsEntryPtr& entry : *mEntries) {
        if (!IsRemote(*entry)) {
            return preferPrimary && entry->role == RedundantDasRole::Secondary
                       ? FindRedundantDasIds(entry->siteID, 0).primary
                       : entry->dahsID;
        }
    }
    return 0;
}

void Site::SetAffinity(AppCategory category) {
    const DahsEntryPtr first = mEntries->At(0);
    const bool isCategory = static_cast<size_t>(category) < kAppCategoryCount;
    const std::int32_t requested = isCategory ? first->affinityMasks[category] : 0;
    if (requested == 0) {
        return;
    }
    const auto bits = static_cast<std::uint32_t>(requested);
    bool isSet = false;
    try {
        const std::uint64_t usable = mHost.SystemAffinityMask().value_or(0) & bits;
        isSet = usable != 0 && mHost.SetProcessAffinityMask(usable);
    } catch (...) {  // NOLINT(bugprone-empty-catch): it is then not set
    }
    Report(isSet ? L"STR-082: set process affinity mask = &H" + UpperHex(bits) : L"STR-083: can't set affinity mask");
}

std::vector<std::wstring> Site::InfoTexts(std::int32_t extra) const {
    const DahsEntry& dahs = *mCurrent.entry;
    const DahsFolders& folders = mCurrent.folders;
    const ConnectionStrings& connections = mCurrent.connections;
    const std::pair<const wchar_t*, std::wstring> items[] = {
        {L"ActualVantorINI=", mPath},
        {L"DahsEntries.Count=", std::to_wstring(mEntries->Count())},
        {L"DahsID=", std::to_wstring(dahs.dahsID)},
        {L"SiteID=", dahs.siteID},
        {L"LanguageId=", dahs.languageId},  // spelled so, unlike the property
        {L"DahsComputerName=", dahs.computerName},
        {L"DahsDescription=", dahs.description},
        {L"LocalComputerName=", mLocalComputerName},
        {L"HDREnabled=", Word(dahs.hdrEnabled)},
        {L"AutoOutputEnabled=", Word(dahs.AutoOutputEnabled())},
        {L"AutoOutputEnabledEx=", Number(dahs.autoOutput)},
        {L"AutoOutputEnabledExRedundantDasTimeout=", std::to_wstring(dahs.autoOutputTimeout)},
        {L"RedundantDasRole=", Number(dahs.role)},
        {L"RedundantDasSyncStagingEnabled=", Word(dahs.syncStagingEnabled)},
        {L"RedundantDasSyncCompareEnabled=", Word(dahs.syncCompareEnabled)},
        {L"RedundantDASSyncMergeEnabled=", Word(dahs.syncMergeEnabled)},
        {L"DRCurrentHealthTimeouts=", dahs.drCurrentHealthTimeouts},
        {L"ExtraTraceMsgsEnabled=", Word(dahs.extraTraceMsgsEnabled)},
        {L"LogFlushEnabled=", Word(dahs.logFlushEnabled)},
        {L"VantorDir=", folders.vantor},
        {L"VantorSystemDir=", folders.system},
        {L"VantorLogsDir=", folders.logs},
        {L"VantorCustomReportTemplatesDir=", folders.customReportTemplates},
        {L"PrimaryBackupDir=", folders.primaryBackup},
        {L"SecondaryBackupDir=", folders.secondaryBackup},
        {L"TempDir=", folders.temp},
        {L"SqlConnectionString_Alarms=", connections[Database::Alarms]},
        {L"SqlConnectionString_Config=", connections[Database::Config]},
        {L"SqlConnectionString_Data=", connections[Database::Data]},
        {L"SqlConnectionString_DataShortTerm=", connections[Database::DataShortTerm]},
        {L"SqlConnectionString_Realtime=", connections[Database::Realtime]},
        {L"SqlConnectionString_Ostra=", connections[Database::Ostra]},
        {L"ReportsURL=", dahs.reportsUrl},
    };
    std::wstring text;
    for (const auto& [label, value] : items) {
        text.append(label).append(value) += L'\t';
    }
    constexpr std::int32_t kMostExtra = 16 * 1024 * 1024;  // more than 32 bit has memory for
    if (extra > kMostExtra) {
        throw AutomationError::RunTime(7, L"Out of memory");
    }
    text.append(static_cast<size_t>(std::max(extra, 0)), L'\t');
    return Split(text, L'\t');
}

}  // namespace v5
