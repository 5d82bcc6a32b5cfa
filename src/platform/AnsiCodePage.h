// The system's ANSI code page.
#pragma once

#include <string>
#include <string_view>

#include "base/CodePage.h"

namespace v5 {

class AnsiCodePage final : public CodePage {
  public:
    // Another code page than the system's own (0) by its number.
    explicit AnsiCodePage(unsigned codePage = 0) : mCodePage(codePage) {}

    std::int16_t CodeOf(wchar_t character) const override;
    void Encode(std::wstring_view text, char* bytes) const override;

  private:
    unsigned mCodePage;
};

// Text in and out of the code page. A character that it lacks becomes a similar one or "?".
std::string ToAnsi(std::wstring_view text);
std::wstring FromAnsi(std::string_view bytes);

// The text of a file: UTF-8 or UTF-16 when its first bytes are a mark that says so, else in the code page.
std::wstring FromTextFile(std::string_view bytes);

}  // namespace v5
