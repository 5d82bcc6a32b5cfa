// Calendar arithmetic over all dates, and the date dialog moved about in it.
#include <stdexcept>

#include "base/Dates.h"
#include "dialogs/DateDialogModel.h"
#include "fuzz/Fuzz.h"

namespace {

bool IsCalendarDate(const v5::CivilDateTime& time) {
    return time.year >= v5::kMinYear && time.year <= v5::kMaxYear && time.month >= 1 && time.month <= 12 &&
           time.day >= 1 && time.day <= v5::DaysInMonth(time.year, time.month) && time.hour >= 0 && time.hour < 24 &&
           time.minute >= 0 && time.minute < 60 && time.second >= 0 && time.second < 60;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    using v5::fuzz::Require;
    v5::fuzz::Input input(data, size);
    const auto date = input.Take<double>();
    const auto count = input.Take<std::int32_t>();
    const auto months = input.Take<std::int16_t>();
    const std::wstring unit = input.Text();
    v5::CivilDateTime time;
    try {
        time = v5::FromAutomationDate(date);
    } catch (const std::out_of_range&) {
        return 0;
    }
    Require(IsCalendarDate(time), "an automation date is a calendar date");
    Require(v5::FromAutomationDate(v5::ToAutomationDate(time)) == time, "there and back is the same second");
    try {
        const v5::CivilDateTime sum = v5::AddInterval(unit, count, time);
        Require(IsCalendarDate(sum), "a sum is a calendar date");
        if (unit == L"d" || unit == L"h" || unit == L"n" || unit == L"s") {
            Require(count == INT32_MIN || v5::AddInterval(unit, -count, sum) == time, "back again is where it began");
        }
    } catch (const std::invalid_argument&) {
    } catch (const std::out_of_range&) {
    }

    v5::DateDialogSettings settings;
    settings.DateTimeValue = date;
    v5::DateDialogModel model(settings, time);
    model.MoveMonths(months);
    model.MoveDays(count);
    model.ChooseCell(months);
    model.SetYearText(unit);
    model.LeaveYear();
    model.StepYear(count > 0);
    Require(IsCalendarDate(v5::FromAutomationDate(model.DateTimeValue())), "the dialog answers a calendar date");
    return 0;
}
