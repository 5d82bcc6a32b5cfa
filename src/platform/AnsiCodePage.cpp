#include "platform/AnsiCodePage.h"

#include <windows.h>

#include <optional>
#include <utility>

#include "base/Utf8.h"

namespace v5 {

void AnsiCodePage::Encode(std::wstring_view text, char* bytes) const {
    const auto length = static_cast<int>(text.size());
    if (WideCharToMultiByte(mCodePage, 0, text.data(), length, bytes, length, nullptr, nullptr) == length) {
        return;
    }
    CodePage::Encode(text, bytes);  // a code page in which some characters take several bytes
}

std::int16_t AnsiCodePage::CodeOf(wchar_t character) const {
    unsigned char bytes[8] = {};  // the longest of any code page: four of UTF-8
    const int length = WideCharToMultiByte(mCodePage, 0, &character, 1, reinterpret_cast<char*>(bytes), sizeof bytes,
                                           nullptr, nullptr);
    if (length > 2) {
        return '?';
    }
    return static_cast<std::int16_t>(length == 2 ? bytes[0] << 8 | bytes[1] : bytes[0]);
}

std::string ToAnsi(std::wstring_view text) {
    const auto length = static_cast<int>(text.size());
    std::string bytes(
        static_cast<size_t>(WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr)), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    return bytes;
}

std::wstring FromAnsi(std::string_view bytes) {
    const auto length = static_cast<int>(bytes.size());
    std::wstring text(static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, text.data(), static_cast<int>(text.size()));
    return text;
}

std::wstring FromTextFile(std::string_view bytes) {
    std::optional<std::wstring> marked = DecodeMarked(bytes);
    return marked ? *std::move(marked) : FromAnsi(bytes);
}

}  // namespace v5
