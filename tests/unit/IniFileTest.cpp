#include "config/IniFile.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

#include "unit/FakeSiteHost.h"

namespace v5 {

namespace {

constexpr std::array<std::wstring_view, 2> kSections = {L"Dahs1", L"Dahs2"};
constexpr std::array<std::wstring_view, 2> kKeys = {L"SiteID", L"HDR"};

// The value of key SiteID in section Dahs1.
std::wstring SiteIdIn(std::string_view bytes) {
    const IniNames sections(kSections);
    const IniNames keys(kKeys);
    const IniFile file(FakeSiteHost::Decoded(bytes), sections);
    std::array<std::wstring_view, 2> values = {L"of another section", L""};
    file.ReadSection(0, keys, values);
    return std::wstring(values[0]);
}

std::string Utf16(std::u16string_view text, bool bigEndian) {
    std::string bytes;
    for (const char16_t unit : u"\uFEFF" + std::u16string(text)) {
        bytes += static_cast<char>(bigEndian ? unit >> 8 : unit);
        bytes += static_cast<char>(bigEndian ? unit : unit >> 8);
    }
    return bytes;
}

}  // namespace

TEST(IniFile, ProfileRules) {
    struct Case {
        const char* name;
        std::string bytes;
        const wchar_t* value;
    };
    using std::string_literals::operator""s;
    const Case cases[] = {
        {"no header without its first bracket", "[Dahs1]\nxDahs2]\nSiteID=AB\n", L"AB"},
        {"blanks around names and values", "  [ Dahs1\t] \n \tSiteID  =\t AB \n", L"AB"},
        {"text after the header", "[Dahs1] ; first\nSiteID=AB\n", L"AB"},
        {"inner blanks and equals signs", "[Dahs1]\nSiteID=A  B=C;D\n", L"A  B=C;D"},
        {"double quotes", "[Dahs1]\nSiteID=\" AB \"\n", L" AB "},
        {"single quotes", "[Dahs1]\nSiteID='AB'\n", L"AB"},
        {"quotes that do not match", "[Dahs1]\nSiteID='AB\"\n", L"'AB\""},
        {"one quote", "[Dahs1]\nSiteID=\"\n", L"\""},
        {"only one pair of quotes", "[Dahs1]\nSiteID=''AB''\n", L"'AB'"},
        {"comment", "[Dahs1]\n;SiteID=AB\n ; SiteID=AB\nSiteID=CD\n", L"CD"},
        {"first key wins", "[Dahs1]\nSiteID=AB\nSiteID=CD\n", L"AB"},
        {"a blank first key wins too", "[Dahs1]\nSiteID=\nSiteID=CD\n", L""},
        {"first section wins", "[Dahs1]\nHDR=1\n[Dahs2]\n[Dahs1]\nSiteID=CD\n", L""},
        {"other sections", "[Dahs]\nSiteID=X\n[Dahs11]\nSiteID=Y\n[Dahs1]\nSiteID=AB\n", L"AB"},
        {"no section yet", "SiteID=X\n[Dahs2]\nSiteID=Y\n", L""},
        {"no equals sign", "[Dahs1]\nSiteID\nSiteID AB\n", L""},
        {"header without end", "[Dahs1\nSiteID=X\n", L""},
        {"header ends at the last bracket", "[Dahs1]]\nSiteID=X\n", L""},
        {"CR alone", "[Dahs1]\rSiteID=AB\rHDR=1", L"AB"},
        {"old end-of-file mark", "[Dahs1]\r\nSiteID=AB\r\n\x1A", L"AB"},
        {"NUL ends a value", "[Dahs1]\nSiteID=A\0B\n"s, L"A"},
        {"NULs elsewhere", "\0\0\n[\0]\n[Dahs1]\n\0=\0\nSiteID=AB\n"s, L"AB"},
        {"empty", "", L""},
        {"a bracket in a character", Utf16(u"[Dahs1] ;\u305D\u5D5D\nSiteID=AB", false), L"AB"},
        {"UTF-8", "\xEF\xBB\xBF[Dahs1]\nSiteID=\xC3\xA9\xE2\x82\xAC\n", L"\u00E9\u20AC"},
        {"UTF-8 that is none", "\xEF\xBB\xBF[Dahs1]\nSiteID=a\xC3(\xFF\xE2\x82\n", L"a\uFFFD(\uFFFD\uFFFD\uFFFD"},
        {"UTF-16, big end first", Utf16(u"[Dahs1]\r\nSiteID=\u0416\u20AC", true), L"\u0416\u20AC"},
        {"UTF-16, odd length", Utf16(u"[Dahs1]\r\nSiteID=AB", false) + "\n", L"AB"},
        {"UTF-16 beyond the basic plane", Utf16(u"[Dahs1]\r\nSiteID=\U0001F3ED", false), L"\U0001F3ED"},
        {"UTF-16, half a pair", Utf16(u"[Dahs1]\r\nSiteID=\xD83CZ", false), L"\xD83CZ"}};
    for (const Case& c : cases) {
        EXPECT_EQ(SiteIdIn(c.bytes), c.value) << c.name;
    }
}

TEST(IniFile, NamesAreFoundWithoutRegardToCaseAndToNothingElse) {
    constexpr std::array<std::wstring_view, 4> kNames = {L"SQLData", L"SQLData.NET", L"a@b[c", L"x"};
    const IniNames names(kNames);
    EXPECT_EQ(names.Find(L"sqldata"), 0u);
    EXPECT_EQ(names.Find(L"SQLDATA.net"), 1u);
    EXPECT_EQ(names.Find(L"A@B[C"), 2u);
    for (const wchar_t* other : {L"a`b[c", L"a@b{c", L"SQLDat", L"SQLDataX", L"", L"SQLData.NE\x14"}) {
        EXPECT_EQ(names.Find(other), IniNames::kNone) << other;
    }
}

// Long files of a single kind of mark are read in a time that grows with their length alone. (Random marks are the fuzz
// target's.)
TEST(IniFile, NoiseIsHarmless) {
    constexpr size_t kLong = 500'000;
    for (const std::string unit :
         {"[", "[Dahs1]\n", "[x]\r\n", "=", "SiteID=\n", " ", "\r", "\n", "\"", "]", "a=b\n"}) {
        std::string bytes = "[Dahs1]\nSiteID=AB\n";
        while (bytes.size() < kLong) {
            bytes += unit;
        }
        EXPECT_EQ(SiteIdIn(bytes), L"AB") << unit;
    }
}

}  // namespace v5
