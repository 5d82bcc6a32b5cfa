// ./dev soak: does the same work very often through the registered DLL and watches the process: memory, handles, GDI
// and USER objects must not grow once everything is warm, and the DLL must let itself be unloaded. An argument gives
// the counts in thousandths of the full ones. Prints one line for each kind of work, and fails when something grows.
#include <windows.h>

#include <comdef.h>
#include <wrl/client.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "V5Strings.h"
#include "component/SiteFolder.h"
#include "soak/Usage.h"

namespace {

using Microsoft::WRL::ComPtr;

bool allWell = true;

void Require(bool condition, const char* what) {
    if (!condition) {
        std::printf("FAILED: %s\n", what);
        std::exit(1);
    }
}
void Require(HRESULT status, const char* what) {
    Require(status == S_OK, what);
}

struct Usage {
    long long heapBytes = v5::test::CountHeapBytes();
    int handles = v5::test::CountHandles();
    int gdi = v5::test::CountGdi();
    int user = v5::test::CountUser();
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

// Does `work` a tenth of `count` times to warm up, then `count` times.
template <class Work>
void Repeat(const char* name, long count, Work&& work, PerRound allowed = {}) {
    for (long i = 0; i < std::max(count / 10, 20L); ++i) {
        work(i);
    }
    const Usage before;
    const ULONGLONG began = GetTickCount64();
    for (long i = 0; i < count; ++i) {
        work(i);
    }
    const double seconds = static_cast<double>(GetTickCount64() - began) / 1000;
    const Usage after;
    const long long bytes = after.heapBytes - before.heapBytes;
    const bool isFlat = bytes <= kAllowedGrowth + count * allowed.heapBytes &&
                        after.handles <= before.handles + count * allowed.handles && after.gdi <= before.gdi &&
                        after.user <= before.user;
    std::printf("%-28s %8ld in %7.1f s  heap %9lld %+7lld  handles %d %+d  GDI %d %+d  USER %d %+d%s\n", name, count,
                seconds, before.heapBytes, bytes, before.handles, after.handles - before.handles, before.gdi,
                after.gdi - before.gdi, before.user, after.user - before.user, isFlat ? "" : "  GROWS");
    std::fflush(stdout);
    allWell = allWell && isFlat;
}

std::wstring ServerPath() {
    wchar_t clsid[39], path[MAX_PATH] = L"";
    StringFromGUID2(__uuidof(Footnote), clsid, 39);
    DWORD size = sizeof(path);
    RegGetValueW(HKEY_CLASSES_ROOT, (std::wstring(L"CLSID\\") + clsid + L"\\InprocServer32").c_str(), nullptr,
                 RRF_RT_REG_SZ, nullptr, path, &size);
    return path;
}

template <class Function>
Function EntryPoint(HMODULE library, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}
using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
using CanUnloadNow = HRESULT(STDAPICALLTYPE*)();

template <class Interface = IDispatch>
ComPtr<Interface> New(const ComPtr<IClassFactory>& factory) {
    ComPtr<Interface> object;
    Require(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)), "a new object");
    return object;
}

// A late-bound use of an object; arguments from the last one to the first.
struct Use {
    const wchar_t* member;
    std::vector<_variant_t> arguments = {};
    WORD kind = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
};

_variant_t Call(IDispatch& object, const Use& use) {
    auto* name = const_cast<wchar_t*>(use.member);
    auto* arguments = const_cast<_variant_t*>(use.arguments.data());
    DISPID id = 0, put = DISPID_PROPERTYPUT;
    const UINT puts = use.kind == DISPATCH_PROPERTYPUT ? 1 : 0;
    DISPPARAMS parameters{arguments, &put, static_cast<UINT>(use.arguments.size()), puts};
    _variant_t result;
    Require(object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id), "a member's name");
    Require(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, use.kind, &parameters, &result, nullptr, nullptr),
            "a member's call");
    return result;
}

// Makes the DLL set up all that it sets up late, and raise an exception inside.
void UseLateBound(HMODULE library) {
    ComPtr<IClassFactory> factory;
    Require(EntryPoint<GetClassObject>(library, "DllGetClassObject")(__uuidof(DahsIniEntries), IID_PPV_ARGS(&factory)),
            "class object");
    const auto object = New<_DahsIniEntries>(factory);
    Call(*object.Get(), {L"Count"});
    ComPtr<_DahsIniEntry> none;
    Require(FAILED(object->Item0(0, &none)), "there is no entry");
    Require(EntryPoint<CanUnloadNow>(library, "DllCanUnloadNow")() == S_FALSE, "the DLL stays while it is used");
}

// Before COM itself has loaded the DLL. The threads meet in its first use; this one, the last to use it, stays.
void LoadUseAndUnload(const std::wstring& path) {
    const HMODULE library = LoadLibraryW(path.c_str());
    Require(library != nullptr, "the registered DLL loads");
    {
        std::array<std::jthread, 3> others;
        for (std::jthread& other : others) {
            other = std::jthread(UseLateBound, library);
        }
    }
    UseLateBound(library);
    Require(EntryPoint<CanUnloadNow>(library, "DllCanUnloadNow")(), "the DLL may go when nothing is used");
    FreeLibrary(library);
    Require(GetModuleHandleW(L"V5Strings.dll") == nullptr, "the DLL has gone");
}

// More loads than a process has thread-local slots: the program must keep enough of them. The DLL stays from some time
// on.
void LeaveSlotsToTheProgram(const std::wstring& path) {
    constexpr int kLoads = 1200;
    for (int i = 0; i < kLoads; ++i) {
        const HMODULE library = LoadLibraryW(path.c_str());
        Require(library != nullptr, "the registered DLL loads");
        UseLateBound(library);
        FreeLibrary(library);
    }
    std::array<DWORD, 256> slots;
    for (DWORD& slot : slots) {
        slot = TlsAlloc();
        Require(slot != TLS_OUT_OF_INDEXES, "the program has slots of its own");
    }
}

ComPtr<IClassFactory> FactoryOf(const CLSID& clsid) {
    ComPtr<IClassFactory> factory;
    Require(CoGetClassObject(clsid, CLSCTX_INPROC_SERVER, nullptr, IID_PPV_ARGS(&factory)), "class object");
    return factory;
}

// Creates objects of each class, uses and releases them.
void Classes(long count) {
    const _variant_t text(L"valve 3"), site(L"AB"), nobody(static_cast<IDispatch*>(nullptr));
    const struct {
        const char* name;
        const CLSID& clsid;
        std::vector<Use> uses;  // none where each member opens a window, or there is none
        int cost = 1;
    } classes[] = {
        {"Footnote", __uuidof(Footnote), {{L"Text", {text}, DISPATCH_PROPERTYPUT}, {L"Text"}}},
        {"FootnoteList", __uuidof(FootnoteList), {{L"CreateOrGetFootnote", {text, nobody}}}},
        {"NimboErrorNumbers", __uuidof(NimboErrorNumbers), {}},
        {"DahsIniEntry", __uuidof(DahsIniEntry), {{L"SiteID"}}},
        {"DahsIniEntries", __uuidof(DahsIniEntries), {{L"Count"}}},
        {"LogFileClass", __uuidof(LogFileClass), {{L"IsActive"}, {L"WriteToLog", {text}}}},
        {"NimboStringsMain", __uuidof(NimboStringsMain), {{L"IsFactoryComputer"}}},
        {"NimboHelp", __uuidof(NimboHelp), {}},
        {"DahsIniMain", __uuidof(DahsIniMain), {{L"DahsID"}}},
        {"DahsIniMain, forced entry", __uuidof(DahsIniMain), {{L"SetupWithOneForcedDahsEntry", {site}}}, 10},
        {"NimboSecurity", __uuidof(NimboSecurity), {{L"GetUserPrivilegeLevel"}, {L"Teardown"}}},
    };
    for (const auto& each : classes) {
        const ComPtr<IClassFactory> factory = FactoryOf(each.clsid);
        Repeat(each.name, count / each.cost, [&](long) {
            const auto object = New(factory);
            for (const Use& use : each.uses) {
                Call(*object.Get(), use);
            }
        });
    }
}

void SiteReads(long count) {
    std::string text;
    for (const char* section : {"1", "2", "3"}) {
        text += std::string("[Dahs") + section + "]\nSiteID=S" + section +
                "\nDahsComputerName=here\nVantorDir=C:\\windows\nBackupDir=C:\\windows\n";
        for (const char* key : {"Alarms", "Config", "Data", "DataShortTerm", "Realtime"}) {
            text += std::string("SQL") + key + "=Provider=x;Data Source=y;Initial Catalog=" + key + "\n";
        }
    }
    const v5::test::SiteFolder folder(text);
    const Use read = {L"ReadVantorINI2", {true, 0L}}, ask = {L"GetInfoArray", {0L}};
    const ComPtr<IClassFactory> factory = FactoryOf(__uuidof(DahsIniMain));
    Repeat("reads of a site", count, [&](long) {
        const auto site = New(factory);
        Require(static_cast<bool>(Call(*site.Get(), read)), "the site is read");
        Call(*site.Get(), ask);
    });
}

void LogLines(long count) {
    const v5::test::SiteFolder folder("");
    const ComPtr<IDispatch> log = New(FactoryOf(__uuidof(LogFileClass)));
    const Use start = {L"StartLog", {true, true, L"Soak", (folder.Path() + L"\\soak.log").c_str()}},
              line = {L"WriteToLog", {L"analyser 2: calibration drift within limits"}};
    Require(static_cast<bool>(Call(*log.Get(), start)), "a log file");
    Repeat("log lines", count, [&](long) { Call(*log.Get(), line); });
    Require(static_cast<bool>(Call(*log.Get(), {L"IsActive"})), "the log is still open");
    Call(*log.Get(), {L"StopLog"});
}

void PrivilegeChecks(long count) {
    const v5::test::SiteFolder folder("");
    const ComPtr<IDispatch> security = New(FactoryOf(__uuidof(NimboSecurity)));
    const _bstr_t login((L"Data Source=" + folder.Path() + L"\\S1.db;Integrated Security=SSPI").c_str());
    Require(static_cast<bool>(Call(*security.Get(), {L"Setup", {true, L"Soak", L"", login, L"EN", L"S1"}})),
            "a database");
    Call(*security.Get(), {L"EnableSecurity"});
    const Use check = {L"CheckUserPrivilegeLevel", {false, static_cast<long>(V5Strings::RID_DBE_EditNewOccurs)}};
    Repeat("privilege checks", count, [&](long) { Call(*security.Get(), check); });
    Call(*security.Get(), {L"Teardown"});
}

}  // namespace

int main(int argc, char** argv) {
    const long share = argc > 1 ? std::atol(argv[1]) : 1000;
    Require(share > 0 && share <= 1000, "usage: v5soak [THOUSANDTHS]");
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const std::wstring path = ServerPath();
    const auto load = [&](long) { LoadUseAndUnload(path); };
    Repeat("loads and unloads of the DLL", 100, load, kPerLoad);
    Classes(1000 * share);
    SiteReads(100 * share);
    LogLines(1000 * share);
    PrivilegeChecks(100 * share);
    const HMODULE library = GetModuleHandleW(L"V5Strings.dll");
    Require(EntryPoint<CanUnloadNow>(library, "DllCanUnloadNow")(), "the DLL may go after the last release");
    CoFreeUnusedLibrariesEx(0, 0);
    Require(GetModuleHandleW(L"V5Strings.dll") == nullptr, "COM has unloaded the DLL");
    LeaveSlotsToTheProgram(path);
    CoUninitialize();
    std::printf(allWell ? "passed\n" : "FAILED: something grows\n");
    return allWell ? 0 : 1;
}
