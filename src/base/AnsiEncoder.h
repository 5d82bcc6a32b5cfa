// Text in the system's ANSI code page: a port, because the code page belongs to the machine.
#pragma once

#include <string_view>

namespace v5 {

// The system's ANSI code page.
class AnsiEncoder {
  public:
    virtual ~AnsiEncoder() = default;

    // Writes exactly one byte for each unit of `text` to `bytes`, which has room for text.size() of them. A character
    // that the code page lacks, or for which it needs several bytes, becomes "?" (two when it is a surrogate pair), so
    // that the columns of a line stay where they are.
    virtual void Encode(std::wstring_view text, char* bytes) const = 0;
};

}  // namespace v5
