// A privilege check against what it cannot do without: the same row reads, decoded and parsed bare by the client.
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

// A site in a file of its own: fifteen SQL logins in the lists, the user the last of level 2, and a minimum for every
// configurable restriction.
class Site {
  public:
    Site() {
        wchar_t folder[MAX_PATH], file[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        GetTempFileNameW(folder, L"v5b", 0, file);
        file_ = file;
        DeleteFileW(file);
        VARIANT_BOOL done = VARIANT_FALSE;
        Open(L"Data Source=" + file_ + L";Integrated Security=SSPI");
        Check(security->EnableSecurity(), "EnableSecurity");
        Check(security->SetSidsForAllPrivilegeLevels(_bstr_t(L"a1,a2,a3,a4,a5"), _bstr_t(L"b1,b2,b3,b4,jsmith"),
                                                     _bstr_t(L"c1,c2,c3,c4,c5"), VARIANT_FALSE, &done),
              "SetSidsForAllPrivilegeLevels");
        for (long restriction = 301; restriction <= 325; ++restriction) {
            Check(security->SetMinPrivilegeLevelForPID(restriction, PrivLevel_2, &done), "SetMinPrivilegeLevelForPID");
        }
        Open(L"Data Source=" + file_ + L";User ID=jsmith");
        const _bstr_t site(L"S1"), none(L""), login((L"Data Source=" + file_ + L";User ID=jsmith").c_str());
        database = Create<IDatabaseInterface>(L"V5DBIL.DatabaseInterface");
        Check(database->Initialise(site, none, login, none, none, none, none, VARIANT_TRUE, 0, &done), "Initialise");
        Check(database->OpenSite(site, -1, -1, -1, 0, 0, 0, &done), "OpenSite");
    }
    ~Site() {
        security->Teardown();
        database->Close();
        DeleteFileW(file_.c_str());
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

    std::wstring file_;
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

void Security(Table& table) {
    const Site site;
    table.Compare(
        {.name = "privilege check / its row reads, decoding and parsing", .goal = 1.3, .operations = kChecks},
        [&] { CheckPrivileges(*site.security.Get()); }, [&] { ReadRows(*site.database.Get()); });
}

const Benchmark registered("security", Security);

}  // namespace
}  // namespace v5::bench
