#include "v5dbil/DatabaseInterface.h"

#include "v5dbil/SiteInfo.h"

namespace v5::devkit {

namespace {

constexpr DISPID kMessageEvent = 1;
constexpr long kProblem = 4;

// The longest application name that database servers accept, in characters.
constexpr size_t kMaxApplicationName = 128;

std::wstring Text(BSTR text) {
    return std::wstring(View(text));
}

// One record of the event log as the row of an array, column by column.
void PutRecord(SAFEARRAY& array, LONG row, const EventRecord& record) {
    const _variant_t columns[EventLogColumn_Count] = {
        static_cast<long>(record.number), _variant_t(record.time, VT_DATE), TextVariant(record.text),
        TextVariant(record.category),     static_cast<long>(record.kind),   TextVariant(record.source),
        TextVariant(record.tag),
    };
    for (LONG column = 0; column < EventLogColumn_Count; ++column) {
        LONG position[] = {row, column};
        Check(SafeArrayPutElement(&array, position, const_cast<_variant_t*>(&columns[column])));
    }
}

}  // namespace

// Outside the unnamed namespace, where `Return` finds it by its argument.
static void Pack(const std::vector<EventRecord>& records, VARIANT* out) {
    if (records.empty()) {
        return;
    }
    SAFEARRAYBOUND bounds[] = {{static_cast<ULONG>(records.size()), 0}, {EventLogColumn_Count, 0}};
    SAFEARRAY* array = SafeArrayCreate(VT_VARIANT, 2, bounds);
    if (array == nullptr) {
        throw std::bad_alloc();
    }
    _variant_t owner;
    V_VT(&owner) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(&owner) = array;
    for (size_t row = 0; row < records.size(); ++row) {
        PutRecord(*array, static_cast<LONG>(row), records[row]);
    }
    *out = owner.Detach();
}

STDMETHODIMP DatabaseInterface::SetApplicationName(BSTR applicationName, VARIANT_BOOL* succeeded) {
    return Succeeds(succeeded, L"take the application name", [&] {
        if (View(applicationName).size() > kMaxApplicationName) {
            throw DatabaseError(L"it is longer than 128 characters");
        }
        mApplicationName = Text(applicationName);
    });
}

STDMETHODIMP DatabaseInterface::Initialise(BSTR site, BSTR, BSTR config, BSTR alarms, BSTR, BSTR, BSTR, VARIANT_BOOL,
                                           long, VARIANT_BOOL* succeeded) {
    return Succeeds(succeeded, L"initialise the site", [&] {
        if (View(site).empty()) {
            throw DatabaseError(L"it has no identifier");
        }
        mSites.insert_or_assign(Text(site), Site(Text(site), Text(config), View(alarms)));
    });
}

STDMETHODIMP DatabaseInterface::OpenSite(BSTR site, long, long, long, long, long, long, VARIANT_BOOL* succeeded) {
    return Succeeds(succeeded, L"open the site", [&] { SiteOf(View(site)).Open(); });
}

STDMETHODIMP DatabaseInterface::Close() {
    return Do([&] {
        for (auto& [id, site] : mSites) {
            site.Close();
        }
    });
}

STDMETHODIMP DatabaseInterface::ForgetLogons(BSTR site) {
    return Do([&] { Reported(L"forget logons", [&] { SiteOf(View(site)).ForgetLogons(); }); });
}

STDMETHODIMP DatabaseInterface::ReadLookup(BSTR site, long level, BSTR table, BSTR key, BSTR* value) {
    return Return(value, [&] {
        return Reported(L"read a lookup row", [&] {
            return SiteOf(View(site))
                .Config()
                .ReadLookup({View(site), static_cast<std::int32_t>(level), View(table), View(key)});
        });
    });
}

STDMETHODIMP DatabaseInterface::WriteLookup(BSTR site, long level, BSTR table, BSTR key, BSTR value,
                                            VARIANT_BOOL* succeeded) {
    return Succeeds(succeeded, L"write a lookup row", [&] {
        SiteOf(View(site))
            .Config()
            .WriteLookup({View(site), static_cast<std::int32_t>(level), View(table), View(key)}, View(value));
    });
}

STDMETHODIMP DatabaseInterface::WriteEventLog(BSTR site, DATE time, BSTR text, BSTR category, long kind, BSTR source,
                                              BSTR tag, VARIANT_BOOL* succeeded) {
    return Succeeds(succeeded, L"write an event-log record", [&] {
        EventRecord record;
        record.time = time;
        record.text = Text(text);
        record.category = Text(category);
        record.kind = static_cast<std::int32_t>(kind);
        record.source = Text(source);
        record.tag = Text(tag);
        SiteOf(View(site)).EventLog().AppendEvent(View(site), record);
    });
}

STDMETHODIMP DatabaseInterface::ReadEventLog(BSTR site, long maxRecords, VARIANT* records) {
    return Return(records, [&] {
        return Reported(L"read the event log", [&] {
            return SiteOf(View(site)).EventLog().ReadEvents(View(site), static_cast<std::int32_t>(maxRecords));
        });
    });
}

STDMETHODIMP DatabaseInterface::get_SiteInfo(BSTR site, ISiteInfo** siteInfo) {
    return Return(siteInfo, [&] {
        return Reported(L"tell about the site", [&] {
            SiteOf(View(site)).Config();  // only open sites have an answer
            return MakeObject<SiteInfo>(ComPtr<DatabaseInterface>(this), Text(site));
        });
    });
}

STDMETHODIMP DatabaseInterface::UsesWindowsAuthentication(BSTR connectionString, VARIANT_BOOL* windows) {
    return Return(windows, [&] { return ParseConnectionString(View(connectionString)).windowsAuthentication; });
}

Site& DatabaseInterface::SiteOf(std::wstring_view id) {
    const auto found = mSites.find(id);
    if (found == mSites.end()) {
        throw DatabaseError(L"site '" + std::wstring(id) + L"' is not initialised");
    }
    return found->second;
}

void DatabaseInterface::Fail(std::wstring_view doing, std::wstring_view reason) {
    const std::wstring text = L"DBIL: cannot " + std::wstring(doing) + L": " + std::wstring(reason);
    RaiseEvent(kMessageEvent, {kProblem, TextVariant(text)});
    throw AutomationError(static_cast<std::uint32_t>(E_FAIL), text);
}

}  // namespace v5::devkit
