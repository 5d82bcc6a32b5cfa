#include "security/UtilityBase64Functions.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace v5 {

namespace {

constexpr std::wstring_view kAlphabet = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::uint8_t kNoDigit = 0xFF;

// What each ASCII character stands for.
constexpr std::array<std::uint8_t, 128> DigitsByCharacter() {
    std::array<std::uint8_t, 128> digits{};
    digits.fill(kNoDigit);
    for (size_t i = 0; i < kAlphabet.size(); ++i) {
        digits[static_cast<size_t>(kAlphabet[i])] = static_cast<std::uint8_t>(i);
    }
    return digits;
}
constexpr auto kDigits = DigitsByCharacter();

std::uint32_t SixBits(wchar_t c) {
    const auto code = static_cast<std::uint32_t>(c);
    const std::uint8_t digit = code < kDigits.size() ? kDigits[code] : kNoDigit;
    if (digit == kNoDigit) {
        throw Base64Error("Illegal character in Base64 encoded data.");
    }
    return digit;
}

size_t PaddingOf(std::wstring_view text) {
    if (text.ends_with(L"==")) {
        return 2;
    }
    return text.ends_with(L'=') ? 1 : 0;
}

}  // namespace

std::wstring EncodeBase64(std::string_view bytes) {
    std::wstring text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (size_t k = 0; k < 3; ++k) {
            const auto byte = i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0u;
            group = group << 8 | byte;
        }
        const size_t digits = std::min<size_t>(4, bytes.size() - i + 1);
        for (size_t k = 0; k < 4; ++k) {
            text += k < digits ? kAlphabet[group >> (18 - 6 * k) & 0x3F] : L'=';
        }
    }
    return text;
}

std::string DecodeBase64(std::wstring_view text) {
    if (text.size() % 4 != 0) {
        throw Base64Error("Length of Base64 encoded input string is not a multiple of 4.");
    }
    const size_t padding = PaddingOf(text);
    text.remove_suffix(padding);
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    std::uint32_t bits = 0;
    size_t count = 0;
    for (const wchar_t c : text) {
        bits = bits << 6 | SixBits(c);
        if (++count % 4 != 1) {  // every digit but a group's first completes a byte
            const size_t left = 6 - 2 * ((count - 1) % 4);
            bytes += static_cast<char>(bits >> left & 0xFF);
        }
    }
    return bytes;
}

}  // namespace v5
