// The number rules against the run-time's own conversions, over every combination of the marks that may stand around
// a number and the forms that the number itself may have.
#include <windows.h>
// after windows.h, which it needs:
#include <oleauto.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "base/Numbers.h"

namespace v5 {

namespace {

constexpr LCID kEnglishUnitedStates = 0x0409;

struct Oracle {
    HRESULT realStatus, longStatus, booleanStatus;
    double real = 0;
    LONG whole = 0;
    VARIANT_BOOL truth = VARIANT_FALSE;

    explicit Oracle(std::wstring text) {
        realStatus = VarR8FromStr(text.data(), kEnglishUnitedStates, LOCALE_NOUSEROVERRIDE, &real);
        longStatus = VarI4FromStr(text.data(), kEnglishUnitedStates, LOCALE_NOUSEROVERRIDE, &whole);
        booleanStatus = VarBoolFromStr(text.data(), kEnglishUnitedStates, LOCALE_NOUSEROVERRIDE, &truth);
    }
};

// A parenthesis that is never closed: the test machine's run-time lets a minus sign behind the digits pass for the
// missing one.
bool LacksClosingParenthesis(const std::wstring& text) {
    return text.find(L'(') != std::wstring::npos && text.find(L')') == std::wstring::npos;
}

bool Agree(const std::wstring& text) {
    const Oracle oracle(text);
    const std::optional<double> real = ParseNumber(text);
    const std::optional<std::int32_t> whole = ToLong(text);
    // The test machine's run-time overflows when &HFFFFFFFF is to be a double, which the documented one takes as -1:
    // there the 32-bit conversion decides.
    const bool realKnown = SUCCEEDED(oracle.realStatus);
    const bool longKnown = SUCCEEDED(oracle.longStatus);
    if (real.has_value() != (realKnown || longKnown) || whole.has_value() != longKnown) {
        return false;
    }
    // Its scaling by large powers of ten loses the last digits.
    const bool sameReal = !realKnown || std::abs(*real - oracle.real) <= std::abs(oracle.real) * 1e-14;
    const bool sameTruth = !realKnown || ToBoolean(text) == (oracle.truth != VARIANT_FALSE);
    return sameReal && sameTruth && (!whole || *whole == oracle.whole);
}

}  // namespace

TEST(NumbersOracle, EveryCombinationOfMarksAndForms) {
    const wchar_t* before[] = {L"",   L" ",  L"\t", L"\xA0", L"+",  L"-",   L"- ", L"+-", L"++",
                               L"--", L"$",  L"-$", L"$-",   L"$$", L"(",   L"($", L"-(", L"((",
                               L"#",  L"0x", L"&",  L"%",    L"a",  L"$ (", L"( "};
    const wchar_t* forms[] = {L"",      L"0",      L"00",     L"1",        L"12.5",       L".5",
                              L"5.",    L".",      L"1.2.3",  L"1,000",    L"1,2,3",      L"1,",
                              L",1",    L",",      L"1.5,0",  L"1.,5",     L"1e5",        L"1E+5",
                              L"1e-5",  L"1e",     L"1e+",    L"e5",       L"1e5.5",      L"1e5e5",
                              L"1 2",   L"1e308",  L"1e309",  L"1e-400",   L"2147483647", L"2147483648",
                              L"2.5",   L"3.5",    L"0.5",    L"1.50",     L"&HFF",       L"&hff",
                              L"&H",    L"&HG",    L"&HFFFF", L"&H8000",   L"&HFFFFFFFF", L"&H80000000",
                              L"&O17",  L"&o7",    L"&O8",    L"&O177777", L"&H1.5",      L"&H1,0",
                              L"& HFF", L"&H-1",   L"&17",    L"&HFF&",    L"True",       L"0.30000000000000004",
                              L"1e400", L"\xFF11", L"abc",    L"1a",       L"4294967296", L"999999999999999999999"};
    const wchar_t* after[] = {L"", L" ", L"\r\n", L"+", L"-", L" -", L"+-", L")", L" )", L"%", L"g"};
    for (const wchar_t* b : before) {
        for (const wchar_t* f : forms) {
            for (const wchar_t* a : after) {
                const std::wstring text = std::wstring(b) + f + a;
                EXPECT_TRUE(LacksClosingParenthesis(text) ? !IsNumeric(text) : Agree(text))
                    << std::string(text.begin(), text.end());
            }
        }
    }
}

}  // namespace v5
