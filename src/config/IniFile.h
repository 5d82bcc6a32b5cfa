// A Windows INI file in memory, read once: no section and no key is searched for twice, and nothing is kept but the
// file's text and where the wanted sections begin.
//
// The rules are those of the Windows profile functions: sections and keys are compared without regard to case and the
// first of two of a name counts; blanks around names and values, and matching quotes around a value, are dropped;
// lines that start with ";" and lines without "=" hold nothing; a name or value ends at a NUL. Lines end with LF or
// CR LF, or with CR in a file without any LF.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config/IniNames.h"

namespace v5 {

// The lines of a file, for readers that want them all. The end of a line is LineEndOf the whole text; TakeIniLine takes
// the next line off the front of `rest` and drops the blanks around it. A line that starts with "[" and never closes it
// is no header.
wchar_t LineEndOf(std::wstring_view text);
std::wstring_view TakeIniLine(std::wstring_view& rest, wchar_t lineEnd);
bool IsIniHeader(std::wstring_view line, std::wstring_view& name);
bool IsIniSetting(std::wstring_view line, std::wstring_view& key, std::wstring_view& value);

class IniFile {
  public:
    // `text` is the whole file. Only the sections named in `sections` can be asked for later; time and memory are
    // linear in the size of the file whatever it holds.
    IniFile(std::wstring text, const IniNames& sections);

    IniFile(const IniFile&) = delete;  // the sections point into the text
    IniFile& operator=(const IniFile&) = delete;

    // The values of all keys of one section (by its position in the list of names): `values[i]` is the value of the key
    // at position i of `keys`, or empty when the key or the section is absent. They live as long as this object.
    void ReadSection(size_t section, const IniNames& keys, std::span<std::wstring_view> values) const;

  private:
    void Index(const IniNames& sections);

    const std::wstring mText;
    const wchar_t mLineEnd;
    std::vector<std::wstring_view> mSections;  // the lines of each wanted section
};

}  // namespace v5
