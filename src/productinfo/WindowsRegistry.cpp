#include "productinfo/WindowsRegistry.h"

#include <windows.h>

#include <utility>

namespace v5 {
namespace {

HKEY RootKey(RegistryRoot root) {
    switch (root) {
        case RegistryRoot::ClassesRoot:
            return HKEY_CLASSES_ROOT;
        case RegistryRoot::LocalMachine:
            return HKEY_LOCAL_MACHINE;
        case RegistryRoot::CurrentUser:
            break;
    }
    return HKEY_CURRENT_USER;
}

}  // namespace

std::optional<std::wstring> WindowsRegistry::ReadText(RegistryRoot root, std::wstring_view key,
                                                      std::wstring_view value) const {
    const std::wstring keyName(key);
    const std::wstring valueName(value);
    std::wstring text(256, L'\0');
    LSTATUS status = ERROR_MORE_DATA;
    while (status == ERROR_MORE_DATA) {
        auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        status = RegGetValueW(RootKey(root), keyName.c_str(), valueName.c_str(), RRF_RT_REG_SZ, nullptr, text.data(),
                              &bytes);
        text.resize(status == ERROR_MORE_DATA ? text.size() * 2 : bytes / sizeof(wchar_t));
    }
    if (status != ERROR_SUCCESS) {
        return std::nullopt;
    }
    text.resize(text.find(L'\0') == std::wstring::npos ? text.size() : text.find(L'\0'));  // the count includes it
    return text;
}

}  // namespace v5
