#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <stdexcept>
#include <tuple>

#include "base/Text.h"
#include "dialogs/DateDialogModel.h"
#include "dialogs/TimeFields.h"

namespace v5 {

namespace {

constexpr CivilDateTime kNow{2024, 2, 10, 13, 5, 40};

DateDialogModel DateDialog(const CivilDateTime& initial) {
    DateDialogSettings settings;
    settings.DateTimeValue = ToAutomationDate(initial);
    return {settings, kNow};
}

CivilDateTime AnswerOf(const DateDialogModel& dialog) {
    return FromAutomationDate(dialog.DateTimeValue());
}

}  // namespace

TEST(NumberField, KeysOfTwoDigitFields) {
    constexpr NumberRange kMinutes{0, 59}, kHours12{1, 12};
    const std::pair<NumberRange, const wchar_t*> cases[] = {
        // before, key and after; the selection in brackets
        {kMinutes,
         L"[] 5 5[]|[]5 1 1[]5|5[] 1 51[]|6[] 0 6[]|[00] 7 7[]|[0]0 3 3[]0|0[0] 3 3[]|[]5 0 []5|[] 0 0[]|"
         L"1[]2 1 1[]2|12[] x 12[]|12[] \b 1[]|1[]2 \b []2|[]12 \b []12|[12] \b []|1[2] \b 1[]|[12] \x661 [12]"},
        {kHours12, L"1[] 2 12[]|1[] 3 1[]|[] 0 []"}};
    for (const auto& [range, rows] : cases) {
        for (const std::wstring& row : Split(rows, L'|')) {
            const std::vector<std::wstring> words = Split(row, L' ');
            FieldText field{words[0], words[0].find(L'['), words[0].find(L']') - 1};
            std::erase_if(field.text, [](wchar_t c) { return c == L'[' || c == L']'; });
            FieldText shown = TypeIntoTwoDigitField(field, words[1][0], range);
            shown.text.insert(shown.end, L"]").insert(shown.start, L"[");
            EXPECT_EQ(shown.text, words[2]) << testing::PrintToString(row);
        }
    }
}

TEST(TimeFields, HourStepsAroundTheClockAndFlipAtTwelve) {
    for (const bool use24Hour : {false, true}) {
        TimeFields fields(0, 59, use24Hour);
        for (int step = 1; step <= 96; ++step) {  // every step up is the next hour of the day, twice around, and back
            fields.Step(TimePart::Hour, step <= 48);
            const int hour = (step <= 48 ? step : 96 - step) % 24;
            ASSERT_EQ(fields.Hour(), hour);
            const int shown = use24Hour ? hour : hour % 12 == 0 ? 12 : hour % 12;
            ASSERT_EQ(fields.Text(TimePart::Hour), std::to_wstring(shown));
        }
        fields.Step(TimePart::Minute, true);
        EXPECT_EQ(fields.Text(TimePart::Minute), L"00") << "goes around without touching the hour";
        fields.Step(TimePart::Minute, false);
        EXPECT_EQ(fields.Hour() * 60 + fields.Minute(), 59);
    }
}

// What the fields stand for while a text is typed, and what they show when the user has left them.
TEST(TimeFields, HalfTypedTexts) {
    const std::tuple<TimePart, const wchar_t*, bool, int, const wchar_t*> cases[] = {
        {TimePart::Hour, L"", false, 10, L"10"},   {TimePart::Hour, L"0", false, 0, L"12"},
        {TimePart::Hour, L"12", false, 0, L"12"},  {TimePart::Hour, L"", true, 10, L"10"},
        {TimePart::Hour, L"0", true, 0, L"0"},     {TimePart::Minute, L"", false, 30, L"30"},
        {TimePart::Minute, L"7", false, 7, L"07"}, {TimePart::Minute, L"0", false, 0, L"00"}};
    for (const auto& [part, text, use24Hour, reads, left] : cases) {
        TimeFields fields(10, 30, use24Hour);
        fields.SetText(part, text);
        for (const wchar_t* shown : {text, left}) {  // OK without leaving, too
            EXPECT_EQ(fields.Text(part), shown);
            EXPECT_EQ(part == TimePart::Hour ? fields.Hour() : fields.Minute(), reads);
            fields.Leave(part);
        }
    }
    TimeFields fields(5, 30, false);
    for (const auto& [key, half, hour] :
         {std::tuple(L'x', L"AM", 5), {L'P', L"PM", 17}, {L'a', L"AM", 5}, {L'p', L"PM", 17}}) {
        EXPECT_EQ(fields.Type(TimePart::AmPm, {}, key).start, 0u);
        EXPECT_EQ(fields.Type(TimePart::AmPm, {}, key).end, 2u);
        EXPECT_EQ(fields.Text(TimePart::AmPm), half);
        EXPECT_EQ(fields.Position(TimePart::AmPm), hour / 12);
        EXPECT_EQ(fields.Hour(), hour);
    }
    EXPECT_EQ(fields.Range(TimePart::AmPm).lowest * 10 + fields.Range(TimePart::AmPm).highest, 1);
    fields.Type(TimePart::Hour, {L"", 0, 0}, L'7');
    EXPECT_EQ(fields.Hour(), 19);
    EXPECT_EQ(fields.Position(TimePart::Hour) * 100 + fields.Position(TimePart::Minute), 730);
    fields.Leave(TimePart::Hour);
    fields.SetText(TimePart::Hour, L"");
    fields.Step(TimePart::Hour, true);
    fields.Step(TimePart::AmPm, false);
    EXPECT_EQ(fields.Hour(), 8);
}

TEST(TimeDialog, AnswersATimeOfDayOnDayZero) {
    const std::pair<double, int> cases[] = {{0.0, 0},
                                            {41703.0 + 12.5 / 24, 750},
                                            {0.5 / 24, 30},
                                            {-1.0 - 13.0 / 24 - 5.0 / 1440, 785},
                                            {5 + 86399.0 / 86400, 1439}};
    for (const auto& [initial, minutes] : cases) {
        for (const bool use24Hour : {false, true}) {
            TimeFields dialog(TimeDialogSettings{L"", initial, use24Hour, true});
            EXPECT_DOUBLE_EQ(dialog.DateTimeValue(), minutes / 1440.0);
            dialog.SetUse24Hour(!use24Hour);
            EXPECT_DOUBLE_EQ(dialog.DateTimeValue(), minutes / 1440.0) << "the same on the other clock";
            EXPECT_EQ(dialog.Range(TimePart::Hour).lowest, use24Hour ? 1 : 0);
            EXPECT_EQ(dialog.Range(TimePart::Hour).highest, use24Hour ? 12 : 23);
        }
    }
    EXPECT_THROW(TimeFields(TimeDialogSettings{L"", 1e9, false, true}), std::out_of_range);
    TimeFields dialog(13, 5, false);
    dialog.SetText(TimePart::Hour, L"");
    dialog.SetUse24Hour(false);  // no change of clock: the half-typed field is left alone
    EXPECT_EQ(dialog.Text(TimePart::Hour), L"");
}

TEST(TimeDialog, CaptionFilter) {
    const std::wstring_view cases[][2] = {
        {L"Cancel", L"Cancel"},   {L"O{{note}}K", L"OK"},   {L"{{a}}{{b}}x{{c}}", L"x"},
        {L"a{{b", L"a{{b"},       {L"a}}b{{c", L"a}}b{{c"}, {L"{{a{{b}}c}}", L"c}}"},
        {L"{{{x}}{y}}", L"{y}}"}, {L"{{{x}}{{y}}z", L"z"},  {L"{{}}", L""}};
    for (const auto& each : cases) {
        EXPECT_EQ(FilterCaption(each[0]), each[1]);
    }
}

TEST(DateDialog, OpensOnTheInitialDateOrThePresent) {
    EXPECT_EQ(AnswerOf(DateDialog({1999, 12, 31, 23, 59, 30})), (CivilDateTime{1999, 12, 31, 23, 59, 0}));
    DateDialogModel present({}, kNow);
    EXPECT_EQ(AnswerOf(present), (CivilDateTime{2024, 2, 10, 13, 5, 0}));
    EXPECT_TRUE(present.IsToday(present.SelectedCell()));
    EXPECT_FALSE(present.IsToday(present.SelectedCell() + 1));
    EXPECT_EQ(present.Time().Text(TimePart::Hour), L"1");
    EXPECT_EQ(present.Time().Text(TimePart::AmPm), L"PM");

    DateDialogSettings settings;
    settings.GetMinutesAlso = false;
    settings.Use24HourFormat = true;
    const DateDialogModel hours(settings, kNow);
    EXPECT_EQ(AnswerOf(hours), (CivilDateTime{2024, 2, 10, 13, 0, 0}));
    EXPECT_TRUE(present.ShowsMinutes() && !hours.ShowsMinutes() && hours.ShowsTime());
    settings.UseDateOnly = true;
    EXPECT_EQ(AnswerOf({settings, kNow}), (CivilDateTime{2024, 2, 10}));
    settings.DateTimeValue = 1e9;
    EXPECT_THROW(DateDialogModel(settings, kNow), std::out_of_range);
}

TEST(DateDialog, NoDateIsAnAnswerOnlyWhereItIsAllowed) {
    DateDialogSettings settings;
    settings.DateTimeValue = kNoDate;
    DateDialogModel firm(settings, kNow);
    firm.SetNoDate(true);
    EXPECT_FALSE(firm.NoDate());
    EXPECT_EQ(AnswerOf(firm), (CivilDateTime{1899, 12, 29}));

    settings.DateCannotBeNull = false;
    DateDialogModel open(settings, kNow);
    EXPECT_EQ(open.DateTimeValue(), kNoDate);
    open.SetNoDate(false);
    EXPECT_EQ(AnswerOf(open), (CivilDateTime{2024, 2, 10, 13, 5, 0}));
}

// Walks by months, days, years and cells from the calendar's ends and from leap days, beside the library's calendar.
TEST(DateDialog, WalksTheCalendar) {
    using namespace std::chrono;
    const auto number = [](auto part) { return static_cast<int>(static_cast<unsigned>(part)); };
    std::mt19937 random(1);
    const auto between = [&](int low, int high) { return low + static_cast<int>(random() % (high - low + 1u)); };
    for (int walk = 0; walk < 800; ++walk) {
        const year_month_day starts[] = {100y / 1 / 1, 9999y / 12 / 31, 2000y / 2 / 29, 2023y / 12 / 31};
        year_month_day day = starts[walk % 4];
        DateDialogModel dialog = DateDialog({int{day.year()}, number(day.month()), number(day.day())});
        const auto moveTo = [&](year_month month, std::chrono::day to) {  // the last day, where there are not so many
            if (int{month.year()} >= kMinYear && int{month.year()} <= kMaxYear) {
                day = month / std::min(to, year_month_day_last(month / last).day());
            }
        };
        for (int step = 0; step < 10; ++step) {
            const year_month month = day.year() / day.month();
            const int firstCell = static_cast<int>(weekday(sys_days(month / 1)).c_encoding());
            const int lastDay = number(year_month_day_last(month / last).day());
            for (int cell = 0; cell < MonthGrid::kCells; ++cell) {
                const int shown = cell - firstCell + 1;
                ASSERT_EQ(dialog.Grid().DayAt(cell), shown >= 1 && shown <= lastDay ? shown : 0);
            }
            ASSERT_EQ(dialog.Grid().DayAt(dialog.SelectedCell()), number(day.day()));
            ASSERT_EQ(dialog.YearText(), std::to_wstring(int{day.year()}));
            ASSERT_EQ(AnswerOf(dialog), (CivilDateTime{int{day.year()}, dialog.Month(), number(day.day())}));
            ASSERT_EQ(dialog.Month(), number(day.month()));
            const int count = between(-13, 13), cell = between(0, MonthGrid::kCells - 1);
            const int chosen = dialog.Grid().DayAt(cell);
            switch (between(0, 4)) {
                case 0:
                    dialog.MoveMonths(count);
                    moveTo(month + months(count), day.day());
                    break;
                case 1:
                    dialog.MoveDays(count);
                    if (const year_month_day to = sys_days(day) + days(count); to.ok()) {
                        moveTo(to.year() / to.month(), to.day());
                    }
                    break;
                case 2:
                    dialog.StepYear(count > 0);
                    moveTo(month + years(count > 0 ? 1 : -1), day.day());
                    break;
                case 3:
                    dialog.ChooseMonth(1 + cell % 12);
                    moveTo(day.year() / (1 + cell % 12), day.day());
                    break;
                default:
                    dialog.ChooseCell(cell);
                    day = chosen != 0 ? month / chosen : day;  // a hidden one changes nothing
            }
        }
    }
}

TEST(DateDialog, TypedYears) {
    const DateDialogModel leapDay = DateDialog({2024, 2, 29, 10});
    const std::tuple<std::wstring, int, const wchar_t*> cases[] = {{L"2028", 2028, L"2028"}, {L"", 2024, L"2024"},
                                                                   {L"99", 2024, L"2024"},   {L"400", 400, L"400"},
                                                                   {L"0000", 2024, L"2024"}, {L"20x4", 2024, L"2024"}};
    for (const auto& [text, year, left] : cases) {
        DateDialogModel typed = leapDay;
        typed.SetYearText(text);
        EXPECT_EQ(AnswerOf(typed), (CivilDateTime{year, 2, 29, 10})) << "OK pressed while the text stands there";
        typed.LeaveYear();
        EXPECT_EQ(typed.YearText(), left);
        EXPECT_EQ(typed.TakeCorrection(), left != text);
    }
    DateDialogModel dialog = leapDay;
    for (const wchar_t* text : {L"202", L"20", L"2", L"", L"2", L"20", L"202", L"2028"}) {
        dialog.SetYearText(text);  // the way to 2028 leaves the leap day alone
    }
    EXPECT_EQ(AnswerOf(dialog), (CivilDateTime{2028, 2, 29, 10}));
    dialog.ChooseCell(dialog.SelectedCell() - 1);
    dialog.SetYearText(L"2029");
    EXPECT_EQ(AnswerOf(dialog), (CivilDateTime{2029, 2, 28, 10}));
    dialog.SetYearText(L"2024");
    EXPECT_EQ(AnswerOf(dialog), (CivilDateTime{2024, 2, 28, 10})) << "the day that was chosen last";
    dialog = leapDay;
    dialog.SetYearText(L"2023");
    dialog.LeaveYear();
    dialog.SetYearText(L"2024");
    EXPECT_EQ(AnswerOf(dialog), (CivilDateTime{2024, 2, 28, 10})) << "what was left is what is chosen";
    for (int year = 20'000; --year >= 0;) {  // what is answered is what is shown
        dialog.SetYearText(std::to_wstring(year));
        dialog.LeaveYear();
        EXPECT_EQ(dialog.TakeCorrection(), year < 100 || year > 9999) << year;
        const CivilDateTime answer = AnswerOf(dialog);
        EXPECT_EQ(std::to_wstring(answer.year), dialog.YearText());
        EXPECT_EQ(answer.day, dialog.Grid().DayAt(dialog.SelectedCell()));
    }
}

}  // namespace v5
