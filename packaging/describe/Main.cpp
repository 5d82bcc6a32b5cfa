// v5describe manifest|own-rows|shared-rows|classes DLL VERSION 64|32
//
// Prints what a package says about the component: its side-by-side manifest, its installer rows, or the classes of its
// C++ header. All of it comes from the component itself, so that it cannot differ from what the component is. DLL is
// the 64-bit DLL for either width of the package: its class table and type library are those of both.
#include <cstdio>
#include <cwchar>
#include <exception>
#include <stdexcept>
#include <string_view>

#include "Describe.h"

namespace {

// As UTF-8, whatever the console's code page.
void Print(const std::wstring& text) {
    std::string bytes(text.size() * 3, '\0');
    bytes.resize(
        static_cast<size_t>(WideCharToMultiByte(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), bytes.data(),
                                                static_cast<int>(bytes.size()), nullptr, nullptr)));
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) {
        throw std::runtime_error("cannot write the description");
    }
}

std::wstring Describe(std::wstring_view what, const std::wstring& path, const v5describe::Subject& subject) {
    if (what == L"manifest") {
        return AssemblyManifest(subject);
    }
    if (what == L"own-rows" || what == L"shared-rows") {
        return InstallerRows(subject, what == L"shared-rows");
    }
    ITypeLib* library = nullptr;
    if (FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library))) {
        throw std::runtime_error("cannot load the type library");
    }
    return v5describe::ClientClasses(*library);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 5) {
        static_cast<void>(
            std::fputs("usage: v5describe manifest|own-rows|shared-rows|classes DLL VERSION 64|32\n", stderr));
        return 2;
    }
    try {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        wchar_t path[MAX_PATH];
        GetFullPathNameW(arguments[2], MAX_PATH, path, nullptr);
        const v5describe::Subject subject = {v5describe::HarvestRegistration(path), path,
                                             std::wstring(arguments[3]) + L".0",
                                             std::wstring_view(arguments[4]) == L"64"};
        Print(Describe(arguments[1], path, subject));
        return 0;
    } catch (const std::exception& error) {
        static_cast<void>(std::fprintf(stderr, "v5describe: %s\n", error.what()));
        return 1;
    }
}
