#include "base/Utf8.h"

namespace v5 {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}
char32_t Join(char32_t high, char32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}
bool IsCharacter(char32_t code) {
    return code <= 0x10FFFF && !IsHighSurrogate(code) && !IsLowSurrogate(code);
}

void AppendUtf8(char32_t code, std::string& out) {
    const auto continuation = [&](int shift) { out += static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        continuation(0);
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | (code >> 12));
        continuation(6);
        continuation(0);
    } else {
        out += static_cast<char>(0xF0 | (code >> 18));
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

void AppendWide(char32_t code, std::wstring& out) {
    if (sizeof(wchar_t) == 2 && code >= 0x10000) {
        out += static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
        out += static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
    } else {
        out += static_cast<wchar_t>(code);
    }
}

// Takes one character off the front of `bytes`; nothing when they start with no UTF-8 sequence.
std::optional<char32_t> TakeUtf8(std::string_view& bytes) {
    struct Form {
        unsigned leadMask, lead, minimum;
        size_t length;
    };
    constexpr Form kForms[] = {
        {0x80, 0x00, 0, 1}, {0xE0, 0xC0, 0x80, 2}, {0xF0, 0xE0, 0x800, 3}, {0xF8, 0xF0, 0x10000, 4}};
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const auto decode = [&](const Form& form) -> std::optional<char32_t> {
        if ((byte(0) & form.leadMask) != form.lead || bytes.size() < form.length) {
            return std::nullopt;
        }
        char32_t code = byte(0) & ~form.leadMask;
        for (size_t i = 1; i < form.length; ++i) {
            if ((byte(i) & 0xC0) != 0x80) {
                return std::nullopt;
            }
            code = (code << 6) | (byte(i) & 0x3F);
        }
        return code >= form.minimum && IsCharacter(code) ? std::optional<char32_t>(code) : std::nullopt;
    };
    for (const Form& form : kForms) {
        if (const auto code = decode(form)) {
            bytes.remove_prefix(form.length);
            return code;
        }
    }
    return std::nullopt;
}

// Hands on the characters of `count` units of UTF-16 (characters, where wide ones have 32 bits), which `unit` gives by
// their index; half a surrogate pair as it is.
template <class UnitAt, class Take>
void ForEachCharacter(size_t count, UnitAt unit, Take take) {
    for (size_t i = 0; i < count; ++i) {
        const bool isPair = IsHighSurrogate(unit(i)) && i + 1 < count && IsLowSurrogate(unit(i + 1));
        take(isPair ? Join(unit(i), unit(i + 1)) : unit(i));
        i += isPair ? 1 : 0;
    }
}

// The text of UTF-16 bytes; `lowByte` is the place of a unit's lower byte, 0 or 1.
std::wstring FromUtf16(std::string_view bytes, size_t lowByte) {
    const auto unit = [&](size_t i) -> char32_t {
        return static_cast<unsigned char>(bytes[2 * i + lowByte]) |
               (static_cast<char32_t>(static_cast<unsigned char>(bytes[2 * i + 1 - lowByte])) << 8);
    };
    std::wstring text;
    text.reserve(bytes.size() / 2);
    ForEachCharacter(bytes.size() / 2, unit, [&](char32_t code) { AppendWide(code, text); });
    return text;
}

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LittleEndianMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigEndianMark = "\xFE\xFF";

}  // namespace

std::string ToUtf8(std::wstring_view text) {
    const auto unit = [&](size_t i) { return static_cast<char32_t>(text[i]); };
    std::string out;
    out.reserve(text.size());
    ForEachCharacter(text.size(), unit,
                     [&](char32_t code) { AppendUtf8(IsCharacter(code) ? code : kReplacement, out); });
    return out;
}

std::wstring FromUtf8(std::string_view bytes) {
    bytes.remove_prefix(bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0);
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        if (static_cast<unsigned char>(bytes.front()) < 0x80) {  // nearly all of a file
            text += static_cast<wchar_t>(bytes.front());
            bytes.remove_prefix(1);
            continue;
        }
        std::string_view rest = bytes;
        if (const auto code = TakeUtf8(rest)) {
            AppendWide(*code, text);
            bytes = rest;
        } else {
            text += static_cast<wchar_t>(kReplacement);
            bytes.remove_prefix(1);
        }
    }
    return text;
}

std::optional<std::wstring> DecodeMarked(std::string_view bytes) {
    if (bytes.starts_with(kUtf8Mark)) {
        return FromUtf8(bytes);
    }
    if (bytes.starts_with(kUtf16LittleEndianMark)) {
        return FromUtf16(bytes.substr(kUtf16LittleEndianMark.size()), 0);
    }
    if (bytes.starts_with(kUtf16BigEndianMark)) {
        return FromUtf16(bytes.substr(kUtf16BigEndianMark.size()), 1);
    }
    return std::nullopt;
}

}  // namespace v5
