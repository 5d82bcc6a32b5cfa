// Calendar arithmetic over all dates.
#include <stdexcept>

#include "base/Dates.h"
#include "fuzz/Fuzz.h"

namespace {

bool IsCalendarDate(const v5::CivilDateTime& time) {
    return time.year >= v5::kMinYear && time.year <= v5::kMaxYear && time.month >= 1 && time.month <= 12 &&
           v5::FromAutomationDate(v5::ToAutomationDate(time)) == time;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    using v5::fuzz::Require;
    v5::fuzz::Input input(data, size);
    const auto date = input.Take<double>();
    const auto count = input.Take<std::int32_t>();
    const std::wstring unit = input.Text();
    v5::CivilDateTime time;
    try {
        time = v5::FromAutomationDate(date);
    } catch (const std::out_of_range&) {
        return 0;
    }
    Require(IsCalendarDate(time), "an automation date is a calendar date");
    try {
        const v5::CivilDateTime sum = v5::AddInterval(unit, count, time);
        Require(IsCalendarDate(sum), "a sum is a calendar date");
        if (unit == L"d" || unit == L"h" || unit == L"n" || unit == L"s") {
            Require(count == INT32_MIN || v5::AddInterval(unit, -count, sum) == time, "back again is where it began");
        }
    } catch (const std::invalid_argument&) {
    } catch (const std::out_of_range&) {
    }
    return 0;
}
