#include "platform/SystemText.h"

#include <iterator>

namespace v5 {

std::wstring SystemText(HRESULT status) {
    wchar_t buffer[512];
    DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, static_cast<DWORD>(status),
                       0, buffer, static_cast<DWORD>(std::size(buffer)), nullptr);
    while (length > 0 && (buffer[length - 1] == L'\n' || buffer[length - 1] == L'\r')) {
        --length;
    }
    if (length == 0) {
        length = static_cast<DWORD>(wsprintfW(buffer, L"Automation error 0x%08X", static_cast<unsigned>(status)));
    }
    return {buffer, length};
}

AutomationError SystemError(HRESULT status) {
    return {static_cast<std::uint32_t>(status), SystemText(status)};
}

}  // namespace v5
