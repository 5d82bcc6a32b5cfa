#include "SecurityClient.h"

#include <comutil.h>
#include <ocidl.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <algorithm>
#include <array>
#include <cwchar>

#include "CommandLine.h"
#include "V5DBIL.h"
#include "V5Strings.h"
#include "com/Values.h"
#include "security/DbilDatabase.h"
#include "security/SecuritySite.h"
#include "security/TextConversionFunctions.h"
#include "security/UtilityBase64Functions.h"

namespace v5site {

namespace {

using Microsoft::WRL::ComPtr;

template <class Interface>
ComPtr<Interface> Create(REFCLSID clsid, const wchar_t* name) {
    ComPtr<Interface> object;
    if (FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)))) {
        throw Error(std::wstring(L"cannot create ") + name + L" (is it registered with regsvr32?)");
    }
    return object;
}

// What the databases of a site are opened with.
struct SiteAccess {
    _bstr_t siteID, languageID, configDatabase, alarmsDatabase;
};

std::wstring TextOf(BSTR text) {
    return std::wstring(v5::View(text));
}

// Collects the Message events of an object while it lives. Nobody else's reference keeps it alive.
class Listener final : public IDispatch {
  public:
    Listener(IUnknown* source, REFIID events, std::vector<std::wstring>& messages) : mMessages(messages) {
        ComPtr<IConnectionPointContainer> container;
        if (SUCCEEDED(source->QueryInterface(IID_PPV_ARGS(&container))) &&
            SUCCEEDED(container->FindConnectionPoint(events, &mPoint))) {
            mPoint->Advise(this, &mCookie);
        }
    }
    virtual ~Listener() {
        if (mCookie != 0) {
            mPoint->Unadvise(mCookie);
        }
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    STDMETHODIMP QueryInterface(REFIID, void** object) override {  // whatever is asked for is the event interface
        *object = this;
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*, UINT*) override {
        if (arguments->cArgs == 2 && V_VT(&arguments->rgvarg[0]) == VT_BSTR) {
            mMessages.push_back(TextOf(V_BSTR(&arguments->rgvarg[0])));  // the last argument comes first
        }
        return S_OK;
    }

  private:
    std::vector<std::wstring>& mMessages;
    ComPtr<IConnectionPoint> mPoint;
    DWORD mCookie = 0;
};

// The members of a published enumeration, from the component's type library.
std::vector<NamedNumber> Enumeration(IDispatch* object, const wchar_t* name) {
    ComPtr<ITypeInfo> ofObject;
    ComPtr<ITypeLib> library;
    UINT index = 0;
    std::vector<NamedNumber> members;
    if (FAILED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &ofObject)) ||
        FAILED(ofObject->GetContainingTypeLib(&library, &index))) {
        return members;
    }
    ComPtr<ITypeInfo> info;
    MEMBERID id = 0;
    USHORT found = 1;
    std::wstring wanted(name);
    if (FAILED(library->FindName(wanted.data(), 0, &info, &id, &found)) || found == 0) {
        return members;
    }
    VARDESC* description = nullptr;
    for (UINT i = 0; SUCCEEDED(info->GetVarDesc(i, &description)); ++i) {
        _bstr_t member;
        info->GetDocumentation(description->memid, member.GetAddress(), nullptr, nullptr, nullptr);
        members.push_back({V_I4(description->lpvarValue), TextOf(member)});
        info->ReleaseVarDesc(description);
    }
    return members;
}

NamedNumber Named(long number, const std::vector<NamedNumber>& names) {
    for (const NamedNumber& candidate : names) {
        if (candidate.number == number) {
            return candidate;
        }
    }
    return {number, L""};
}

std::wstring Timestamp(double date) {
    SYSTEMTIME time{};
    VariantTimeToSystemTime(date, &time);
    std::array<wchar_t, 32> text{};
    (void)std::swprintf(text.data(), text.size(), L"%04u-%02u-%02u %02u:%02u:%02u", time.wYear, time.wMonth, time.wDay,
                        time.wHour, time.wMinute, time.wSecond);
    return text.data();
}

std::wstring Field(SAFEARRAY* records, LONG row, LONG column) {
    LONG position[] = {row, column};
    _variant_t value;
    SafeArrayGetElement(records, position, &value);
    return V_VT(&value) == VT_DATE ? Timestamp(V_DATE(&value)) : TextOf(_bstr_t(value));
}

// The restrictions that have a minimum in the stored document, in whatever form its programs left it.
std::vector<long> StoredRestrictions(const std::wstring& stored) {
    constexpr std::wstring_view kAttribute = L"rid=\"";
    std::vector<long> restrictions;
    try {
        const std::wstring xml = v5::TextOfStored(stored);
        for (size_t at = xml.find(kAttribute); at != std::wstring::npos; at = xml.find(kAttribute, at)) {
            at += kAttribute.size();
            restrictions.push_back(std::wcstol(xml.c_str() + at, nullptr, 10));
        }
    } catch (const v5::Base64Error&) {  // NOLINT(bugprone-empty-catch): the component says so when it reads a minimum
    }
    return restrictions;
}

// Reads every change of the event log, and which restrictions have a stored minimum; false, with the database's reasons
// among the messages, when they cannot be read.
bool ReadDatabase(const SiteAccess& site, std::vector<Change>& changes, std::vector<long>& restrictions,
                  std::vector<std::wstring>& messages) {
    const auto database = Create<IDatabaseInterface>(CLSID_DatabaseInterface, L"V5DBIL.DatabaseInterface");
    const Listener listener(database.Get(), DIID__DatabaseInterfaceEvents, messages);
    const _bstr_t none(L"");
    VARIANT_BOOL isInitialised = VARIANT_FALSE, isOpen = VARIANT_FALSE, done = VARIANT_FALSE;
    _variant_t records;
    const size_t messagesBefore = messages.size();
    database->SetApplicationName(_bstr_t(L"v5site"), &done);
    database->Initialise(site.siteID, site.languageID, site.configDatabase, site.alarmsDatabase, none, none, none,
                         VARIANT_TRUE, 0, &isInitialised);
    database->OpenSite(site.siteID, -1, -1, -1, 0, 0, 0, &isOpen);
    const HRESULT result = database->ReadEventLog(site.siteID, 0, records.GetAddress());  // 0: all records
    _bstr_t minimums;
    const HRESULT isRead =
        database->ReadLookup(site.siteID, v5::kOwnRows, _bstr_t(v5::kLookupTable),
                             _bstr_t(std::wstring(v5::kMinimumsDocument.key).c_str()), minimums.GetAddress());
    restrictions = StoredRestrictions(TextOf(minimums));
    LONG last = -1;
    if ((V_VT(&records) & VT_ARRAY) != 0) {
        SafeArrayGetUBound(V_ARRAY(&records), 1, &last);
    }
    for (LONG row = 0; row <= last; ++row) {
        if (Field(V_ARRAY(&records), row, EventLogColumn_Category) == L"SECURITY") {
            changes.push_back({Field(V_ARRAY(&records), row, EventLogColumn_Time),
                               Field(V_ARRAY(&records), row, EventLogColumn_Tag),
                               Field(V_ARRAY(&records), row, EventLogColumn_Text)});
        }
    }
    database->Close();
    return isInitialised != VARIANT_FALSE && isOpen != VARIANT_FALSE && SUCCEEDED(result) && SUCCEEDED(isRead) &&
           messages.size() == messagesBefore;
}

}  // namespace

SecurityFacts ReadSecurity(const v5::Site& of, std::optional<long> also) {
    const SiteAccess site = {_bstr_t(of.Current().entry->siteID.c_str()),
                             _bstr_t(of.Current().entry->languageId.c_str()),
                             _bstr_t(of.Current().connections[v5::Database::Config].c_str()),
                             _bstr_t(of.Current().connections[v5::Database::Alarms].c_str())};
    const auto security = Create<_NimboSecurity>(__uuidof(NimboSecurity), L"V5Strings.NimboSecurity");
    SecurityFacts facts;
    const Listener listener(security.Get(), DIID___NimboSecurity, facts.messages);
    VARIANT_BOOL done = VARIANT_FALSE;
    security->Setup(site.siteID, site.languageID, site.configDatabase, site.alarmsDatabase, _bstr_t(L"v5site"),
                    VARIANT_TRUE, &done);
    facts.isOpen = done != VARIANT_FALSE;
    if (!facts.isOpen) {
        return facts;
    }
    const auto levels = Enumeration(security.Get(), L"PrivilegeLevelEnum");
    SecurityEnabledEnum status{};
    PrivilegeLevelEnum level{};
    security->get_SecurityEnabledStatus(&status);
    facts.status = Named(status, Enumeration(security.Get(), L"SecurityEnabledEnum"));
    security->GetUserPrivilegeLevel(&level);
    facts.userLevel = Named(level, levels);
    _bstr_t user, list1, list2, list3;
    security->GetCurrentUserName(user.GetAddress());
    facts.user = TextOf(user);
    security->GetSidsForPrivilegeLevels(list1.GetAddress(), list2.GetAddress(), list3.GetAddress(), &done);
    facts.lists[0] = TextOf(list1);
    facts.lists[1] = TextOf(list2);
    facts.lists[2] = TextOf(list3);
    std::vector<long> stored;
    facts.isTrailRead = ReadDatabase(site, facts.changes, stored, facts.messages);
    std::vector<NamedNumber> restrictions = Enumeration(security.Get(), L"RestrictionIDEnum");
    if (also) {
        stored.push_back(*also);
    }
    for (const long number : stored) {
        if (Named(number, restrictions).name.empty()) {
            restrictions.push_back({number, L""});  // a program's own
        }
    }
    for (const NamedNumber& restriction : restrictions) {
        security->GetMinPrivilegeLevelForPID(restriction.number, &level);
        facts.minimums.push_back({restriction, Named(level, levels)});
    }
    security->Teardown();
    return facts;
}

}  // namespace v5site
