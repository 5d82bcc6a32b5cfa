// The boxed header with which a titled log run begins.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Dates.h"

namespace v5 {

class LogHost;

// The header's twelve lines: ten of text between two of asterisks, all equally wide. What the host throws while it is
// asked for releases and names reaches the caller.
std::vector<std::wstring> LogHeader(const LogHost& host, std::wstring_view title, const CivilDateTime& now,
                                    std::wstring_view filename);

}  // namespace v5
