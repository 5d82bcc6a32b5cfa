// What each command prints, and the exit status that it ends with.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "CommandLine.h"
#include "Settings.h"

namespace v5site {

enum ExitStatus { Fine = 0, Problems = 1, NoDahs = 2, CannotRun = 3 };

struct Report {
    std::wstring output;  // for the standard output
    std::wstring errors;  // for the standard error
    ExitStatus status = Fine;
};

// Carries the command out. Throws Error.
Report Run(const CommandLine& line);

// Messages for the standard error, a line each.
std::wstring MessageLines(const std::vector<std::wstring>& messages);

// A table of columns as wide as their widest cell; the first row is the heading.
std::wstring TableOf(const std::vector<std::vector<std::wstring>>& rows);

// The findings that are about one DAHS, passwords masked.
std::vector<std::wstring> FindingsOn(const v5::Site& site, std::int32_t dahsID);

// A cell of a column: the text, filled up with spaces to the width in characters.
std::wstring Padded(std::wstring text, size_t width);

}  // namespace v5site
