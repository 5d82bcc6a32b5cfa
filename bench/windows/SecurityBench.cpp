// A privilege check against what it cannot do without: the same row reads, decoded and parsed bare by the client; with
// Windows accounts also the same questions to the account information component.
#include "bench/windows/Com.h"
// after windows.h, which they need:
#include <msxml2.h>
#include <wincrypt.h>

#include "V5DBIL.h"
#include "V5Strings.h"
#include "bench/Bench.h"

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
        VARIANT_BOOL done = VARIANT_FALSE;
        Open(L";Integrated Security=SSPI");
        Check(security->EnableSecurity(), "EnableSecurity");
        Check(security->SetSidsForAllPrivilegeLevels(_bstr_t(L"a1,a2,a3,a4,S-1-5-21-9-9-9-1"),
                                                     _bstr_t(L"b1,b2,b3,S-1-5-21-9-9-9-2,jsmith"),
                                                     _bstr_t(L"c1,c2,c3,c4,S-1-5-21-9-9-9-3"), VARIANT_FALSE, &done),
              "SetSidsForAllPrivilegeLevels");
        for (long restriction = 301; restriction <= 325; ++restriction) {
            Check(security->SetMinPrivilegeLevelForPID(restriction, PrivLevel_2, &done), "SetMinPrivilegeLevelForPID");
        }
        const _bstr_t config = Open(login), site(L"S1"), none(L"");
        database = Create<IDatabaseInterface>(L"V5DBIL.DatabaseInterface");
        Check(database->Initialise(site, none, config, none, none, none, none, VARIANT_TRUE, 0, &done), "Initialise");
        Check(database->OpenSite(site, -1, -1, -1, 0, 0, 0, &done), "OpenSite");
    }
    ~Site() {
        security->Teardown();
        database->Close();
    }
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;

    ComPtr<_NimboSecurity> security;
    ComPtr<IDatabaseInterface> database;

  private:
    // Sets security up, and gives the connection string.
    _bstr_t Open(const std::wstring& login) {
        const _bstr_t connection((L"Data Source=" + mFile.Path() + login).c_str());
        VARIANT_BOOL done = VARIANT_FALSE;
        security = Create<_NimboSecurity>(L"V5Strings.NimboSecurity");
        Check(security->Setup(_bstr_t(L"S1"), _bstr_t(L"EN"), connection, _bstr_t(L""), _bstr_t(L"bench"), VARIANT_TRUE,
                              &done),
              "Setup");
        Check(done == VARIANT_TRUE, "Setup");
        return connection;
    }

    const TemporaryFile mFile;
};

void CheckPrivileges(_NimboSecurity& security) {
    for (int i = 0; i < kChecks; ++i) {
        VARIANT_BOOL allowed = VARIANT_FALSE;
        Check(security.CheckUserPrivilegeLevel(RID_DBE_BackupOrRestoreDataDB, VARIANT_FALSE, &allowed),
              "CheckUserPrivilegeLevel");
        Check(allowed == VARIANT_TRUE, "the check");
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
            Check(parsed == VARIANT_TRUE, "parsing");
        }
    }
}

void AskForAccounts() {
    for (int i = 0; i < kChecks; ++i) {
        const auto accounts = Create<IDispatch>(L"V5NetUtil.AccountInfo");
        Call(accounts.Get(), L"GetCurrentUserSid");
        for (const wchar_t* sid : kSids) {
            Call(accounts.Get(), L"IsCurrentUserMemberOfGroup", sid);
        }
        Call(accounts.Get(), L"IsCurrentUserAnAdministrator");
    }
}

void Security(Table& table) {
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
