// A privilege check against what it cannot do without: the same row reads, decoded and parsed bare by the client; with
// Windows accounts also the same questions to the account information component.
#include <windows.h>
// after windows.h, which they need:
#include <comutil.h>
#include <msxml2.h>
#include <wincrypt.h>

#include <vector>

#include "V5DBIL.h"
#include "V5Strings.h"
#include "bench/Bench.h"
#include "bench/windows/Com.h"

namespace v5::bench {

using namespace V5Strings;  // the published enumerations
namespace {

constexpr int kChecks = 200;

// The rows that a check reads: switch, account lists, minimum levels.
constexpr const wchar_t* kKeys[] = {L"{A71A2E97-80BE-E011-A198-0023AE02B5BD}",
                                    L"{A7C1187A-ADA1-4D4A-ABCA-2804F5D8641F}",
                                    L"{A7EDAA89-A79C-4068-8B26-7B20523B4236}"};

constexpr CLSID kDocument60 = {0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};

constexpr const wchar_t* kSids[] = {L"S-1-5-21-9-9-9-1", L"S-1-5-21-9-9-9-2", L"S-1-5-21-9-9-9-3"};

// A site in a file of its own: account lists, and a minimum of level 2 for restrictions in plenty. The user is the last
// on the list of level 2 as a SQL login, or with Windows authentication on none, and an administrator.
class Site {
  public:
    explicit Site(const wchar_t* login) {
        wchar_t folder[MAX_PATH], file[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        GetTempFileNameW(folder, L"v5b", 0, file);
        mFile = file;
        DeleteFileW(file);
        VARIANT_BOOL done = VARIANT_FALSE;
        Open(L"Data Source=" + mFile + L";Integrated Security=SSPI");
        Check(security->EnableSecurity(), "EnableSecurity");
        Check(security->SetSidsForAllPrivilegeLevels(_bstr_t(L"a1,a2,a3,a4,S-1-5-21-9-9-9-1"),
                                                     _bstr_t(L"b1,b2,b3,S-1-5-21-9-9-9-2,jsmith"),
                                                     _bstr_t(L"c1,c2,c3,c4,S-1-5-21-9-9-9-3"), VARIANT_FALSE, &done),
              "SetSidsForAllPrivilegeLevels");
        for (long restriction = 301; restriction <= 325; ++restriction) {
            Check(security->SetMinPrivilegeLevelForPID(restriction, PrivLevel_2, &done), "SetMinPrivilegeLevelForPID");
        }
        const std::wstring connection = L"Data Source=" + mFile + login;
        Open(connection);
        const _bstr_t site(L"S1"), none(L""), config(connection.c_str());
        database = Create<IDatabaseInterface>(L"V5DBIL.DatabaseInterface");
        Check(database->Initialise(site, none, config, none, none, none, none, VARIANT_TRUE, 0, &done), "Initialise");
        Check(database->OpenSite(site, -1, -1, -1, 0, 0, 0, &done), "OpenSite");
    }
    ~Site() {
        security->Teardown();
        database->Close();
        DeleteFileW(mFile.c_str());
    }
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;

    ComPtr<_NimboSecurity> security;
    ComPtr<IDatabaseInterface> database;

  private:
    void Open(const std::wstring& login) {
        security = Create<_NimboSecurity>(L"V5Strings.NimboSecurity");
        VARIANT_BOOL done = VARIANT_FALSE;
        Check(security->Setup(_bstr_t(L"S1"), _bstr_t(L"EN"), _bstr_t(login.c_str()), _bstr_t(L""), _bstr_t(L"bench"),
                              VARIANT_TRUE, &done),
              "Setup");
        Check(done == VARIANT_TRUE ? S_OK : E_FAIL, "Setup");
    }

    std::wstring mFile;
};

void CheckPrivileges(_NimboSecurity& security) {
    for (int i = 0; i < kChecks; ++i) {
        VARIANT_BOOL allowed = VARIANT_FALSE;
        Check(security.CheckUserPrivilegeLevel(RID_DBE_BackupOrRestoreDataDB, VARIANT_FALSE, &allowed),
              "CheckUserPrivilegeLevel");
        Check(allowed == VARIANT_TRUE ? S_OK : E_FAIL, "the check");
    }
}

_bstr_t Decode(BSTR base64) {
    DWORD size = 0;
    CryptStringToBinaryW(base64, SysStringLen(base64), CRYPT_STRING_BASE64, nullptr, &size, nullptr, nullptr);
    std::vector<BYTE> bytes(size);
    CryptStringToBinaryW(base64, SysStringLen(base64), CRYPT_STRING_BASE64, bytes.data(), &size, nullptr, nullptr);
    const auto* utf8 = reinterpret_cast<const char*>(bytes.data());
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8, static_cast<int>(size), nullptr, 0);
    BSTR text = SysAllocStringLen(nullptr, static_cast<UINT>(length));
    MultiByteToWideChar(CP_UTF8, 0, utf8, static_cast<int>(size), text, length);
    return {text, false};
}

void ReadRows(IDatabaseInterface& database) {
    for (int i = 0; i < kChecks; ++i) {
        for (const wchar_t* key : kKeys) {
            BSTR value = nullptr;
            Check(database.ReadLookup(_bstr_t(L"S1"), 1, _bstr_t(L"V5LOOKUP"), _bstr_t(key), &value), "ReadLookup");
            const _bstr_t text = Decode(value);
            SysFreeString(value);
            ComPtr<IXMLDOMDocument> document;
            Check(CoCreateInstance(kDocument60, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument, &document),
                  "MSXML");
            VARIANT_BOOL parsed = VARIANT_FALSE;
            Check(document->put_async(VARIANT_FALSE), "put_async");
            Check(document->loadXML(text, &parsed), "loadXML");
            Check(parsed == VARIANT_TRUE ? S_OK : E_FAIL, "parsing");
        }
    }
}

void AskLateBound(IDispatch& object, const wchar_t* member, const wchar_t* argument = nullptr) {
    auto* name = const_cast<wchar_t*>(member);
    DISPID id = 0;
    _variant_t value(argument), answer;
    DISPPARAMS parameters = {&value, nullptr, argument != nullptr ? 1u : 0u, 0};
    Check(object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id), "GetIDsOfNames");
    Check(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &answer, nullptr, nullptr),
          "Invoke");
}

void AskForAccounts() {
    for (int i = 0; i < kChecks; ++i) {
        const auto accounts = Create<IDispatch>(L"V5NetUtil.AccountInfo");
        AskLateBound(*accounts.Get(), L"GetCurrentUserSid");
        for (const wchar_t* sid : kSids) {
            AskLateBound(*accounts.Get(), L"IsCurrentUserMemberOfGroup", sid);
        }
        AskLateBound(*accounts.Get(), L"IsCurrentUserAnAdministrator");
    }
}

// V5DBIL as the security object sees it, each call counted: a round trip to the database, or what may be one.
class CountedDatabase final : public IDatabaseInterface, public IClassFactory {
  public:
    CountedDatabase() {
        mInner = Create<IDatabaseInterface>(L"V5DBIL.DatabaseInterface");
        Check(CoRegisterClassObject(CLSID_DatabaseInterface, static_cast<IClassFactory*>(this), CLSCTX_INPROC_SERVER,
                                    REGCLS_MULTIPLEUSE, &mCookie),
              "CoRegisterClassObject");
    }
    virtual ~CountedDatabase() { CoRevokeClassObject(mCookie); }
    CountedDatabase(const CountedDatabase&) = delete;
    CountedDatabase& operator=(const CountedDatabase&) = delete;

    int calls = 0;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (iid == IID_IClassFactory) {
            *object = static_cast<IClassFactory*>(this);
            return S_OK;
        }
        if (iid == IID_IDatabaseInterface || iid == IID_IUnknown) {
            *object = static_cast<IDatabaseInterface*>(this);
            return S_OK;
        }
        return mInner->QueryInterface(iid, object);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID iid, void** object) override { return QueryInterface(iid, object); }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP SetApplicationName(BSTR name, VARIANT_BOOL* done) override {
        return Counted().SetApplicationName(name, done);
    }
    STDMETHODIMP Initialise(BSTR site, BSTR language, BSTR config, BSTR alarms, BSTR data, BSTR shortTerm,
                            BSTR realtime, VARIANT_BOOL noninteractive, long options, VARIANT_BOOL* done) override {
        return Counted().Initialise(site, language, config, alarms, data, shortTerm, realtime, noninteractive, options,
                                    done);
    }
    STDMETHODIMP OpenSite(BSTR site, long source, long channel, long average, long open, long cache, long reserved,
                          VARIANT_BOOL* done) override {
        return Counted().OpenSite(site, source, channel, average, open, cache, reserved, done);
    }
    STDMETHODIMP Close() override { return Counted().Close(); }
    STDMETHODIMP ForgetLogons(BSTR site) override { return Counted().ForgetLogons(site); }
    STDMETHODIMP ReadLookup(BSTR site, long level, BSTR table, BSTR key, BSTR* value) override {
        return Counted().ReadLookup(site, level, table, key, value);
    }
    STDMETHODIMP WriteLookup(BSTR site, long level, BSTR table, BSTR key, BSTR value, VARIANT_BOOL* done) override {
        return Counted().WriteLookup(site, level, table, key, value, done);
    }
    STDMETHODIMP WriteEventLog(BSTR site, DATE time, BSTR text, BSTR category, long kind, BSTR source, BSTR tag,
                               VARIANT_BOOL* done) override {
        return Counted().WriteEventLog(site, time, text, category, kind, source, tag, done);
    }
    STDMETHODIMP ReadEventLog(BSTR site, long most, VARIANT* records) override {
        return Counted().ReadEventLog(site, most, records);
    }
    STDMETHODIMP get_SiteInfo(BSTR site, ISiteInfo** info) override { return Counted().get_SiteInfo(site, info); }
    STDMETHODIMP UsesWindowsAuthentication(BSTR connection, VARIANT_BOOL* windows) override {
        return Counted().UsesWindowsAuthentication(connection, windows);
    }

  private:
    IDatabaseInterface& Counted() {
        ++calls;
        return *mInner.Get();
    }

    ComPtr<IDatabaseInterface> mInner;
    DWORD mCookie = 0;
};

// The calls of one check of each kind of restriction, beside the least: the rows that decide it, and which user on
// which kind of site (the site's object, and what its connection string means).
void RoundTrips(Table& table) {
    struct Kind {
        const char* name;
        long restriction;
        double rows;
    };
    constexpr Kind kKinds[] = {{"a stored minimum", RID_DBE_BackupOrRestoreDataDB, 3},
                               {"a default minimum", RID_RG_SetupAutoReports, 3},
                               {"a fixed minimum", RID_DBE_OpenSecurityForm, 1},
                               {"the maker's menu", RID_DBE_UseNimboMenu, 2}};
    for (const wchar_t* login : {L";User ID=jsmith", L";Integrated Security=SSPI"}) {
        CountedDatabase counted;
        const Site site(login);
        const bool isSql = std::wstring(login).find(L"User") != std::wstring::npos;
        for (const Kind& kind : kKinds) {
            counted.calls = 0;
            VARIANT_BOOL allowed = VARIANT_FALSE;
            Check(site.security->CheckUserPrivilegeLevel(static_cast<RestrictionIDEnum>(kind.restriction),
                                                         VARIANT_FALSE, &allowed),
                  "CheckUserPrivilegeLevel");
            table.Add({.name = std::string("round trips: ") + kind.name + ", " + (isSql ? "SQL login" : "Windows") +
                               " / the least",
                       .goal = 1.2,  // one call more
                       .unit = "calls"},
                      counted.calls, kind.rows + 2);
        }
    }
}

void Security(Table& table) {
    RoundTrips(table);
    const Site sql(L";User ID=jsmith");
    const Site windows(L";Integrated Security=SSPI");
    table.Compare(
        {.name = "privilege check, SQL login / its reads and parsing", .goal = 1.3, .operations = kChecks},
        [&] { CheckPrivileges(*sql.security.Get()); }, [&] { ReadRows(*sql.database.Get()); });
    table.Compare(
        {.name = "privilege check, Windows / reads, parsing, accounts", .goal = 1.3, .operations = kChecks},
        [&] { CheckPrivileges(*windows.security.Get()); },
        [&] {
            ReadRows(*windows.database.Get());
            AskForAccounts();
        });
}

const Benchmark registered("security", Security);

}  // namespace
}  // namespace v5::bench
