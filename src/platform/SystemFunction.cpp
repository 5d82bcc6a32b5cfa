#include "platform/SystemFunction.h"

#include "platform/SystemText.h"

namespace v5 {

FARPROC FindSystemFunction(const wchar_t* library, const char* name) {
    const HMODULE module = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    const FARPROC function = module != nullptr ? GetProcAddress(module, name) : nullptr;
    if (function == nullptr) {
        throw SystemError(HRESULT_FROM_WIN32(GetLastError()));
    }
    return function;
}

}  // namespace v5
