// DahsIniEntry: one DAHS entry for automation clients. A created one is blank.
#pragma once

#include <utility>

#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "config/DahsEntryList.h"
#include "config/DahsProperties.h"
#include "config/WindowsSiteHost.h"

namespace v5 {

class DahsIniEntry final : public DahsProperties<DahsIniEntry, _DahsIniEntry, ::DahsIniEntry> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.DahsIniEntry";

    explicit DahsIniEntry(DahsEntryPtr entry = std::make_shared<const DahsEntry>()) : mEntry(std::move(entry)) {}

    STDMETHODIMP get_VantorDir(BSTR* Result) override { return Get(Result, mEntry->vantorDir); }
    STDMETHODIMP get_VantorLogsDir(BSTR* Result) override { return Get(Result, mEntry->logsDir); }
    STDMETHODIMP get_PrimaryBackupDir(BSTR* Result) override { return Get(Result, mEntry->primaryBackupDir); }
    STDMETHODIMP get_IsRemote(VARIANT_BOOL* Result) override {
        return Get(Result, !mHost.IsLocalComputer(mEntry->computerName));
    }

    STDMETHODIMP get_SqlConnectionString_Alarms(BSTR* Result) override {
        return Connection(Result, ConnectionForm::OleDb, Database::Alarms);
    }
    STDMETHODIMP get_SqlConnectionString_Config(BSTR* Result) override {
        return Connection(Result, ConnectionForm::OleDb, Database::Config);
    }
    STDMETHODIMP get_SqlConnectionString_Data(BSTR* Result) override {
        return Connection(Result, ConnectionForm::OleDb, Database::Data);
    }
    STDMETHODIMP get_SqlConnectionString_DataShortTerm(BSTR* Result) override {
        return Connection(Result, ConnectionForm::OleDb, Database::DataShortTerm);
    }
    STDMETHODIMP get_SqlConnectionString_Realtime(BSTR* Result) override {
        return Connection(Result, ConnectionForm::OleDb, Database::Realtime);
    }
    STDMETHODIMP get_SqlConnectionString_Ostra(BSTR* Result) override {
        return Connection(Result, ConnectionForm::OleDb, Database::Ostra);
    }

    STDMETHODIMP get_SqlConnectionString_AlarmsNoninteractive(BSTR* Result) override {
        return Connection(Result, ConnectionForm::OleDbNoninteractive, Database::Alarms);
    }
    STDMETHODIMP get_SqlConnectionString_ConfigNoninteractive(BSTR* Result) override {
        return Connection(Result, ConnectionForm::OleDbNoninteractive, Database::Config);
    }
    STDMETHODIMP get_SqlConnectionString_DataNoninteractive(BSTR* Result) override {
        return Connection(Result, ConnectionForm::OleDbNoninteractive, Database::Data);
    }
    STDMETHODIMP get_SqlConnectionString_DataShortTermNoninteractive(BSTR* Result) override {
        return Connection(Result, ConnectionForm::OleDbNoninteractive, Database::DataShortTerm);
    }
    STDMETHODIMP get_SqlConnectionString_RealtimeNoninteractive(BSTR* Result) override {
        return Connection(Result, ConnectionForm::OleDbNoninteractive, Database::Realtime);
    }
    STDMETHODIMP get_SqlConnectionString_OstraNoninteractive(BSTR* Result) override {
        return Connection(Result, ConnectionForm::OleDbNoninteractive, Database::Ostra);
    }

    STDMETHODIMP get_SqlConnectionString_Alarms_DotNet(BSTR* Result) override {
        return Connection(Result, ConnectionForm::DotNet, Database::Alarms);
    }
    STDMETHODIMP get_SqlConnectionString_Config_DotNet(BSTR* Result) override {
        return Connection(Result, ConnectionForm::DotNet, Database::Config);
    }
    STDMETHODIMP get_SqlConnectionString_Data_DotNet(BSTR* Result) override {
        return Connection(Result, ConnectionForm::DotNet, Database::Data);
    }
    STDMETHODIMP get_SqlConnectionString_DataShortTerm_DotNet(BSTR* Result) override {
        return Connection(Result, ConnectionForm::DotNet, Database::DataShortTerm);
    }
    STDMETHODIMP get_SqlConnectionString_Realtime_DotNet(BSTR* Result) override {
        return Connection(Result, ConnectionForm::DotNet, Database::Realtime);
    }
    STDMETHODIMP get_SqlConnectionString_Ostra_DotNet(BSTR* Result) override {
        return Connection(Result, ConnectionForm::DotNet, Database::Ostra);
    }

    STDMETHODIMP get_SqlConnectionString_AlarmsNoninteractive_DotNet(BSTR* Result) override {
        return Connection(Result, ConnectionForm::DotNetNoninteractive, Database::Alarms);
    }
    STDMETHODIMP get_SqlConnectionString_ConfigNoninteractive_DotNet(BSTR* Result) override {
        return Connection(Result, ConnectionForm::DotNetNoninteractive, Database::Config);
    }
    STDMETHODIMP get_SqlConnectionString_DataNoninteractive_DotNet(BSTR* Result) override {
        return Connection(Result, ConnectionForm::DotNetNoninteractive, Database::Data);
    }
    STDMETHODIMP get_SqlConnectionString_DataShortTermNoninteractive_DotNet(BSTR* Result) override {
        return Connection(Result, ConnectionForm::DotNetNoninteractive, Database::DataShortTerm);
    }
    STDMETHODIMP get_SqlConnectionString_RealtimeNoninteractive_DotNet(BSTR* Result) override {
        return Connection(Result, ConnectionForm::DotNetNoninteractive, Database::Realtime);
    }
    STDMETHODIMP get_SqlConnectionString_OstraNoninteractive_DotNet(BSTR* Result) override {
        return Connection(Result, ConnectionForm::DotNetNoninteractive, Database::Ostra);
    }

    STDMETHODIMP get_AffinityMask_IOS(long* Result) override { return Mask(Result, AppCategory::Ios); }
    STDMETHODIMP get_AffinityMask_DR(long* Result) override { return Mask(Result, AppCategory::Dr); }
    STDMETHODIMP get_AffinityMask_DM(long* Result) override { return Mask(Result, AppCategory::Dm); }
    STDMETHODIMP get_AffinityMask_RG(long* Result) override { return Mask(Result, AppCategory::Rg); }
    STDMETHODIMP get_AffinityMask_DBE(long* Result) override { return Mask(Result, AppCategory::Dbe); }

  private:
    const DahsEntry& Entry() const override { return *mEntry; }
    HRESULT Connection(BSTR* result, ConnectionForm form, Database database) {
        return Get(result, mEntry->connectionStrings[form][database]);
    }
    HRESULT Mask(long* result, AppCategory category) { return Get(result, mEntry->affinityMasks[category]); }

    const DahsEntryPtr mEntry;
    const WindowsSiteHost mHost;
};

}  // namespace v5
