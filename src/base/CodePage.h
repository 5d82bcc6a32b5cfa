// The system's ANSI code page: a port, because the code page belongs to the machine.
#pragma once

#include <cstdint>
#include <string_view>

namespace v5 {

class CodePage {
  public:
    virtual ~CodePage() = default;

    // The code of a character as a 16-bit integer: 0 to 255, and in a double-byte code page lead byte times 256 plus
    // trail byte, which is negative. A character outside the code page gets the code of its substitute ("?").
    virtual std::int16_t CodeOf(wchar_t character) const = 0;

    // Writes exactly one byte for each unit of `text` to `bytes`, which has room for text.size() of them. A character
    // that the code page lacks, or for which it needs several bytes, becomes "?" (two when it is a surrogate pair), so
    // that the columns of a line stay where they are.
    virtual void Encode(std::wstring_view text, char* bytes) const {
        for (const wchar_t c : text) {
            const std::int16_t code = CodeOf(c);
            *bytes++ = code >= 0 && code <= 0xFF ? static_cast<char>(code) : '?';
        }
    }
};

}  // namespace v5
