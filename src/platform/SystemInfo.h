// What this computer is called and what it runs.
#pragma once

#include <string>

namespace v5 {

// The local computer's name (NetBIOS form); empty when the system does not tell.
std::wstring LocalComputerName();

// The operating system in one line: edition, version, build and width (see log/WindowsVersion.h).
std::wstring OperatingSystemText();

}  // namespace v5
