// V5DBIL.DatabaseInterface: access to the databases of one or more sites.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "V5DBIL.h"
#include "V5DBILMembers.h"
#include "com/EventSource.h"
#include "v5dbil/Site.h"

namespace v5::devkit {

class DatabaseInterface final
    : public EventfulObject<DatabaseInterface, IDatabaseInterface, ::DatabaseInterface, _DatabaseInterfaceEvents> {
  public:
    static constexpr wchar_t kProgId[] = L"V5DBIL.DatabaseInterface";

    STDMETHODIMP SetApplicationName(BSTR applicationName, VARIANT_BOOL* succeeded) override;
    STDMETHODIMP Initialise(BSTR site, BSTR language, BSTR config, BSTR alarms, BSTR data, BSTR dataShortTerm,
                            BSTR realtime, VARIANT_BOOL isNoninteractive, long options,
                            VARIANT_BOOL* succeeded) override;
    STDMETHODIMP OpenSite(BSTR site, long source, long channel, long average, long openOptions, long cacheOptions,
                          long reserved, VARIANT_BOOL* succeeded) override;
    STDMETHODIMP Close() override;
    STDMETHODIMP ForgetLogons(BSTR site) override;
    STDMETHODIMP ReadLookup(BSTR site, long level, BSTR table, BSTR key, BSTR* value) override;
    STDMETHODIMP WriteLookup(BSTR site, long level, BSTR table, BSTR key, BSTR value, VARIANT_BOOL* succeeded) override;
    STDMETHODIMP WriteEventLog(BSTR site, DATE time, BSTR text, BSTR category, long kind, BSTR source, BSTR tag,
                               VARIANT_BOOL* succeeded) override;
    STDMETHODIMP ReadEventLog(BSTR site, long maxRecords, VARIANT* records) override;
    STDMETHODIMP get_SiteInfo(BSTR site, ISiteInfo** siteInfo) override;
    STDMETHODIMP UsesWindowsAuthentication(BSTR connectionString, VARIANT_BOOL* windows) override;

    // The initialised site with this identifier. Throws DatabaseError when there is none.
    Site& SiteOf(std::wstring_view id);

    // Runs `work` and answers what it gives. When it fails, raises the reason as event `Message` and throws it as an
    // automation error. `doing` says what failed, to follow "DBIL: cannot ".
    template <class Work>
    auto Reported(std::wstring_view doing, Work&& work) {
        try {
            return std::forward<Work>(work)();
        } catch (const DatabaseError& error) {
            Fail(doing, error.Reason());
        } catch (...) {
            Fail(doing, CurrentError().Description());
        }
    }

  private:
    // The members that answer whether they succeeded.
    template <class Work>
    HRESULT Succeeds(VARIANT_BOOL* succeeded, std::wstring_view doing, Work&& work) {
        return ReturnQuietly(succeeded, false, [&] {
            Reported(doing, std::forward<Work>(work));
            return true;
        });
    }

    [[noreturn]] void Fail(std::wstring_view doing, std::wstring_view reason);

    std::wstring mApplicationName;
    std::map<std::wstring, Site, std::less<>> mSites;
};

}  // namespace v5::devkit
