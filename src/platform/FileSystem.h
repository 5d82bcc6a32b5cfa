// Whether paths exist.
#pragma once

#include <string>

namespace v5 {

// Whether the path names an existing folder, or an existing file that is no folder. Never fail.
bool FolderExists(const std::wstring& path);
bool FileExists(const std::wstring& path);

}  // namespace v5
