// From CoCreateInstance to the first answered call, the DLL loaded anew each time, and what loading it takes of the
// process's memory, against a class that does nothing in a DLL that is built the same way and registered in the same
// place.
#include <string>
#include <vector>

#include "V5Strings.h"
#include "bench/Bench.h"
#include "bench/windows/Com.h"
#include "bench/windows/nothing/Nothing.h"

namespace v5::bench {
namespace {

// In a run: few, since the system answers now fast, now slow, for tens of them in a row. All runs together stay below
// the number of loads after which a 32-bit DLL stays loaded (see StayWhereSlotsAreScarce).
constexpr int kStarts = 5;

// The do-nothing class in the registry, as long as this object lives. Its DLL lies beside this program.
class NothingRegistered {
  public:
    NothingRegistered() {
        wchar_t program[MAX_PATH], id[40];
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        const std::wstring path = program;
        mDll = path.substr(0, path.rfind(L'\\')) + L"\\v5nothing.dll";
        StringFromGUID2(kNothing, id, 40);
        mKey = std::wstring(L"Software\\Classes\\CLSID\\") + id;
        const std::wstring server = mKey + L"\\InprocServer32";
        const std::pair<const wchar_t*, std::wstring> values[] = {{nullptr, mDll}, {L"ThreadingModel", L"Apartment"}};
        for (const auto& [name, text] : values) {
            const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
            Check(RegSetKeyValueW(HKEY_LOCAL_MACHINE, server.c_str(), name, REG_SZ, text.c_str(), size) == 0,
                  "registering the class");
        }
    }
    const std::wstring& Dll() const { return mDll; }
    ~NothingRegistered() { RegDeleteTreeW(HKEY_LOCAL_MACHINE, mKey.c_str()); }
    NothingRegistered(const NothingRegistered&) = delete;
    NothingRegistered& operator=(const NothingRegistered&) = delete;

  private:
    std::wstring mDll, mKey;
};

std::wstring OurDll() {
    const auto object = Create<_FootnoteList>(L"V5Strings.FootnoteList");
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(GetModuleHandleW(L"V5Strings.dll"), path, MAX_PATH);
    return path;
}

// `dll` has the whole path: for a mere name, the loader would search the folders of the system.
void StartAndCall(REFCLSID clsid, const std::wstring& dll, bool isLateBound) {
    for (int i = 0; i < kStarts; ++i) {
        {
            ComPtr<_FootnoteList> object;
            Check(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), "CoCreateInstance");
            long count = -1;
            if (isLateBound) {
                count = Call(object.Get(), L"Count");
            } else {
                Check(object->get_Count(&count), "get_Count");
            }
            Check(count == 0 && GetModuleHandleW(dll.c_str()) != nullptr, "the answer");
        }
        CoFreeUnusedLibrariesEx(0, 0);
        Check(GetModuleHandleW(dll.c_str()) == nullptr, "unloading the DLL");
    }
}

// The bytes that the process alone has: writable memory of its own, heaps and the data of its modules included.
double PrivateBytes() {
    MEMORY_BASIC_INFORMATION region;
    size_t bytes = 0;
    const char* at = nullptr;
    while (VirtualQuery(at, &region, sizeof region) == sizeof region) {
        constexpr DWORD kWritable = PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
        const bool isOwn = region.State == MEM_COMMIT && (region.Type == MEM_PRIVATE || region.Type == MEM_IMAGE);
        bytes += isOwn && (region.Protect & kWritable) != 0 ? region.RegionSize : 0;
        at = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
    }
    return static_cast<double>(bytes);
}

// What the process has more while it holds an object of each class.
double BytesFor(const std::vector<CLSID>& classes) {
    const double before = PrivateBytes();
    std::vector<ComPtr<IDispatch>> objects;
    for (const CLSID& clsid : classes) {
        objects.emplace_back();
        Check(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&objects.back())),
              "CoCreateInstance");
    }
    const double bytes = PrivateBytes() - before;
    objects.clear();
    CoFreeUnusedLibrariesEx(0, 0);
    return bytes;
}

void Start(Table& table) {
    const NothingRegistered registered;
    const std::wstring dll = OurDll();
    for (const bool isLateBound : {false, true}) {
        table.Compare(
            {.name = std::string("start: CoCreateInstance to the first answer") + (isLateBound ? ", late-bound" : "") +
                     " / a class that does nothing",
             .goal = 1.2,
             .runs = 30,
             .operations = kStarts},
            [&] { StartAndCall(__uuidof(FootnoteList), dll, isLateBound); },
            [&] { StartAndCall(kNothing, registered.Dll(), isLateBound); });
    }
    const double peers = BytesFor({kNothing});
    table.Add({.name = "memory: the DLL and an object of each class / a class that does nothing",
               .goal = 4,
               .operations = 1024,
               .unit = "KB"},
              BytesFor({__uuidof(NimboStringsMain), __uuidof(LogFileClass), __uuidof(NimboErrorNumbers),
                        __uuidof(DahsIniMain), __uuidof(DahsIniEntries), __uuidof(DahsIniEntry),
                        __uuidof(NimboSecurity), __uuidof(NimboHelp), __uuidof(FootnoteList), __uuidof(Footnote)}),
              peers);
}

const Benchmark registered("start", Start);

}  // namespace
}  // namespace v5::bench
