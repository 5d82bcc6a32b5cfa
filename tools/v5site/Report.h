// What each command prints, and the exit status that it ends with.
#pragma once

#include <string>

#include "CommandLine.h"
#include "SiteClient.h"

namespace v5site {

enum ExitStatus { kFine = 0, kProblems = 1, kNoDahs = 2, kCannotRun = 3 };

struct Report {
    std::wstring output;  // for the standard output
    std::wstring errors;  // for the standard error
    ExitStatus status = kFine;
};

// Reads the site and carries the command out. Throws Error.
Report Run(const CommandLine& line, SiteClient& site);

// A cell of a column: the text, filled up with spaces to the width in characters.
std::wstring Padded(std::wstring text, size_t width);

}  // namespace v5site
