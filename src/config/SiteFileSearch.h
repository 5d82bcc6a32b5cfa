// Where the site file lies.
#pragma once

#include <string>
#include <string_view>

#include "config/SiteHost.h"

namespace v5 {

// The folder above a path, by its text alone: without its last part and the separator before it, but with the
// separator of a drive's root ("C:\a" gives "C:\"). Empty for a root, a share's first part and a single name. Always
// shorter than `path`, so that walking up ends.
std::wstring ParentFolder(std::wstring_view path);

// A folder and a name joined by a backslash, if the folder does not end in a separator yet.
std::wstring JoinPath(std::wstring_view folder, std::wstring_view name);

// The full path of "Vantor5.INI" in a folder or the nearest of its parents; empty when none has it. A start that is a
// file, or no longer exists but for its parent, stands for its parent; any other start for the library's own folder.
std::wstring FindSiteFile(const std::wstring& start, const SiteHost& host);

}  // namespace v5
