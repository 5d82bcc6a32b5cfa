// DahsIniMain: the site configuration for automation clients.
#pragma once

#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "com/AutomationObject.h"
#include "config/DahsIniEntries.h"
#include "config/Site.h"
#include "config/WindowsSiteHost.h"

namespace v5 {

class DahsIniMain final : public AutomationObject<DahsIniMain, _DahsIniMain, ::DahsIniMain> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.DahsIniMain";

    DahsIniMain() : mSite(mHost), mEntries(MakeObject<DahsIniEntries>(mSite.Entries())) {}

    STDMETHODIMP get_Problems(VARIANT* result) override;
    STDMETHODIMP get_ActualVantorINI(BSTR* result) override { return Text(result, mSite.FilePath()); }
    STDMETHODIMP get_SelectedDahsIsRemote(VARIANT_BOOL* result) override {
        return Return(result, [&] { return mSite.Current().isRemote; });
    }
    STDMETHODIMP get_DahsEntries(_DahsIniEntries** result) override {
        return Return(result, [&] { return mEntries; });
    }
    STDMETHODIMP get_AreMultipleDahsDefined(VARIANT_BOOL* result) override {
        return Return(result, [&] { return mSite.HasEntriesFromFile(); });
    }

    STDMETHODIMP ReadVantorINI(AppCategoryForProcessorAffinityEnum category, VARIANT_BOOL* result) override {
        return ReadVantorINI2(category, VARIANT_FALSE, result);
    }
    STDMETHODIMP ReadVantorINI2(AppCategoryForProcessorAffinityEnum category, VARIANT_BOOL noninteractive,
                                VARIANT_BOOL* result) override {
        return ReadVantorINI3(category, noninteractive, VARIANT_FALSE, result);
    }
    STDMETHODIMP ReadVantorINI3(AppCategoryForProcessorAffinityEnum category, VARIANT_BOOL noninteractive,
                                VARIANT_BOOL dotNet, VARIANT_BOOL* result) override {
        return ReadVantorINI4(category, noninteractive, dotNet, V5Strings::IgnoreEntriesWithBlankConnStrings, result);
    }
    STDMETHODIMP ReadVantorINI4(AppCategoryForProcessorAffinityEnum category, VARIANT_BOOL noninteractive,
                                VARIANT_BOOL dotNet, DahsEntryOptionsEnum option, VARIANT_BOOL* result) override;
    STDMETHODIMP ChooseDahs(long dahsID, VARIANT_BOOL* result) override {
        return ChooseDahs2(dahsID, VARIANT_FALSE, result);
    }
    STDMETHODIMP ChooseDahs2(long dahsID, VARIANT_BOOL noninteractive, VARIANT_BOOL* result) override {
        return ChooseDahs3(dahsID, noninteractive, VARIANT_FALSE, result);
    }
    STDMETHODIMP ChooseDahs3(long dahsID, VARIANT_BOOL noninteractive, VARIANT_BOOL dotNet,
                             VARIANT_BOOL* result) override;
    STDMETHODIMP ChooseDahs4(BSTR siteID, VARIANT_BOOL noninteractive, VARIANT_BOOL dotNet,
                             VARIANT_BOOL* result) override;
    STDMETHODIMP SetupWithOneForcedDahsEntry(BSTR siteID, VARIANT_BOOL* result) override;
    STDMETHODIMP FindRedundantDasIDs(BSTR siteID, long initialDasID, long* primaryDasID, long* secondaryDasID) override;
    STDMETHODIMP GetDahsIDForSiteID(BSTR siteID, long* result) override;
    STDMETHODIMP GetDahsIDForComputerName(BSTR computerName, VARIANT_BOOL preferPrimaryDas, long* result) override;

    STDMETHODIMP get_DahsID(long* result) override {
        return Return(result, [&] { return Entry().dahsID; });
    }
    STDMETHODIMP get_SiteID(BSTR* result) override { return Text(result, Entry().siteID); }
    STDMETHODIMP get_LanguageID(BSTR* result) override { return Text(result, Entry().languageId); }
    STDMETHODIMP get_DahsComputerName(BSTR* result) override { return Text(result, Entry().computerName); }
    STDMETHODIMP get_DahsDescription(BSTR* result) override { return Text(result, Entry().description); }
    STDMETHODIMP get_LocalComputerName(BSTR* result) override { return Text(result, mSite.LocalComputerName()); }
    STDMETHODIMP get_HDREnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return Entry().hdrEnabled; });
    }
    STDMETHODIMP get_AutoOutputEnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return Entry().AutoOutputEnabled(); });
    }
    STDMETHODIMP get_AutoOutputEnabledEx(AutoOutputEnabledExEnum* result) override {
        return Return(result, [&] { return Entry().autoOutput; });
    }
    STDMETHODIMP get_AutoOutputEnabledExRedundantDasTimeout(long* result) override {
        return Return(result, [&] { return Entry().autoOutputTimeout; });
    }
    STDMETHODIMP get_RedundantDasRole(RedundantDasRoleEnum* result) override {
        return Return(result, [&] { return Entry().role; });
    }
    STDMETHODIMP get_RedundantDasRoleText(BSTR* result) override {
        return Return(result, [&] { return v5::RedundantDasRoleText(Entry().role); });
    }
    STDMETHODIMP get_RedundantDasSyncStagingEnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return Entry().syncStagingEnabled; });
    }
    STDMETHODIMP get_RedundantDasSyncCompareEnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return Entry().syncCompareEnabled; });
    }
    STDMETHODIMP get_RedundantDASSyncMergeEnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return Entry().syncMergeEnabled; });
    }
    STDMETHODIMP get_DRCurrentHealthTimeouts(BSTR* result) override {
        return Text(result, Entry().drCurrentHealthTimeouts);
    }
    STDMETHODIMP get_ExtraTraceMsgsEnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return Entry().extraTraceMsgsEnabled; });
    }
    STDMETHODIMP get_LogFlushEnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return Entry().logFlushEnabled; });
    }
    STDMETHODIMP get_ReportsURL(BSTR* result) override { return Text(result, Entry().reportsUrl); }
    STDMETHODIMP get_MustUseReportsURL(VARIANT_BOOL* result) override {
        return Return(result, [&] { return mSite.Current().MustUseReportsUrl(); });
    }

    STDMETHODIMP get_VantorDir(BSTR* result) override { return Text(result, Folders().vantor); }
    STDMETHODIMP get_VantorSystemDir(BSTR* result) override { return Text(result, Folders().system); }
    STDMETHODIMP get_VantorLogsDir(BSTR* result) override { return Text(result, Folders().logs); }
    STDMETHODIMP get_VantorMailLogsDir(BSTR* result) override { return Text(result, Folders().mailLogs); }
    STDMETHODIMP get_VantorCustomReportTemplatesDir(BSTR* result) override {
        return Text(result, Folders().customReportTemplates);
    }
    STDMETHODIMP get_PrimaryBackupDir(BSTR* result) override { return Text(result, Folders().primaryBackup); }
    STDMETHODIMP get_SecondaryBackupDir(BSTR* result) override { return Text(result, Folders().secondaryBackup); }
    STDMETHODIMP get_TempDir(BSTR* result) override { return Text(result, Folders().temp); }
    STDMETHODIMP get_PadepReportDir(BSTR* result) override {
        return Return(result, [&] { return mSite.Current().PadepReportDir(); });
    }

    STDMETHODIMP get_SqlConnectionString_Alarms(BSTR* result) override { return Connection(result, Database::kAlarms); }
    STDMETHODIMP get_SqlConnectionString_Config(BSTR* result) override { return Connection(result, Database::kConfig); }
    STDMETHODIMP get_SqlConnectionString_Data(BSTR* result) override { return Connection(result, Database::kData); }
    STDMETHODIMP get_SqlConnectionString_DataShortTerm(BSTR* result) override {
        return Connection(result, Database::kDataShortTerm);
    }
    STDMETHODIMP get_SqlConnectionString_Realtime(BSTR* result) override {
        return Connection(result, Database::kRealtime);
    }
    STDMETHODIMP get_SqlConnectionString_Ostra(BSTR* result) override { return Connection(result, Database::kOstra); }

    STDMETHODIMP GetInfoArray(long extraArrayEntries, VARIANT* result) override;

  private:
    const DahsEntry& Entry() const { return *mSite.Current().entry; }
    const DahsFolders& Folders() const { return mSite.Current().folders; }
    HRESULT Text(BSTR* result, const std::wstring& text) {
        return Return(result, [&] { return std::wstring_view(text); });
    }
    HRESULT Connection(BSTR* result, Database database) {
        return Text(result, mSite.Current().connections[static_cast<size_t>(database)]);
    }

    WindowsSiteHost mHost;
    Site mSite;
    const ComPtr<DahsIniEntries> mEntries;
};

}  // namespace v5
