#include "platform/Module.h"

namespace v5 {

HINSTANCE ThisModule() {
    static const int anchor = 0;
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&anchor), &module);
    return module;
}

std::wstring ModulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(ThisModule(), path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);  // the path was cut off
    }
}

std::wstring ModuleFolder() {
    const std::wstring path = ModulePath();
    return path.substr(0, path.find_last_of(L'\\'));
}

}  // namespace v5
