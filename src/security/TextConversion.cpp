#include "security/TextConversion.h"

#include <cstdint>

namespace v5 {

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(std::uint32_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
bool IsLowSurrogate(std::uint32_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

// Reads one character at `i`, which moves past it.
std::uint32_t NextCharacter(std::wstring_view text, size_t& i) {
    const auto first = static_cast<std::uint32_t>(text[i++]);
    if (IsHighSurrogate(first) && i < text.size() && IsLowSurrogate(static_cast<std::uint32_t>(text[i]))) {
        const auto second = static_cast<std::uint32_t>(text[i++]);
        return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
    }
    const bool alone = IsHighSurrogate(first) || IsLowSurrogate(first) || first > 0x10FFFF;
    return alone ? kReplacement : first;
}

// The lead byte's marker, its payload mask and the smallest character for sequences of 1 to 4 bytes.
struct SequenceForm {
    std::uint32_t leadMark;
    std::uint32_t leadMask;
    std::uint32_t smallest;
};
constexpr SequenceForm kForms[] = {{0x00, 0x7F, 0}, {0xC0, 0x1F, 0x80}, {0xE0, 0x0F, 0x800}, {0xF0, 0x07, 0x10000}};

void AppendUtf8(std::string& bytes, std::uint32_t c) {
    size_t extra = 3;
    while (c < kForms[extra].smallest) {
        --extra;
    }
    bytes += static_cast<char>(kForms[extra].leadMark | c >> (6 * extra));
    for (; extra > 0; --extra) {
        bytes += static_cast<char>(0x80 | (c >> (6 * (extra - 1)) & 0x3F));
    }
}

// Reads one character at `i`, which moves past it, or past one byte of a malformed sequence.
std::uint32_t NextUtf8(std::string_view bytes, size_t& i) {
    const auto at = [&](size_t k) { return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[k])); };
    const size_t start = i++;
    for (size_t extra = 0; extra < 4; ++extra) {
        const SequenceForm& form = kForms[extra];
        if ((at(start) & ~form.leadMask) != form.leadMark) {
            continue;
        }
        std::uint32_t c = at(start) & form.leadMask;
        for (size_t k = 1; k <= extra; ++k) {
            if (start + k >= bytes.size() || (at(start + k) & 0xC0) != 0x80) {
                return kReplacement;
            }
            c = c << 6 | (at(start + k) & 0x3F);
        }
        if (c < form.smallest || c > 0x10FFFF || IsHighSurrogate(c) || IsLowSurrogate(c)) {
            return kReplacement;
        }
        i = start + extra + 1;
        return c;
    }
    return kReplacement;
}

void AppendCharacter(std::wstring& text, std::uint32_t c) {
    if (sizeof(wchar_t) == 2 && c >= 0x10000) {
        text += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
        text += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
    } else {
        text += static_cast<wchar_t>(c);
    }
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (size_t i = 0; i < text.size();) {
        AppendUtf8(bytes, NextCharacter(text, i));
    }
    return bytes;
}

std::wstring FromUtf8(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.remove_prefix(3);
    }
    std::wstring text;
    text.reserve(bytes.size());
    for (size_t i = 0; i < bytes.size();) {
        if (static_cast<unsigned char>(bytes[i]) < 0x80) {
            text += static_cast<wchar_t>(bytes[i++]);  // nearly all of a document
        } else {
            AppendCharacter(text, NextUtf8(bytes, i));
        }
    }
    return text;
}

}  // namespace v5
