// The module that this code is linked into: V5Strings.dll, or a test program.
#pragma once

#include <windows.h>

#include <string>

namespace v5 {

HINSTANCE ThisModule();

// Full path of the module's file, and of the folder that holds it (without a trailing backslash).
std::wstring ModulePath();
std::wstring ModuleFolder();

}  // namespace v5
