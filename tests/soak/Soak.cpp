// ./dev soak: does the same work very often through the registered DLL and watches the process: memory, handles, GDI
// and USER objects must not grow once everything is warm, and the DLL must let itself be unloaded. V5_SOAK gives the
// counts in thousandths of the full ones; 2, if it is not set. One line for each kind of work.
#include <windows.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "V5Strings.h"
#include "component/Client.h"
#include "component/SiteFolder.h"
#include "soak/Usage.h"

namespace v5::test {

namespace {

struct Usage {
    long long heapBytes = CountHeapBytes();
    int handles = CountHandles();
    int gdi = CountGdi();
    int user = CountUser();
};

// What a run-time library or the system may still keep for itself once everything is warm. Where every round leaks,
// even one byte, a full run is beyond it.
constexpr long long kAllowedGrowth = 32 * 1024;

// What may grow with every single round, because it is not ours to keep flat.
struct PerRound {
    int heapBytes = 0;
    int handles = 0;
};

// What stays behind for each load of the DLL: the compiler's thread library keeps a record and up to two handles for
// each of the four threads that use it.
constexpr PerRound kPerLoad = {4 * 1024, 8};

long Share() {
    const char* const given = std::getenv("V5_SOAK");
    const long share = given != nullptr ? std::atol(given) : 2;
    EXPECT_TRUE(share > 0 && share <= 1000) << "V5_SOAK: 1 to 1000 thousandths";
    return share;
}

// Does `work` a tenth of `count` times to warm up, then `count` times.
template <class Work>
void Repeat(const char* name, long count, Work&& work, PerRound allowed = {}) {
    for (long i = 0; i < std::max(count / 10, 20L); ++i) {
        work();
    }
    const Usage before;
    const ULONGLONG began = GetTickCount64();
    for (long i = 0; i < count; ++i) {
        work();
    }
    const double seconds = static_cast<double>(GetTickCount64() - began) / 1000;
    const Usage after;
    std::printf("%-28s %8ld in %7.1f s  heap %9lld %+7lld  handles %d %+d  GDI %d %+d  USER %d %+d\n", name, count,
                seconds, before.heapBytes, after.heapBytes - before.heapBytes, before.handles,
                after.handles - before.handles, before.gdi, after.gdi - before.gdi, before.user,
                after.user - before.user);
    std::fflush(stdout);
    EXPECT_LE(after.heapBytes, before.heapBytes + kAllowedGrowth + count * allowed.heapBytes) << name;
    EXPECT_LE(after.handles, before.handles + count * allowed.handles) << name;
    EXPECT_LE(after.gdi, before.gdi) << name;
    EXPECT_LE(after.user, before.user) << name;
}

std::wstring ServerPath() {
    wchar_t clsid[39], path[MAX_PATH] = L"";
    StringFromGUID2(__uuidof(Footnote), clsid, 39);
    DWORD size = sizeof(path);
    RegGetValueW(HKEY_CLASSES_ROOT, (std::wstring(L"CLSID\\") + clsid + L"\\InprocServer32").c_str(), nullptr,
                 RRF_RT_REG_SZ, nullptr, path, &size);
    return path;
}

HMODULE LoadServer() {
    static const std::wstring path = ServerPath();
    const HMODULE library = LoadLibraryW(path.c_str());
    EXPECT_NE(library, nullptr);
    return library;
}

template <class Function>
Function EntryPoint(HMODULE library, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}
HRESULT CanUnloadNow(HMODULE library) {
    return EntryPoint<HRESULT(STDAPICALLTYPE*)()>(library, "DllCanUnloadNow")();
}

// Makes the DLL set up all that it sets up late, and raise an exception inside.
void UseLateBound(HMODULE library) {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    ComPtr<IClassFactory> factory;
    ComPtr<_DahsIniEntries> object;
    ComPtr<_DahsIniEntry> none;
    ASSERT_EQ(
        EntryPoint<GetClassObject>(library, "DllGetClassObject")(__uuidof(DahsIniEntries), IID_PPV_ARGS(&factory)),
        S_OK);
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)), S_OK);
    EXPECT_EQ(Get(object.Get(), L"Count"), _variant_t(0L));
    EXPECT_TRUE(FAILED(object->Item0(0, &none))) << "there is no entry";
    EXPECT_EQ(CanUnloadNow(library), S_FALSE) << "the DLL stays while it is used";
}

// The threads meet in the DLL's first use; this one, the last to use it, stays.
void LoadUseAndUnload() {
    const HMODULE library = LoadServer();
    {
        std::array<std::jthread, 3> others;
        for (std::jthread& other : others) {
            other = std::jthread(UseLateBound, library);
        }
    }
    UseLateBound(library);
    EXPECT_EQ(CanUnloadNow(library), S_OK) << "the DLL may go when nothing is used";
    FreeLibrary(library);
    EXPECT_EQ(GetModuleHandleW(L"V5Strings.dll"), nullptr);
}

// A late-bound use of an object, which must succeed; gives its value.
struct Use {
    const wchar_t* member;
    std::vector<_variant_t> arguments = {};
    WORD kind = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

    _variant_t Of(const ComPtr<IDispatch>& object) const {
        const CallResult result = Invoke(object.Get(), IdOf(object.Get(), member), kind, arguments);
        EXPECT_EQ(result.status, S_OK) << member;
        return result.value;
    }
};

}  // namespace

// Before COM itself has loaded the DLL.
TEST(Soak, LoadsAndUnloads) {
    Repeat("loads and unloads of the DLL", 100, LoadUseAndUnload, kPerLoad);
}

TEST(Soak, Classes) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const _variant_t nobody(static_cast<IDispatch*>(nullptr));
    const struct {
        const char* name;
        const CLSID& clsid;
        std::vector<Use> uses;  // none where each member opens a window, or there is none
        int cost = 1;
    } classes[] = {
        {"Footnote", __uuidof(Footnote), {{L"Text", {L"valve 3"}, DISPATCH_PROPERTYPUT}, {L"Text"}}},
        {"FootnoteList", __uuidof(FootnoteList), {{L"CreateOrGetFootnote", {nobody, L"valve 3"}}}},
        {"NimboErrorNumbers", __uuidof(NimboErrorNumbers), {}},
        {"DahsIniEntry", __uuidof(DahsIniEntry), {{L"SiteID"}}},
        {"DahsIniEntries", __uuidof(DahsIniEntries), {{L"Count"}}},
        {"LogFileClass", __uuidof(LogFileClass), {{L"IsActive"}, {L"WriteToLog", {L"valve 3"}}}},
        {"NimboStringsMain", __uuidof(NimboStringsMain), {{L"IsFactoryComputer"}}},
        {"NimboHelp", __uuidof(NimboHelp), {}},
        {"DahsIniMain", __uuidof(DahsIniMain), {{L"DahsID"}}},
        {"DahsIniMain, forced entry", __uuidof(DahsIniMain), {{L"SetupWithOneForcedDahsEntry", {L"AB"}}}, 10},
        {"NimboSecurity", __uuidof(NimboSecurity), {{L"GetUserPrivilegeLevel"}, {L"Teardown"}}},
    };
    for (const auto& each : classes) {
        ComPtr<IClassFactory> factory;
        ASSERT_EQ(CoGetClassObject(each.clsid, CLSCTX_INPROC_SERVER, nullptr, IID_PPV_ARGS(&factory)), S_OK);
        Repeat(each.name, 1000 * Share() / each.cost, [&] {
            ComPtr<IDispatch> object;
            ASSERT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)), S_OK);
            for (const Use& use : each.uses) {
                use.Of(object);
            }
        });
    }
}

TEST(Soak, WorkOnFiles) {
    std::string text;
    for (const char* section : {"1", "2", "3"}) {
        text += std::string("[Dahs") + section + "]\nSiteID=S" + section +
                "\nDahsComputerName=here\nVantorDir=C:\\windows\nBackupDir=C:\\windows\n";
        for (const char* key : {"Alarms", "Config", "Data", "DataShortTerm", "Realtime"}) {
            text += std::string("SQL") + key + "=Provider=x;Data Source=y;Initial Catalog=" + key + "\n";
        }
    }
    const SiteFolder folder(text);
    const _variant_t yes(true);
    const Use read = {L"ReadVantorINI2", {0L, true}}, ask = {L"GetInfoArray", {0L}};
    Repeat("reads of a site", 100 * Share(), [&] {
        const auto site = CreateByName(L"V5Strings.DahsIniMain");
        EXPECT_EQ(read.Of(site), yes);
        ask.Of(site);
    });
    const auto log = CreateByName(L"V5Strings.LogFileClass");
    const std::wstring path = folder.Path() + L"\\soak.log";
    const Use line = {L"WriteToLog", {L"analyser 2: calibration drift within limits"}};
    EXPECT_EQ((Use{L"StartLog", {path.c_str(), L"Soak", true, true}}.Of(log)), yes);
    Repeat("log lines", 1000 * Share(), [&] { line.Of(log); });
    EXPECT_EQ(Use{L"IsActive"}.Of(log), yes);
    Use{L"StopLog"}.Of(log);
    const auto security = CreateByName(L"V5Strings.NimboSecurity");
    const std::wstring login = L"Data Source=" + folder.Path() + L"\\S1.db;Integrated Security=SSPI";
    const Use check = {L"CheckUserPrivilegeLevel", {301L, false}};
    EXPECT_EQ((Use{L"Setup", {L"S1", L"EN", login.c_str(), L"", L"Soak", true}}.Of(security)), yes);
    Use{L"EnableSecurity"}.Of(security);
    Repeat("privilege checks", 100 * Share(), [&] { check.Of(security); });
    Use{L"Teardown"}.Of(security);
}

// More loads than a process has thread-local slots: the program must keep enough of them. The DLL stays from some time
// on.
TEST(Soak, TheDllGoesAndLeavesSlotsToTheProgram) {
    EXPECT_EQ(CanUnloadNow(GetModuleHandleW(L"V5Strings.dll")), S_OK) << "the DLL may go after the last release";
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(GetModuleHandleW(L"V5Strings.dll"), nullptr);
    for (int i = 0; i < 1200; ++i) {
        const HMODULE library = LoadServer();
        UseLateBound(library);
        FreeLibrary(library);
    }
    for (int i = 0; i < 256; ++i) {
        EXPECT_NE(TlsAlloc(), TLS_OUT_OF_INDEXES) << "the program has slots of its own";
    }
}

}  // namespace v5::test
