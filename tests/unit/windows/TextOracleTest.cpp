// Upper and lower case against the platform's own, for every UTF-16 unit.
#include <windows.h>

#include <gtest/gtest.h>

#include "base/Text.h"

namespace v5 {

TEST(TextOracle, CaseAgreesWithThePlatformForEveryUnit) {
    const struct {
        DWORD flags;
        wchar_t (*map)(wchar_t);
    } directions[] = {{LCMAP_UPPERCASE, ToUpper}, {LCMAP_LOWERCASE, ToLower}};
    for (const auto& direction : directions) {
        for (unsigned code = 1; code <= 0xFFFF; ++code) {
            const auto unit = static_cast<wchar_t>(code);
            wchar_t expected = 0;
            ASSERT_EQ(LCMapStringW(LOCALE_INVARIANT, direction.flags, &unit, 1, &expected, 1), 1) << code;
            EXPECT_EQ(direction.map(unit), expected) << code;
        }
    }
}

}  // namespace v5
