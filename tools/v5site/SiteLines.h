// Where in the site file a finding points to.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace v5site {

class SiteLines {
  public:
    // Reads the file for looking at; a file that cannot be read has no lines.
    explicit SiteLines(const std::wstring& path);

    // The number, from 1, of the line that a finding is about: that of the key that it names, of the section's header
    // where the section has no such key, and 0 where the finding names no section or the file has none of the name.
    size_t LineOf(std::wstring_view finding) const;

  private:
    size_t Find(const std::string& section, const std::string& key) const;

    std::vector<std::string> mLines;
};

}  // namespace v5site
