#include "base/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "base/Text.h"

namespace v5 {

namespace {

bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

bool IsBlank(wchar_t c) {
    constexpr std::wstring_view kBlanks = L" \t\n\v\f\r\x85\xA0\x1680\x2028\x2029\x202F\x205F\x3000";
    return kBlanks.find(c) != std::wstring_view::npos || (c >= 0x2000 && c <= 0x200A);
}

// The value of a digit of bases up to 16, or 16 when `c` is none.
unsigned DigitValue(wchar_t c) {
    if (IsDigit(c)) {
        return static_cast<unsigned>(c - L'0');
    }
    const wchar_t upper = ToUpper(c);
    return upper >= L'A' && upper <= L'F' ? static_cast<unsigned>(upper - L'A') + 10 : 16;
}

// Reads one numeric text from left to right. Amounts of currency have neither an exponent nor a radix.
class NumberScanner {
  public:
    explicit NumberScanner(std::wstring_view text) : mRest(text) {}

    std::optional<double> Scan() {
        ScanLeadingMarks();
        const std::optional<double> value = StartsRadix() ? ScanRadixDigits() : ScanDecimal();
        if (!value) {
            return std::nullopt;
        }
        ScanTrailingMarks();
        if (!mRest.empty() || mParenthesis == Mark::Open) {
            return std::nullopt;
        }
        // The run-time gives &H and &O texts their own sign and passes over any other.
        return mNegative && !mRadix ? -*value : value;
    }

  private:
    enum class Mark { None, Open, Closed };

    wchar_t Next() const { return mRest.empty() ? L'\0' : mRest.front(); }
    void Skip(size_t count = 1) { mRest.remove_prefix(count); }

    // Takes a mark that may stand once in front of or behind the digits.
    bool TakeOnce(wchar_t mark, bool& seen) {
        if (seen || Next() != mark) {
            return false;
        }
        seen = true;
        Skip();
        return true;
    }

    bool TakeSignBlankOrCurrency() {
        if (IsBlank(Next())) {
            Skip();
            return true;
        }
        if (TakeOnce(L'-', mMinus)) {
            mNegative = true;
            return true;
        }
        return TakeOnce(L'+', mPlus) || TakeOnce(L'$', mCurrency);
    }

    void ScanLeadingMarks() {
        while (true) {
            if (mParenthesis == Mark::None && Next() == L'(') {
                mParenthesis = Mark::Open;
                Skip();
            } else if (!TakeSignBlankOrCurrency()) {
                return;
            }
        }
    }

    void ScanTrailingMarks() {
        while (true) {
            if (mParenthesis == Mark::Open && Next() == L')') {
                mParenthesis = Mark::Closed;
                mNegative = true;
                Skip();
            } else if (!TakeSignBlankOrCurrency()) {
                return;
            }
        }
    }

    bool StartsRadix() {
        if (mCurrency || mRest.size() < 2 || mRest[0] != L'&') {
            return false;
        }
        const wchar_t kind = ToUpper(mRest[1]);
        mRadix = kind == L'H' ? 16 : kind == L'O' ? 8 : 0;
        return mRadix != 0;
    }

    std::optional<double> ScanRadixDigits() {
        Skip(2);
        const std::uint64_t maxBeforeDigit = std::numeric_limits<std::uint64_t>::max() / mRadix;
        std::uint64_t value = 0;
        bool any = false;
        for (; DigitValue(Next()) < mRadix; Skip()) {
            if (value > maxBeforeDigit) {
                return std::nullopt;
            }
            value = value * mRadix + DigitValue(Next());
            any = true;
        }
        if (!any) {
            return std::nullopt;
        }
        if (value <= std::numeric_limits<std::uint32_t>::max()) {
            return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
        }
        return static_cast<double>(value);
    }

    std::optional<double> ScanDecimal() {
        std::string digits;  // without leading zeros and without the decimal point
        std::int64_t power = 0;
        bool any = false;
        bool fraction = false;
        for (;; Skip()) {
            const wchar_t c = Next();
            if (IsDigit(c)) {
                any = true;
                power -= fraction ? 1 : 0;
                if (!digits.empty() || c != L'0') {
                    digits.push_back(static_cast<char>(c));
                }
            } else if (c == L'.' && !fraction) {
                fraction = true;
            } else if (c != L',' || !any) {
                break;
            }
        }
        if (!any || !ScanExponent(power)) {
            return std::nullopt;
        }
        return Compose(digits, power);
    }

    // Adds the exponent, if there is one, to `power`; false when it has no digits.
    bool ScanExponent(std::int64_t& power) {
        const wchar_t mark = ToUpper(Next());
        if (mCurrency || (mark != L'E' && mark != L'D')) {
            return true;
        }
        Skip();
        const bool negative = Next() == L'-';
        if (negative || Next() == L'+') {
            Skip();
        }
        if (!IsDigit(Next())) {
            return false;
        }
        constexpr std::int64_t kBeyondAnyText = 1'000'000'000'000;  // more than the digits of any text can balance
        std::int64_t exponent = 0;
        for (; IsDigit(Next()); Skip()) {
            exponent = std::min(exponent * 10 + (Next() - L'0'), kBeyondAnyText);
        }
        power += negative ? -exponent : exponent;
        return true;
    }

    static std::optional<double> Compose(std::string& digits, std::int64_t power) {
        if (digits.empty()) {
            return 0.0;
        }
        const std::int64_t magnitude = static_cast<std::int64_t>(digits.size()) + power;
        digits += 'e';
        digits += std::to_string(power);
        double value = 0;
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        if (result.ec == std::errc()) {
            return value;
        }
        return magnitude > 0 ? std::nullopt : std::optional<double>(0.0);
    }

    std::wstring_view mRest;
    Mark mParenthesis = Mark::None;
    bool mPlus = false;
    bool mMinus = false;
    bool mCurrency = false;
    bool mNegative = false;
    unsigned mRadix = 0;
};

}  // namespace

bool IsNumeric(std::wstring_view text) {
    return ParseNumber(text).has_value();
}

std::optional<double> ParseNumber(std::wstring_view text) {
    return NumberScanner(text).Scan();
}

std::optional<std::int32_t> ToLong(std::wstring_view text) {
    const std::optional<double> value = ParseNumber(text);
    if (!value) {
        return std::nullopt;
    }
    const double whole = std::nearbyint(*value);
    if (whole < std::numeric_limits<std::int32_t>::min() || whole > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(whole);
}

std::optional<bool> ToBoolean(std::wstring_view text) {
    for (const std::wstring_view word : {L"True", L"#TRUE#"}) {
        if (EqualsIgnoreCase(text, word)) {
            return true;
        }
    }
    for (const std::wstring_view word : {L"False", L"#FALSE#"}) {
        if (EqualsIgnoreCase(text, word)) {
            return false;
        }
    }
    const std::optional<double> value = ParseNumber(text);
    return value ? std::optional<bool>(*value != 0) : std::nullopt;
}

}  // namespace v5
