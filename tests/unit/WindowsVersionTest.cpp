#include "base/WindowsVersion.h"

#include <gtest/gtest.h>

namespace v5 {

TEST(WindowsVersion, IsDescribedInOneLine) {
    const std::pair<WindowsVersion, const wchar_t*> rows[] = {
        {{6, 1, 7601, 0, false, true, L"Windows 7 Professional", L"", L"Service Pack 1"},
         L"Microsoft Windows 7 Professional Service Pack 1 (6.1.7601), 64-bit"},
        {{10, 0, 19045, 3803, false, false, L"Windows 10 Pro", L"22H2", L""},
         L"Microsoft Windows 10 Pro, version 22H2 (10.0.19045.3803), 32-bit"},
        {{10, 0, 22000, 3007, false, true, L"Windows 10 Pro", L"21H2", L""},
         L"Microsoft Windows 11 Pro, version 21H2 (10.0.22000.3007), 64-bit"},
        {{10, 0, 26100, 1, true, true, L"Windows Server 2025 Standard", L"24H2", L""},
         L"Microsoft Windows Server 2025 Standard, version 24H2 (10.0.26100.1), 64-bit"},
        {{10, 0, 22000, 0, false, true, L"", L"", L""}, L"Microsoft Windows (10.0.22000), 64-bit"},
        {{6, 0, 6002, 0, false, false, L"Microsoft Windows Vista", L"", L""},
         L"Microsoft Windows Vista (6.0.6002), 32-bit"}};
    for (const auto& [version, text] : rows) {
        EXPECT_EQ(DescribeWindows(version), text);
    }
}

}  // namespace v5
