// A Windows INI file in memory, read once: no section and no key is searched for twice, and nothing is kept but the
// file's bytes and where the wanted sections begin.
//
// The rules are those of the Windows profile functions: sections and keys are compared without regard to case and the
// first of two of a name counts; blanks around names and values, and matching quotes around a value, are dropped;
// lines that start with ";" and lines without "=" hold nothing; a name or value ends at a NUL. Lines end with LF or
// CR LF, or with CR in a file without any LF. The text is in the machine's ANSI code page unless a mark at its start
// says UTF-8 or UTF-16.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config/IniNames.h"

namespace v5 {

class IniFile {
  public:
    // Text from bytes in the machine's ANSI code page, in which ASCII characters stand for themselves.
    using AnsiDecoder = std::function<std::wstring(std::string_view)>;

    // `bytes` is the whole file. Only the sections named in `sections` can be asked for later; time and memory are
    // linear in the size of the file whatever it holds.
    IniFile(std::string bytes, const IniNames& sections, AnsiDecoder decodeAnsi);

    IniFile(const IniFile&) = delete;  // the sections point into the bytes
    IniFile& operator=(const IniFile&) = delete;

    // The values of all keys of one section (by its position in the list of names), still in the file's encoding:
    // `values[i]` is the value of the key at position i of `keys`, or empty when the key or the section is absent.
    void ReadSection(size_t section, const IniNames& keys, std::span<std::string_view> values) const;

    // A value as text.
    std::wstring Decode(std::string_view value) const;

  private:
    void Index(const IniNames& sections);

    std::string mBytes;
    char mLineEnd = '\n';
    bool mIsUtf8 = false;
    AnsiDecoder mDecodeAnsi;
    std::vector<std::string_view> mSections;  // the lines of each wanted section
};

}  // namespace v5
