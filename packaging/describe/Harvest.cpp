#include "Harvest.h"

#include <windows.h>

#include <iterator>
#include <stdexcept>

namespace v5describe {

namespace {

void Require(bool condition, const char* what) {
    if (!condition) {
        throw std::runtime_error(what);
    }
}

// HKEY_LOCAL_MACHINE stands for an empty scratch key as long as this object lives.
class ScratchMachine {
  public:
    ScratchMachine() {
        RegDeleteTreeW(HKEY_CURRENT_USER, kPath);
        Require(RegCreateKeyExW(HKEY_CURRENT_USER, kPath, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &mKey, nullptr) ==
                    ERROR_SUCCESS,
                "cannot create the scratch key");
        Require(RegOverridePredefKey(HKEY_LOCAL_MACHINE, mKey) == ERROR_SUCCESS, "cannot redirect the registry");
    }
    ~ScratchMachine() {
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegCloseKey(mKey);
        RegDeleteTreeW(HKEY_CURRENT_USER, kPath);
    }
    ScratchMachine(const ScratchMachine&) = delete;
    ScratchMachine& operator=(const ScratchMachine&) = delete;

    HKEY Key() const { return mKey; }

  private:
    static constexpr wchar_t kPath[] = L"Software\\v5describe";
    HKEY mKey = nullptr;
};

void AddEntries(HKEY parent, const std::wstring& name, const std::wstring& path, std::vector<RegistryEntry>& entries) {
    HKEY key = nullptr;
    Require(RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS, "cannot read the scratch key");
    wchar_t text[1024];
    wchar_t data[1024];
    for (DWORD i = 0;; ++i) {
        auto length = static_cast<DWORD>(std::size(text));
        DWORD size = sizeof data;
        DWORD type = 0;
        if (RegEnumValueW(key, i, text, &length, nullptr, &type, reinterpret_cast<BYTE*>(data), &size) !=
            ERROR_SUCCESS) {
            break;
        }
        Require(type == REG_SZ, "the component registers a value that is no text");
        entries.push_back({path, text, data});
    }
    for (DWORD i = 0; RegEnumKeyW(key, i, text, static_cast<DWORD>(std::size(text))) == ERROR_SUCCESS; ++i) {
        AddEntries(key, text, path.empty() ? text : path + L'\\' + text, entries);
    }
    RegCloseKey(key);
}

}  // namespace

std::vector<RegistryEntry> HarvestRegistration(const std::wstring& path) {
    const HMODULE module = LoadLibraryW(path.c_str());
    Require(module != nullptr, "cannot load the component");
    // By way of void*: the type of an exported function is the caller's knowledge.
    const auto registerServer =
        reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(GetProcAddress(module, "DllRegisterServer")));
    Require(registerServer != nullptr, "the component does not register itself");

    std::vector<RegistryEntry> entries;
    const ScratchMachine machine;
    Require(SUCCEEDED(registerServer()), "the component cannot register itself");
    AddEntries(machine.Key(), L"Software\\Classes", L"", entries);
    return entries;
}

}  // namespace v5describe
