// DahsIniMain: the site configuration for automation clients.
#pragma once

#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "config/DahsIniEntries.h"
#include "config/DahsProperties.h"
#include "config/Site.h"
#include "config/WindowsSiteHost.h"

namespace v5 {

class DahsIniMain final : public DahsProperties<DahsIniMain, _DahsIniMain, ::DahsIniMain> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.DahsIniMain";

    DahsIniMain() : mSite(mHost), mEntries(MakeObject<DahsIniEntries>(mSite.Entries())) {}

    STDMETHODIMP get_Problems(VARIANT* Result) override;
    STDMETHODIMP get_ActualVantorINI(BSTR* Result) override { return Get(Result, mSite.FilePath()); }
    STDMETHODIMP get_SelectedDahsIsRemote(VARIANT_BOOL* Result) override {
        return Get(Result, mSite.Current().isRemote);
    }
    STDMETHODIMP get_DahsEntries(_DahsIniEntries** Result) override { return Get(Result, mEntries); }
    STDMETHODIMP get_AreMultipleDahsDefined(VARIANT_BOOL* Result) override {
        return Get(Result, mSite.HasEntriesFromFile());
    }

    STDMETHODIMP ReadVantorINI(AppCategoryForProcessorAffinityEnum lngSetCpuAffinity, VARIANT_BOOL* Result) override {
        return ReadVantorINI2(lngSetCpuAffinity, VARIANT_FALSE, Result);
    }
    STDMETHODIMP ReadVantorINI2(AppCategoryForProcessorAffinityEnum lngSetCpuAffinity,
                                VARIANT_BOOL blnIsNoninteractiveProcess, VARIANT_BOOL* Result) override {
        return ReadVantorINI3(lngSetCpuAffinity, blnIsNoninteractiveProcess, VARIANT_FALSE, Result);
    }
    STDMETHODIMP ReadVantorINI3(AppCategoryForProcessorAffinityEnum lngSetCpuAffinity,
                                VARIANT_BOOL blnIsNoninteractiveProcess, VARIANT_BOOL blnUseDotNetConnectionStrings,
                                VARIANT_BOOL* Result) override {
        return ReadVantorINI4(lngSetCpuAffinity, blnIsNoninteractiveProcess, blnUseDotNetConnectionStrings,
                              V5Strings::IgnoreEntriesWithBlankConnStrings, Result);
    }
    STDMETHODIMP ReadVantorINI4(AppCategoryForProcessorAffinityEnum lngSetCpuAffinity,
                                VARIANT_BOOL blnIsNoninteractiveProcess, VARIANT_BOOL blnUseDotNetConnectionStrings,
                                DahsEntryOptionsEnum lngConnStringOption, VARIANT_BOOL* Result) override;
    STDMETHODIMP ChooseDahs(long lngDahsID, VARIANT_BOOL* Result) override {
        return ChooseDahs2(lngDahsID, VARIANT_FALSE, Result);
    }
    STDMETHODIMP ChooseDahs2(long lngDahsID, VARIANT_BOOL blnIsNoninteractiveProcess, VARIANT_BOOL* Result) override {
        return ChooseDahs3(lngDahsID, blnIsNoninteractiveProcess, VARIANT_FALSE, Result);
    }
    STDMETHODIMP ChooseDahs3(long lngDahsID, VARIANT_BOOL blnIsNoninteractiveProcess,
                             VARIANT_BOOL blnUseDotNetConnectionStrings, VARIANT_BOOL* Result) override;
    STDMETHODIMP ChooseDahs4(BSTR strSiteID, VARIANT_BOOL blnIsNoninteractiveProcess,
                             VARIANT_BOOL blnUseDotNetConnectionStrings, VARIANT_BOOL* Result) override;
    STDMETHODIMP SetupWithOneForcedDahsEntry(BSTR strSiteID, VARIANT_BOOL* Result) override;
    STDMETHODIMP FindRedundantDasIDs(BSTR strSiteID, long lngInitialDasID, long* lngPrimaryDasID,
                                     long* lngSecondaryDasID) override;
    STDMETHODIMP GetDahsIDForSiteID(BSTR strSiteID, long* Result) override;
    STDMETHODIMP GetDahsIDForComputerName(BSTR strComputerName, VARIANT_BOOL blnPreferPrimaryDas,
                                          long* Result) override;

    STDMETHODIMP get_LocalComputerName(BSTR* Result) override { return Get(Result, mSite.LocalComputerName()); }
    STDMETHODIMP get_RedundantDasRoleText(BSTR* Result) override {
        return Get(Result, v5::RedundantDasRoleText(Entry().role));
    }
    STDMETHODIMP get_MustUseReportsURL(VARIANT_BOOL* Result) override {
        return Get(Result, mSite.Current().MustUseReportsUrl());
    }

    STDMETHODIMP get_VantorDir(BSTR* Result) override { return Get(Result, Folders().vantor); }
    STDMETHODIMP get_VantorSystemDir(BSTR* Result) override { return Get(Result, Folders().system); }
    STDMETHODIMP get_VantorLogsDir(BSTR* Result) override { return Get(Result, Folders().logs); }
    STDMETHODIMP get_VantorMailLogsDir(BSTR* Result) override { return Get(Result, Folders().mailLogs); }
    STDMETHODIMP get_VantorCustomReportTemplatesDir(BSTR* Result) override {
        return Get(Result, Folders().customReportTemplates);
    }
    STDMETHODIMP get_PrimaryBackupDir(BSTR* Result) override { return Get(Result, Folders().primaryBackup); }
    STDMETHODIMP get_SecondaryBackupDir(BSTR* Result) override { return Get(Result, Folders().secondaryBackup); }
    STDMETHODIMP get_TempDir(BSTR* Result) override { return Get(Result, Folders().temp); }
    STDMETHODIMP get_PadepReportDir(BSTR* Result) override {
        return Return(Result, [&] { return mSite.Current().PadepReportDir(); });
    }

    STDMETHODIMP get_SqlConnectionString_Alarms(BSTR* Result) override { return Connection(Result, Database::Alarms); }
    STDMETHODIMP get_SqlConnectionString_Config(BSTR* Result) override { return Connection(Result, Database::Config); }
    STDMETHODIMP get_SqlConnectionString_Data(BSTR* Result) override { return Connection(Result, Database::Data); }
    STDMETHODIMP get_SqlConnectionString_DataShortTerm(BSTR* Result) override {
        return Connection(Result, Database::DataShortTerm);
    }
    STDMETHODIMP get_SqlConnectionString_Realtime(BSTR* Result) override {
        return Connection(Result, Database::Realtime);
    }
    STDMETHODIMP get_SqlConnectionString_Ostra(BSTR* Result) override { return Connection(Result, Database::Ostra); }

    STDMETHODIMP GetInfoArray(long lngExtraArrayEntries, VARIANT* Result) override;

  private:
    const DahsEntry& Entry() const override { return *mSite.Current().entry; }
    const DahsFolders& Folders() const { return mSite.Current().folders; }
    HRESULT Connection(BSTR* result, Database database) { return Get(result, mSite.Current().connections[database]); }

    WindowsSiteHost mHost;
    Site mSite;
    const ComPtr<DahsIniEntries> mEntries;
};

}  // namespace v5
