// The site file as its author sees it: lines. For telling which line a finding is about, and what the programs pass
// over without a word.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace v5site {

// Something in the file that programs ignore or take otherwise than its author may think.
struct Remark {
    size_t line = 0;  // from 1
    std::wstring section, key;
    std::wstring text;
};

class SiteText {
  public:
    // `text` is the whole file.
    explicit SiteText(std::wstring text);
    SiteText(const SiteText&) = delete;  // the lines point into the text
    SiteText& operator=(const SiteText&) = delete;

    // The number, from 1, of the line that a finding is about: that of the key that it names, of the section's header
    // where the section has no such key, and 0 where the finding names no section or the file has none of the name.
    size_t LineOf(std::wstring_view finding) const;

    // In the order of their lines.
    std::vector<Remark> Remarks() const;

    // The identifiers, 1 to 99, of the DAHSes that have a section, in ascending order.
    std::vector<std::int32_t> DahsIds() const;

  private:
    enum class Kind { Setting, Stray };  // a line of a section: with or without "="
    struct Line {
        size_t number;
        Kind kind;
        std::wstring_view key, value;
    };
    struct Section {
        size_t number;  // of the header's line; 0: what stands before the first header
        std::wstring_view name;
        std::vector<Line> lines;
    };

    const Section* FindSection(std::wstring_view name) const;

    const std::wstring mText;
    std::vector<Section> mSections;
};

// The identifier of the DAHS that a finding is about; 0 when it is about none.
std::int32_t DahsOf(std::wstring_view finding);

}  // namespace v5site
