// What a Windows is called, from what it says about itself.
#pragma once

#include <cstdint>
#include <string>

namespace v5 {

// As the kernel reports it (which, unlike the old version call, does not depend on the program that asks) and as the
// registry describes it under SOFTWARE\Microsoft\Windows NT\CurrentVersion.
struct WindowsVersion {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t build = 0;
    std::uint32_t revision = 0;  // registry UBR; 0 when it has none
    bool isServer = false;
    bool is64Bit = false;         // the system, not this process
    std::wstring productName;     // registry ProductName, such as "Windows 10 Pro"; may be empty
    std::wstring displayVersion;  // registry DisplayVersion or ReleaseId, such as "23H2"; may be empty
    std::wstring servicePack;     // such as "Service Pack 1"; may be empty
};

// One line with edition, version, build and width, such as
// "Microsoft Windows 11 Pro, version 23H2 (10.0.22631.3007), 64-bit".
std::wstring DescribeWindows(const WindowsVersion& version);

}  // namespace v5
