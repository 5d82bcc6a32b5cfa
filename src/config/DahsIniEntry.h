// DahsIniEntry: one DAHS entry for automation clients. A created one is blank.
#pragma once

#include <utility>

#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "com/AutomationObject.h"
#include "config/DahsEntryList.h"
#include "config/WindowsSiteHost.h"

namespace v5 {

class DahsIniEntry final : public AutomationObject<DahsIniEntry, _DahsIniEntry, ::DahsIniEntry> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.DahsIniEntry";

    explicit DahsIniEntry(DahsEntryPtr entry = std::make_shared<const DahsEntry>()) : mEntry(std::move(entry)) {}

    STDMETHODIMP get_DahsID(long* result) override {
        return Return(result, [&] { return mEntry->dahsID; });
    }
    STDMETHODIMP get_SiteID(BSTR* result) override { return Text(result, mEntry->siteID); }
    STDMETHODIMP get_LanguageID(BSTR* result) override { return Text(result, mEntry->languageId); }
    STDMETHODIMP get_DahsComputerName(BSTR* result) override { return Text(result, mEntry->computerName); }
    STDMETHODIMP get_DahsDescription(BSTR* result) override { return Text(result, mEntry->description); }
    STDMETHODIMP get_HDREnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return mEntry->hdrEnabled; });
    }
    STDMETHODIMP get_AutoOutputEnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return mEntry->AutoOutputEnabled(); });
    }
    STDMETHODIMP get_AutoOutputEnabledEx(AutoOutputEnabledExEnum* result) override {
        return Return(result, [&] { return mEntry->autoOutput; });
    }
    STDMETHODIMP get_AutoOutputEnabledExRedundantDasTimeout(long* result) override {
        return Return(result, [&] { return mEntry->autoOutputTimeout; });
    }
    STDMETHODIMP get_ExtraTraceMsgsEnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return mEntry->extraTraceMsgsEnabled; });
    }
    STDMETHODIMP get_LogFlushEnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return mEntry->logFlushEnabled; });
    }
    STDMETHODIMP get_ReportsURL(BSTR* result) override { return Text(result, mEntry->reportsUrl); }
    STDMETHODIMP get_VantorDir(BSTR* result) override { return Text(result, mEntry->vantorDir); }
    STDMETHODIMP get_VantorLogsDir(BSTR* result) override { return Text(result, mEntry->logsDir); }
    STDMETHODIMP get_PrimaryBackupDir(BSTR* result) override { return Text(result, mEntry->primaryBackupDir); }
    STDMETHODIMP get_IsRemote(VARIANT_BOOL* result) override {
        return Return(result, [&] { return !mHost.IsLocalComputer(mEntry->computerName); });
    }
    STDMETHODIMP get_RedundantDasRole(RedundantDasRoleEnum* result) override {
        return Return(result, [&] { return mEntry->role; });
    }
    STDMETHODIMP get_RedundantDasSyncStagingEnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return mEntry->syncStagingEnabled; });
    }
    STDMETHODIMP get_RedundantDasSyncCompareEnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return mEntry->syncCompareEnabled; });
    }
    STDMETHODIMP get_RedundantDASSyncMergeEnabled(VARIANT_BOOL* result) override {
        return Return(result, [&] { return mEntry->syncMergeEnabled; });
    }
    STDMETHODIMP get_DRCurrentHealthTimeouts(BSTR* result) override {
        return Text(result, mEntry->drCurrentHealthTimeouts);
    }

    STDMETHODIMP get_SqlConnectionString_Alarms(BSTR* result) override {
        return Connection(result, ConnectionForm::kOleDb, Database::kAlarms);
    }
    STDMETHODIMP get_SqlConnectionString_Config(BSTR* result) override {
        return Connection(result, ConnectionForm::kOleDb, Database::kConfig);
    }
    STDMETHODIMP get_SqlConnectionString_Data(BSTR* result) override {
        return Connection(result, ConnectionForm::kOleDb, Database::kData);
    }
    STDMETHODIMP get_SqlConnectionString_DataShortTerm(BSTR* result) override {
        return Connection(result, ConnectionForm::kOleDb, Database::kDataShortTerm);
    }
    STDMETHODIMP get_SqlConnectionString_Realtime(BSTR* result) override {
        return Connection(result, ConnectionForm::kOleDb, Database::kRealtime);
    }
    STDMETHODIMP get_SqlConnectionString_Ostra(BSTR* result) override {
        return Connection(result, ConnectionForm::kOleDb, Database::kOstra);
    }

    STDMETHODIMP get_SqlConnectionString_AlarmsNoninteractive(BSTR* result) override {
        return Connection(result, ConnectionForm::kOleDbNoninteractive, Database::kAlarms);
    }
    STDMETHODIMP get_SqlConnectionString_ConfigNoninteractive(BSTR* result) override {
        return Connection(result, ConnectionForm::kOleDbNoninteractive, Database::kConfig);
    }
    STDMETHODIMP get_SqlConnectionString_DataNoninteractive(BSTR* result) override {
        return Connection(result, ConnectionForm::kOleDbNoninteractive, Database::kData);
    }
    STDMETHODIMP get_SqlConnectionString_DataShortTermNoninteractive(BSTR* result) override {
        return Connection(result, ConnectionForm::kOleDbNoninteractive, Database::kDataShortTerm);
    }
    STDMETHODIMP get_SqlConnectionString_RealtimeNoninteractive(BSTR* result) override {
        return Connection(result, ConnectionForm::kOleDbNoninteractive, Database::kRealtime);
    }
    STDMETHODIMP get_SqlConnectionString_OstraNoninteractive(BSTR* result) override {
        return Connection(result, ConnectionForm::kOleDbNoninteractive, Database::kOstra);
    }

    STDMETHODIMP get_SqlConnectionString_Alarms_DotNet(BSTR* result) override {
        return Connection(result, ConnectionForm::kDotNet, Database::kAlarms);
    }
    STDMETHODIMP get_SqlConnectionString_Config_DotNet(BSTR* result) override {
        return Connection(result, ConnectionForm::kDotNet, Database::kConfig);
    }
    STDMETHODIMP get_SqlConnectionString_Data_DotNet(BSTR* result) override {
        return Connection(result, ConnectionForm::kDotNet, Database::kData);
    }
    STDMETHODIMP get_SqlConnectionString_DataShortTerm_DotNet(BSTR* result) override {
        return Connection(result, ConnectionForm::kDotNet, Database::kDataShortTerm);
    }
    STDMETHODIMP get_SqlConnectionString_Realtime_DotNet(BSTR* result) override {
        return Connection(result, ConnectionForm::kDotNet, Database::kRealtime);
    }
    STDMETHODIMP get_SqlConnectionString_Ostra_DotNet(BSTR* result) override {
        return Connection(result, ConnectionForm::kDotNet, Database::kOstra);
    }

    STDMETHODIMP get_SqlConnectionString_AlarmsNoninteractive_DotNet(BSTR* result) override {
        return Connection(result, ConnectionForm::kDotNetNoninteractive, Database::kAlarms);
    }
    STDMETHODIMP get_SqlConnectionString_ConfigNoninteractive_DotNet(BSTR* result) override {
        return Connection(result, ConnectionForm::kDotNetNoninteractive, Database::kConfig);
    }
    STDMETHODIMP get_SqlConnectionString_DataNoninteractive_DotNet(BSTR* result) override {
        return Connection(result, ConnectionForm::kDotNetNoninteractive, Database::kData);
    }
    STDMETHODIMP get_SqlConnectionString_DataShortTermNoninteractive_DotNet(BSTR* result) override {
        return Connection(result, ConnectionForm::kDotNetNoninteractive, Database::kDataShortTerm);
    }
    STDMETHODIMP get_SqlConnectionString_RealtimeNoninteractive_DotNet(BSTR* result) override {
        return Connection(result, ConnectionForm::kDotNetNoninteractive, Database::kRealtime);
    }
    STDMETHODIMP get_SqlConnectionString_OstraNoninteractive_DotNet(BSTR* result) override {
        return Connection(result, ConnectionForm::kDotNetNoninteractive, Database::kOstra);
    }

    STDMETHODIMP get_AffinityMask_IOS(long* result) override { return Mask(result, AppCategory::kIos); }
    STDMETHODIMP get_AffinityMask_DR(long* result) override { return Mask(result, AppCategory::kDr); }
    STDMETHODIMP get_AffinityMask_DM(long* result) override { return Mask(result, AppCategory::kDm); }
    STDMETHODIMP get_AffinityMask_RG(long* result) override { return Mask(result, AppCategory::kRg); }
    STDMETHODIMP get_AffinityMask_DBE(long* result) override { return Mask(result, AppCategory::kDbe); }

  private:
    HRESULT Text(BSTR* result, const std::wstring& text) {
        return Return(result, [&] { return std::wstring_view(text); });
    }
    HRESULT Connection(BSTR* result, ConnectionForm form, Database database) {
        return Text(result, mEntry->Connections(form)[static_cast<size_t>(database)]);
    }
    HRESULT Mask(long* result, AppCategory category) {
        return Return(result, [&] { return mEntry->affinityMasks[static_cast<size_t>(category)]; });
    }

    const DahsEntryPtr mEntry;
    const WindowsSiteHost mHost;
};

}  // namespace v5
