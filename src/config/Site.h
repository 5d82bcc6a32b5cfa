// The site as a program sees it: the entries of its site file, the DAHS that the program works against, and every
// finding on the way.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/DahsEntryList.h"
#include "config/DahsFolders.h"
#include "config/SiteFile.h"
#include "config/SiteHost.h"

namespace v5 {

// The current DAHS: a chosen entry with what follows from choosing it. Before any choice all is zero, False or empty.
struct CurrentDahs {
    DahsEntryPtr entry = std::make_shared<const DahsEntry>();
    bool isRemote = false;
    ConnectionStrings connections;  // in the form that fits the process
    DahsFolders folders;

    std::wstring PadepReportDir() const { return folders.vantor + L"\\PADEP Reports"; }

    // Whether the DAHS is to be reached through its reports web address, for want of a connection string.
    bool MustUseReportsUrl() const;
};

// The identifiers of the DASes that serve one site; 0 where there is none.
struct RedundantDasIds {
    std::int32_t primary = 0;
    std::int32_t secondary = 0;
};

// "Standalone", "Primary" or "Secondary", or "??" for a value that is no role.
std::wstring_view RedundantDasRoleText(RedundantDasRole role);

class Site {
  public:
    static constexpr std::int32_t kForcedDahsId = 888;  // of the only entry of SetupForced

    // `host` must outlive this object.
    explicit Site(SiteHost& host) : mHost(host), mLocalComputerName(host.LocalComputerName()) {}

    // Finds and reads the site file, makes its first entry the current DAHS, pins the process to the processors listed
    // for `category` (values that are no category: none) and creates missing folders. False when there is no current
    // DAHS for it; the reasons stand in `Problems`. Works once for each object.
    bool Read(AppCategory category, bool noninteractive, bool dotNet, BlankConnections option);

    // The same with a site file of any name and place, which need not be found; an empty path: with the one that is.
    bool ReadFrom(const std::wstring& path, AppCategory category, bool noninteractive, bool dotNet,
                  BlankConnections option);

    // Goes without a site file, for tools that only need an object to compile against: one entry with defaults.
    bool SetupForced(const std::wstring& siteID);

    // Makes another entry the current DAHS: by its identifier (0: the first entry), or the first entry of a site
    // (empty: of any). False when there is none; the current DAHS is then unchanged.
    bool Choose(std::int32_t dahsID, bool noninteractive, bool dotNet);
    bool ChooseSite(std::wstring_view siteID, bool noninteractive, bool dotNet);

    // The primary and the secondary DAS of a site, or, where `initialDasID` is that of an entry, of its site. Case is
    // ignored. A standalone DAS counts as primary, and so does a secondary without a primary.
    RedundantDasIds FindRedundantDasIds(std::wstring_view siteID, std::int32_t initialDasID) const;

    // The identifier of the first DAHS on this computer, or of its primary where it is a secondary and the primary is
    // preferred; 0 when there is none.
    std::int32_t FindLocalDahsId(bool preferPrimary) const;

    // All current settings as "name=value" texts, then `extra` + 1 empty ones. Values with tabs split into several.
    std::vector<std::wstring> InfoTexts(std::int32_t extra) const;

    const std::vector<std::wstring>& Problems() const { return mProblems; }
    const std::wstring& FilePath() const { return mPath; }
    const std::shared_ptr<DahsEntryList>& Entries() const { return mEntries; }
    const CurrentDahs& Current() const { return mCurrent; }
    const std::wstring& LocalComputerName() const { return mLocalComputerName; }

    // Whether reading found at least one usable entry.
    bool HasEntriesFromFile() const { return mHasEntriesFromFile; }

    bool IsRemote(const DahsEntry& entry) const { return !mHost.IsLocalComputer(entry.computerName); }

  private:
    bool Locate();
    bool Parse(BlankConnections option);
    bool SelectFirst(bool noninteractive, bool dotNet);
    void Select(const DahsEntryPtr& entry, bool noninteractive, bool dotNet);
    void SetAffinity(AppCategory category);
    void Report(std::wstring problem) { mProblems.push_back(std::move(problem)); }
    void ReportUnreadable(const std::wstring& reason) {
        Report(L"Could not read INI file '" + mPath + L"': " + reason);
    }

    SiteHost& mHost;
    const std::wstring mLocalComputerName;
    bool mIsSetUp = false;
    bool mHasEntriesFromFile = false;
    std::wstring mPath;
    std::vector<std::wstring> mProblems;
    std::shared_ptr<DahsEntryList> mEntries = std::make_shared<DahsEntryList>();
    CurrentDahs mCurrent;
};

}  // namespace v5
