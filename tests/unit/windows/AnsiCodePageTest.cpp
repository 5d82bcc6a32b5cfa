#include "platform/AnsiCodePage.h"

#include <gtest/gtest.h>

#include <tuple>

namespace v5 {

TEST(AnsiCodePage, OneByteForEachUnitInEveryCodePage) {
    const std::tuple<unsigned, std::wstring, std::string> rows[] = {
        {1252, L"\u00B5g/m\u00B3 \u20AC", "\xB5g/m\xB3 \x80"},
        {1252, L"a\u65E5b", "a?b"},
        {1252, {L'a', 0xD83D, 0xDE00, L'b'}, "a??b"},
        {1252, {L'a', 0xDE00, L'b'}, "a?b"},            // half of a pair
        {932, L"a\u65E5\\b \uFF8A", "a?\\b \xCA"},      // two bytes; one byte beyond ASCII
        {65001, L"12 \u00B5g \u65E5", "12 ?g ?"},       // two and three bytes
        {65001, {L'a', 0xD83D, 0xDE00, L'b'}, "a??b"},  // four bytes for two units
        {1252, L"", ""}};
    for (const auto& [codePage, text, expected] : rows) {
        std::string bytes(text.size() + 1, '#');
        AnsiCodePage(codePage).Encode(text, bytes.data());
        EXPECT_EQ(bytes, expected + "#") << codePage;
    }
}

}  // namespace v5
