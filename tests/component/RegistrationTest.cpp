// Registration and back, for the machine and for one user, by regsvr32 as an installer runs it; and that nothing else
// is ever written to the registry.
#include <windows.h>
#include <gtest/gtest.h>

#include <shlwapi.h>

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "V5Strings.h"
#include "component/Client.h"
#include "component/DatabaseFile.h"
#include "component/Members.h"
#include "component/SiteFolder.h"

namespace v5::test {

namespace {

// ---- The registry ----------------------------------------------------------------------------------------------

// "key\value=" to data; "key" for a key itself.
using Snapshot = std::map<std::wstring, std::wstring>;

void AddKey(HKEY parent, const std::wstring& name, const std::wstring& path, REGSAM view, Snapshot& snapshot) {
    HKEY key = nullptr;
    DWORD children = 0, values = 0;
    // What Wine notes for itself and of the machine's networks, and the 32-bit classes, which are seen below the
    // classes too.
    if (path == L"user\\Wine" || path == L"machine\\Wow6432Node\\Classes" ||
        path.find(L"\\Microsoft\\Windows NT\\CurrentVersion\\Network") != path.npos) {
        return;
    }
    if (RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ | view, &key) != ERROR_SUCCESS) {
        return;
    }
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &children, nullptr, nullptr, &values, nullptr, nullptr, nullptr,
                     nullptr);
    snapshot[path] = L"key";
    wchar_t text[512];
    static std::vector<BYTE> data(64 * 1024);
    for (DWORD i = 0; i < values; ++i) {
        DWORD length = static_cast<DWORD>(std::size(text)), size = static_cast<DWORD>(data.size()), type = 0;
        RegEnumValueW(key, i, text, &length, nullptr, &type, data.data(), &size);
        snapshot[path + L'\\' + text + L'='] = std::wstring(data.begin(), data.begin() + size);
    }
    for (DWORD i = 0; i < children; ++i) {
        if (RegEnumKeyW(key, i, text, static_cast<DWORD>(std::size(text))) == ERROR_SUCCESS) {
            AddKey(key, text, path + L'\\' + text, 0, snapshot);
        }
    }
    RegCloseKey(key);
}

// All software's keys, of the machine and of the current user, in the 64-bit view, which shows both.
Snapshot TakeSnapshot() {
    Snapshot snapshot;
    AddKey(HKEY_LOCAL_MACHINE, L"Software", L"machine", KEY_WOW64_64KEY, snapshot);
    AddKey(HKEY_CURRENT_USER, L"Software", L"user", KEY_WOW64_64KEY, snapshot);
    return snapshot;
}

void ExpectSame(const Snapshot& before, const Snapshot& after) {
    for (const auto& [path, data] : before) {
        const auto found = after.find(path);
        EXPECT_TRUE(found != after.end() && found->second == data) << "lost or changed: " << path;
    }
    for (const auto& [path, data] : after) {
        EXPECT_EQ(before.count(path), 1U) << "left behind: " << path << " = " << data;
    }
}

std::wstring Read(HKEY root, const std::wstring& path, const wchar_t* value = nullptr) {
    wchar_t text[MAX_PATH] = L"";
    DWORD size = sizeof(text);
    RegGetValueW(root, (L"Software\\Classes\\" + path).c_str(), value, RRF_RT_REG_SZ, nullptr, text, &size);
    return text;
}
bool Write(const std::wstring& path, const wchar_t* text) {
    return RegSetKeyValueW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + path).c_str(), nullptr, REG_SZ, text,
                           static_cast<DWORD>((wcslen(text) + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

std::wstring Braced(REFGUID guid) {
    wchar_t text[39];
    StringFromGUID2(guid, text, 39);
    return text;
}

// What the component may register: its type library, its classes and its interfaces.
std::vector<std::wstring> OwnKeys(const std::wstring& path) {
    ComPtr<ITypeLib> library;
    EXPECT_EQ(LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library), S_OK);
    std::vector<std::wstring> keys = {L"\\TypeLib\\" + Braced(LIBID_V5Strings)};
    ForEachType(*library.Get(), [&](const TypeDescription& type) {
        if (type->typekind == TKIND_COCLASS) {
            keys.insert(keys.end(), {L"\\CLSID\\" + Braced(type->guid), L"\\Classes\\V5Strings." + type.Name()});
        } else if (type->typekind == TKIND_DISPATCH) {
            keys.push_back(L"\\Interface\\" + Braced(type->guid));
        }
    });
    return keys;
}

// Whether a path is one of `keys` or below it, or the folder of such keys that a user without classes lacks.
bool IsOwn(const std::wstring& path, const std::vector<std::wstring>& keys) {
    return path == L"user\\Classes\\CLSID" || path == L"user\\Classes\\Interface" ||
           path == L"user\\Classes\\TypeLib" ||
           std::any_of(keys.begin(), keys.end(), [&](const std::wstring& key) {  // the case of names is the system's
               return StrStrIW((path + L'\\').c_str(), (key + L'\\').c_str()) != nullptr;
           });
}

// ---- regsvr32 --------------------------------------------------------------------------------------------------

#ifdef _WIN64
constexpr bool kIs64 = true;
#else
constexpr bool kIs64 = false;
#endif

// The build of either width, with the regsvr32 of its width.
struct Server {
    explicit Server(bool is64)
        : library(is64 ? L"build\\win64\\V5Strings.dll" : L"build\\win32\\V5Strings.dll"),
          tool(std::wstring(L"C:\\windows\\") +
               (is64 == kIs64 ? L"system32"
                : is64        ? L"sysnative"
                              : L"syswow64") +
               L"\\regsvr32.exe") {
        wchar_t full[MAX_PATH];
        library.assign(full, GetFullPathNameW(library.c_str(), MAX_PATH, full, nullptr));
    }

    // Exit code of `regsvr32 /s OPTIONS library`; -1 when it cannot be run.
    DWORD Run(const std::wstring& options) const {
        std::wstring line = L'"' + tool + L"\" /s " + options + L" \"" + library + L'"';
        STARTUPINFOW startup{};
        startup.cb = sizeof(startup);
        PROCESS_INFORMATION process{};
        DWORD code = static_cast<DWORD>(-1);
        if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process) !=
            0) {
            WaitForSingleObject(process.hProcess, INFINITE);
            GetExitCodeProcess(process.hProcess, &code);
            CloseHandle(process.hProcess);
            CloseHandle(process.hThread);
        }
        return code;
    }

    std::wstring library, tool;
};

constexpr wchar_t kForUser[] = L"/n /i:user";

// Starts each test without any registration, and puts the machine's registration back afterwards.
class RegistrationTest : public testing::Test {
  protected:
    void SetUp() override {
        mOtherWasRegistered = mOther.Run(L"/u") == 0;
        ASSERT_EQ(mOwn.Run(L"/u"), 0U) << "run the tests in the project's folder";
        mOwn.Run(std::wstring(L"/u ") + kForUser);
    }
    void TearDown() override {
        EXPECT_EQ(mOwn.Run(L""), 0U);
        EXPECT_TRUE(!mOtherWasRegistered || mOther.Run(L"") == 0);
    }

    Server mOwn{kIs64}, mOther{!kIs64};
    bool mOtherWasRegistered = false;
};

TEST_F(RegistrationTest, LeavesNoTraceBehind) {
    const Snapshot before = TakeSnapshot();
    ASSERT_GT(before.size(), 1000U) << "the registry cannot be read";
    const std::vector<std::wstring> own = OwnKeys(mOwn.library);
    ASSERT_GE(own.size(), 31U);
    for (const wchar_t* options : {L"", kForUser}) {
        SCOPED_TRACE(options);
        EXPECT_EQ(mOwn.Run(options), 0U);
        Snapshot registered = TakeSnapshot();
        EXPECT_GT(
            std::erase_if(registered,
                          [&](const auto& entry) { return !before.contains(entry.first) && IsOwn(entry.first, own); }),
            100U);
        ExpectSame(before, registered);
        EXPECT_EQ(mOwn.Run(options), 0U) << "registering again must do no harm";
        EXPECT_EQ(mOwn.Run(std::wstring(L"/u ") + options), 0U);
        ExpectSame(before, TakeSnapshot());
        EXPECT_EQ(mOwn.Run(std::wstring(L"/u ") + options), 0U) << "removing what is not there must do no harm";
    }
}

// The other width shares keys with this one, and the message sink's interface belongs to the messages component.
TEST_F(RegistrationTest, LeavesTheNeighboursAlone) {
    const std::wstring key = L"Interface\\" + Braced(__uuidof(IRaiseMsg));
    const bool otherRuns = mOther.Run(L"") == 0;
    const bool ownerIsThere = !Read(HKEY_LOCAL_MACHINE, key + L"\\TypeLib").empty();
    ASSERT_TRUE(ownerIsThere ||
                (Write(key, L"IRaiseMsg") && Write(key + L"\\TypeLib", L"{7B44AE30-5A0E-4B30-9A59-0C4E2A77E6D1}")));
    const Snapshot before = TakeSnapshot();
    EXPECT_EQ(mOwn.Run(L""), 0U);
    EXPECT_NE(Read(HKEY_LOCAL_MACHINE, key + L"\\TypeLib"), Braced(LIBID_V5Strings));
    EXPECT_EQ(mOwn.Run(L"/u"), 0U);
    ExpectSame(before, TakeSnapshot());
    if (!ownerIsThere) {
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + key).c_str());
    }
    EXPECT_TRUE(!otherRuns || mOther.Run(L"/u") == 0);
}

// What clients, compilers and the marshaller look up. (That clients find it is shown by all other tests, for the
// machine; Wine does not look for a user's classes.)
TEST_F(RegistrationTest, WritesWhatClientsLookUp) {
    struct Case {
        const wchar_t* options;
        HKEY root;
    };
    const std::wstring clsid = L"CLSID\\" + Braced(__uuidof(NimboErrorNumbers));
    const std::wstring iface = L"Interface\\" + Braced(__uuidof(_NimboErrorNumbers));
    const std::wstring library = Braced(LIBID_V5Strings);
    for (const Case& c : {Case{L"", HKEY_LOCAL_MACHINE}, Case{kForUser, HKEY_CURRENT_USER}}) {
        ASSERT_EQ(mOwn.Run(c.options), 0U);
        EXPECT_EQ(Read(c.root, L"V5Strings.NimboErrorNumbers\\CLSID"), Braced(__uuidof(NimboErrorNumbers)));
        EXPECT_EQ(Read(c.root, clsid + L"\\InprocServer32"), mOwn.library);
        EXPECT_EQ(Read(c.root, clsid + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
        EXPECT_EQ(Read(c.root, clsid + L"\\ProgID"), L"V5Strings.NimboErrorNumbers");
        EXPECT_EQ(Read(c.root, clsid + L"\\TypeLib"), library);
        EXPECT_EQ(Read(c.root, iface), L"_NimboErrorNumbers");
        EXPECT_EQ(Read(c.root, iface + L"\\TypeLib"), library);
        EXPECT_EQ(Read(c.root, iface + L"\\ProxyStubClsid32"), L"{00020424-0000-0000-C000-000000000046}");
        EXPECT_EQ(Read(c.root, L"TypeLib\\" + library + (kIs64 ? L"\\1.0\\0\\win64" : L"\\1.0\\0\\win32")),
                  mOwn.library);
        const HKEY elsewhere = c.root == HKEY_LOCAL_MACHINE ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
        EXPECT_EQ(Read(elsewhere, clsid + L"\\InprocServer32"), L"") << "written where it was not asked for";
        EXPECT_EQ(mOwn.Run(std::wstring(L"/u ") + c.options), 0U);
    }
}

// The user's registry is an empty one meanwhile: a value that is written each time would not show in the real one.
TEST(RegistryUse, ObjectsWriteNothing) {
    constexpr wchar_t kEmpty[] = L"Software\\V5StringsEmptyUser";
    HKEY user = nullptr;
    ASSERT_EQ(RegCreateKeyW(HKEY_CURRENT_USER, kEmpty, &user), ERROR_SUCCESS);
    for (const wchar_t* folders : {L"Shell Folders", L"User Shell Folders"}) {  // where the system looks for folders
        const std::wstring name = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\";
        RegSetKeyValueW(user, (name + folders).c_str(), L"", REG_SZ, L"", sizeof(wchar_t));
    }
    const SiteFolder folder(
        "[Dahs1]\r\nSiteID=S1\r\nDahsComputerName=X\r\nVantorDir=$folder$\\V\r\nBackupDir=B\r\n"
        "SQLAlarms=a\r\nSQLConfig=c\r\nSQLData=d\r\nSQLDataShortTerm=s\r\nSQLRealtime=r\r\n");
    const DatabaseFile file;
    const std::wstring log = folder.Path() + L"\\log.txt";
    const Snapshot before = TakeSnapshot();
    ASSERT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, user), ERROR_SUCCESS);
    struct Use {
        const wchar_t *name, *member;
        std::vector<_variant_t> arguments;
    };
    const Use uses[] = {
        {L"DahsIniMain", L"ReadVantorINI", {0L}},
        {L"LogFileClass", L"StartLog", {log.c_str(), L"a log", true, true}},
        {L"NimboSecurity", L"Setup", {L"S1", L"EN", file.WindowsLogin().c_str(), L"", L"Component tests", true}},
    };
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadRegTypeLib(LIBID_V5Strings, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
    for (const PublishedClass& published : PublishedClasses(*library.Get())) {
        const ComPtr<IDispatch> object = CreateByName((L"V5Strings." + published.name).c_str());
        ComPtr<IUnknown> members;
        ASSERT_EQ(object->QueryInterface(published.iid, reinterpret_cast<void**>(members.GetAddressOf())), S_OK);
        for (const Use& use : uses) {
            if (use.name == published.name) {
                EXPECT_EQ(Call(object.Get(), use.member, use.arguments).value, _variant_t(true)) << use.member;
            }
        }
        for (const PublishedMember& member : published.members) {
            if (!member.ShowsWindow() && member.name != L"Setup" && member.name != L"Teardown") {
                CallByTable(members.Get(), member, Outputs::Real);
            }
        }
    }
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    ExpectSame(before, TakeSnapshot());
    RegCloseKey(user);
    RegDeleteTreeW(HKEY_CURRENT_USER, kEmpty);
}

}  // namespace

}  // namespace v5::test
