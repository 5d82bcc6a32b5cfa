// Numeric text: the four questions agree with each other.
#include <cmath>

#include "base/Numbers.h"
#include "fuzz/Fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    using v5::fuzz::Require;
    const std::wstring text = v5::fuzz::Input(data, size).Text();
    const std::optional<double> number = v5::ParseNumber(text);
    Require(v5::IsNumeric(text) == number.has_value(), "numeric text has a value");
    Require(!number || std::isfinite(*number), "the value is a number");
    if (const std::optional<std::int32_t> whole = v5::ToLong(text)) {
        Require(number && std::fabs(*number - *whole) <= 0.5, "the whole number is the nearest");
    }
    const std::optional<bool> truth = v5::ToBoolean(text);
    Require(!number || (truth && *truth == (*number != 0)), "numbers other than zero are true");
    return 0;
}
