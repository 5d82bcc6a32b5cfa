// Installs and removes real installer packages (see tests/packages).
#pragma once

#include <windows.h>
#include <gtest/gtest.h>

#include <string>

namespace v5::test {

inline std::wstring PackagePath(const std::wstring& name) {
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const std::wstring path = program;
    return path.substr(0, path.find_last_of(L'\\')) + L"\\packages\\" + name + L".msi";
}

// Runs the installer without a window and waits for it; its exit code.
inline DWORD RunInstaller(const std::wstring& action, const std::wstring& package) {
    std::wstring command = L"msiexec.exe /qn " + action + L" \"" + PackagePath(package) + L"\"";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
        return GetLastError();
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

// A package that is installed while this lives.
class InstalledPackage {
  public:
    explicit InstalledPackage(std::wstring name) : mName(std::move(name)) {
        EXPECT_EQ(RunInstaller(L"/i", mName), 0u) << "cannot install a package";
    }
    ~InstalledPackage() { EXPECT_EQ(RunInstaller(L"/x", mName), 0u) << "cannot remove a package"; }
    InstalledPackage(const InstalledPackage&) = delete;
    InstalledPackage& operator=(const InstalledPackage&) = delete;

  private:
    std::wstring mName;
};

}  // namespace v5::test
