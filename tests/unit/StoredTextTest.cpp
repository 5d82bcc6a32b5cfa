// Base64, UTF-8 and what is checked before a stored text is parsed.
#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cwchar>

#include "base/Utf8.h"
#include "security/SecuritySite.h"
#include "security/UtilityBase64Functions.h"

namespace v5 {

namespace {

std::string DecodingError(std::wstring_view text) {
    try {
        DecodeBase64(text);
        return "none";
    } catch (const Base64Error& error) {
        return error.what();
    }
}

}  // namespace

TEST(Base64, VectorsOfRfc4648) {
    const std::wstring texts[] = {L"", L"Zg==", L"Zm8=", L"Zm9v", L"Zm9vYg==", L"Zm9vYmE=", L"Zm9vYmFy"};
    for (size_t length = 0; length < std::size(texts); ++length) {
        EXPECT_EQ(EncodeBase64(std::string("foobar").substr(0, length)), texts[length]);
        EXPECT_EQ(DecodeBase64(texts[length]), std::string("foobar").substr(0, length));
    }
    EXPECT_EQ(EncodeBase64("\xFF\xEF\xBE"), L"/+++");
    EXPECT_EQ(DecodeBase64(L"/+++AAAA"), std::string("\xFF\xEF\xBE\0\0\0", 6));
}

TEST(Base64, ErrorTexts) {
    const std::string length = "Length of Base64 encoded input string is not a multiple of 4.";
    const std::string character = "Illegal character in Base64 encoded data.";
    EXPECT_EQ(DecodingError(L"Zm9vY"), length);
    EXPECT_EQ(DecodingError(L"?"), length);
    for (const wchar_t* text : {L"Zm9?", L"Zg==Zg==", L"Z===", L"====", L"=AAA", L"Zm 9", L"Zm9\x141"}) {
        EXPECT_EQ(DecodingError(text), character) << text;
    }
}

TEST(Utf8, DocumentsRoundTripAndMalformedBytes) {
    // Every character beside the C library's own conversion, where it has one.
    const bool isTold = std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr;
    for (char32_t code = 1; code <= 0x10FFFF; code += code < 0xFFF0 || code > 0x10FFE0 ? 1 : 0xF) {
        char bytes[MB_LEN_MAX];
        std::mbstate_t state{};
        const size_t size =
            code >> 11 == 0x1B ? 0 : std::wcrtomb(bytes, static_cast<wchar_t>(code), &state);  // no half of a pair
        if (isTold && size != 0) {
            std::wstring units = {L'x', static_cast<wchar_t>(code)};
            if (code > 0xFFFF) {
                units = {L'x', static_cast<wchar_t>(0xD7C0 + (code >> 10)),
                         static_cast<wchar_t>(0xDC00 | (code & 0x3FF))};
            }
            const std::string text = "x" + std::string(bytes, size);
            ASSERT_EQ(ToUtf8(units), text);
            ASSERT_EQ(ToUtf8(FromUtf8(text)), text);
            ASSERT_EQ(FromUtf8(text)[1], sizeof(wchar_t) == 2 ? units[1] : static_cast<wchar_t>(code));
        }
    }
    std::setlocale(LC_CTYPE, "C");
    const std::pair<std::string, std::wstring> malformed[] = {{"\xEF\xBB\xBF<a/>", L"<a/>"},  // byte-order mark
                                                              {"a\xE9z", L"a\uFFFDz"},        // ANSI text
                                                              {"\xC0\xAF", L"\uFFFD\uFFFD"},  // overlong
                                                              {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},  // surrogate
                                                              {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
                                                              {"\xE2\x82", L"\uFFFD\uFFFD"},  // cut off
                                                              {"\xFF", L"\uFFFD"}};
    for (const auto& [bytes, text] : malformed) {
        EXPECT_EQ(FromUtf8(bytes), text);
    }
    const wchar_t lone[] = {L'x', static_cast<wchar_t>(0xDC00), static_cast<wchar_t>(0xD800), 0};
    EXPECT_EQ(ToUtf8(lone), "x\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(StoredDocument, WhatMayBeParsed) {
    const std::pair<std::wstring, bool> cases[] = {
        {L"<root/>", true},
        {L"<?xml version=\"1.0\"?>\r\n <!-- <!DOCTYPE x> --><root><!--<!DOCTYPE--></root>", true},
        {L"<!DOCTYPE x SYSTEM 'http://example.com/x.dtd'><x/>", false},
        {L"<?xml version='1.0'?><!--a--><?b?>\t<!DOCTYPE lol [<!ENTITY a 'b'>]><lol>&a;</lol>", false},
        {L"<!-- never closed <!DOCTYPE x>", false},
        {L"\xFEFF<!DOCTYPE x><x/>", false},  // behind a byte-order mark, or anything else that the parser may skip
        {L"\xFEFF\xFEFF<x/>", false},
        {std::wstring(L"\0<!DOCTYPE x><x/>", 17), false},
        {L"x<!DOCTYPE x><x/>", false},
        {L"", false}};
    for (const auto& [text, safe] : cases) {
        EXPECT_EQ(IsSafeToParse(text), safe) << text.substr(0, 60);
    }
    const std::wstring tooLong = L"<root></root>" + std::wstring(kMaxDocumentCharacters - 12, L' ');
    EXPECT_TRUE(IsSafeToParse(std::wstring_view(tooLong).substr(0, kMaxDocumentCharacters)));
    EXPECT_FALSE(IsSafeToParse(tooLong));
    EXPECT_EQ(TrimXml(L" \r\n\ta b\n "), L"a b");
    EXPECT_EQ(TrimXml(L" \n"), L"");
}

TEST(StoredDocument, WhatXmlCanHold) {
    for (std::uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
        const bool isControl = unit < 0x20 && unit != 9 && unit != 10;
        const bool isHalf = unit >= 0xD800 && unit <= 0xDFFF;
        const std::wstring text = {L'a', static_cast<wchar_t>(unit), L'b'};
        EXPECT_EQ(IsXmlText(text), !isControl && !isHalf && unit != 0xFFFE && unit != 0xFFFF) << unit;
        EXPECT_EQ(IsXmlText(text.substr(0, 2)), IsXmlText(text)) << unit;
    }
    const wchar_t pair[] = {0xD83D, 0xDD12, 0xDD12, 0}, first[] = {0xFFFD, 0xD83D, 0xDD12, 0xFFFD, 0};
    EXPECT_TRUE(IsXmlText({pair, 2}) && IsXmlText(first));
    EXPECT_FALSE(IsXmlText({pair, 3}));
}

TEST(StoredDocument, NewDocumentsKeepTheirBlanks) {
    const CivilDateTime now = {2014, 3, 5, 14, 7, 9};
    EXPECT_EQ(NewDocumentText(kSwitchDocument, now),
              L"<root><!--Created 2014-03-05 14:07:09--><Enabled>0</Enabled></root>");
    EXPECT_EQ(NewDocumentText(kAccountsDocument, now), L"<root> <!--Created 2014-03-05 14:07:09--> </root>");
    EXPECT_EQ(NewDocumentText(kAlarmResetDocument, now),
              L"<root> <!--Created  2014-03-05 14:07:09--><ManualAlarmResetPwd>..garbage..</ManualAlarmResetPwd>"
              L"</root>");
    EXPECT_EQ(NewDocumentText(kMinimumsDocument, now), L"<root> <!--Created  2014-03-05 14:07:09--></root>");
}

}  // namespace v5
