// The settings of one DAHS as automation properties, which an entry and the site (for its current DAHS) both have.
#pragma once

#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "com/AutomationObject.h"
#include "config/DahsEntry.h"

namespace v5 {

template <class Self, class Interface, class CoClass>
class DahsProperties : public AutomationObject<Self, Interface, CoClass> {
  public:
    STDMETHODIMP get_DahsID(long* Result) override { return this->Get(Result, Entry().dahsID); }
    STDMETHODIMP get_SiteID(BSTR* Result) override { return this->Get(Result, Entry().siteID); }
    STDMETHODIMP get_LanguageID(BSTR* Result) override { return this->Get(Result, Entry().languageId); }
    STDMETHODIMP get_DahsComputerName(BSTR* Result) override { return this->Get(Result, Entry().computerName); }
    STDMETHODIMP get_DahsDescription(BSTR* Result) override { return this->Get(Result, Entry().description); }
    STDMETHODIMP get_HDREnabled(VARIANT_BOOL* Result) override { return this->Get(Result, Entry().hdrEnabled); }
    STDMETHODIMP get_AutoOutputEnabled(VARIANT_BOOL* Result) override {
        return this->Get(Result, Entry().AutoOutputEnabled());
    }
    STDMETHODIMP get_AutoOutputEnabledEx(AutoOutputEnabledExEnum* Result) override {
        return this->Get(Result, Entry().autoOutput);
    }
    STDMETHODIMP get_AutoOutputEnabledExRedundantDasTimeout(long* Result) override {
        return this->Get(Result, Entry().autoOutputTimeout);
    }
    STDMETHODIMP get_RedundantDasRole(RedundantDasRoleEnum* Result) override { return this->Get(Result, Entry().role); }
    STDMETHODIMP get_RedundantDasSyncStagingEnabled(VARIANT_BOOL* Result) override {
        return this->Get(Result, Entry().syncStagingEnabled);
    }
    STDMETHODIMP get_RedundantDasSyncCompareEnabled(VARIANT_BOOL* Result) override {
        return this->Get(Result, Entry().syncCompareEnabled);
    }
    STDMETHODIMP get_RedundantDASSyncMergeEnabled(VARIANT_BOOL* Result) override {
        return this->Get(Result, Entry().syncMergeEnabled);
    }
    STDMETHODIMP get_DRCurrentHealthTimeouts(BSTR* Result) override {
        return this->Get(Result, Entry().drCurrentHealthTimeouts);
    }
    STDMETHODIMP get_ExtraTraceMsgsEnabled(VARIANT_BOOL* Result) override {
        return this->Get(Result, Entry().extraTraceMsgsEnabled);
    }
    STDMETHODIMP get_LogFlushEnabled(VARIANT_BOOL* Result) override {
        return this->Get(Result, Entry().logFlushEnabled);
    }
    STDMETHODIMP get_ReportsURL(BSTR* Result) override { return this->Get(Result, Entry().reportsUrl); }

  protected:
    // The DAHS whose settings they are.
    virtual const DahsEntry& Entry() const = 0;
};

}  // namespace v5
