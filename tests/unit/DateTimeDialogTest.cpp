#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <stdexcept>

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
    constexpr NumberRange kMinutes{0, 59};
    constexpr NumberRange kHours12{1, 12};
    constexpr wchar_t kBack = 8;
    const struct {
        FieldText before;
        wchar_t key;
        NumberRange range;
        FieldText after;
    } cases[] = {
        {{L"", 0, 0}, L'5', kMinutes, {L"5", 1, 1}},
        {{L"5", 0, 0}, L'1', kMinutes, {L"15", 1, 1}},   // in front of the single character
        {{L"5", 1, 1}, L'1', kMinutes, {L"51", 2, 2}},   // behind it
        {{L"6", 1, 1}, L'0', kMinutes, {L"6", 1, 1}},    // 60 is out of range
        {{L"00", 0, 2}, L'7', kMinutes, {L"7", 1, 1}},   // all selected: replaced
        {{L"00", 0, 1}, L'3', kMinutes, {L"30", 1, 1}},  // one of two selected: replaced
        {{L"00", 1, 2}, L'3', kMinutes, {L"3", 1, 1}},   // no leading zero
        {{L"5", 0, 0}, L'0', kMinutes, {L"5", 0, 0}},    // 05 is 5
        {{L"", 0, 0}, L'0', kMinutes, {L"0", 1, 1}},
        {{L"12", 1, 1}, L'1', kMinutes, {L"12", 1, 1}},  // would have three characters
        {{L"1", 1, 1}, L'2', kHours12, {L"12", 2, 2}},
        {{L"1", 1, 1}, L'3', kHours12, {L"1", 1, 1}},
        {{L"", 0, 0}, L'0', kHours12, {L"", 0, 0}},
        {{L"12", 2, 2}, L'x', kMinutes, {L"12", 2, 2}},
        {{L"12", 0, 2}, L' ', kMinutes, {L"12", 0, 2}},
        {{L"12", 0, 2}, 0x0661, kMinutes, {L"12", 0, 2}},  // an Arabic-Indic digit is no digit here
        {{L"12", 2, 2}, kBack, kMinutes, {L"1", 1, 1}},
        {{L"12", 1, 1}, kBack, kMinutes, {L"2", 0, 0}},
        {{L"12", 0, 0}, kBack, kMinutes, {L"12", 0, 0}},
        {{L"12", 0, 2}, kBack, kMinutes, {L"", 0, 0}},
        {{L"12", 1, 2}, kBack, kMinutes, {L"1", 1, 1}},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(TypeIntoTwoDigitField(each.before, each.key, each.range), each.after)
            << testing::PrintToString(each.before.text) << " at " << each.before.start << " key " << int(each.key);
    }
}

TEST(TimeFields, HourStepsAroundTheClockAndFlipAtTwelve) {
    TimeFields fields(0, 0, false);
    EXPECT_EQ(fields.Text(TimePart::Hour), L"12");
    for (int hour = 1; hour <= 48; ++hour) {  // every step up is the next hour of the day, twice around
        fields.Step(TimePart::Hour, true);
        ASSERT_EQ(fields.Hour(), hour % 24);
    }
    for (int hour = 47; hour >= 0; --hour) {
        fields.Step(TimePart::Hour, false);
        ASSERT_EQ(fields.Hour(), hour % 24);
    }
    TimeFields wide(23, 59, true);
    wide.Step(TimePart::Hour, true);
    wide.Step(TimePart::Minute, true);
    EXPECT_EQ(wide.Text(TimePart::Hour), L"0");
    EXPECT_EQ(wide.Text(TimePart::Minute), L"00");  // goes around without touching the hour
    wide.Step(TimePart::Minute, false);
    EXPECT_EQ(wide.Minute(), 59);
    EXPECT_EQ(wide.Hour(), 0);
}

TEST(TimeFields, TwelveHourReadings) {
    const struct {
        const wchar_t* hour;
        wchar_t half;
        int reads;
    } cases[] = {{L"12", L'a', 0}, {L"12", L'P', 12}, {L"1", L'p', 13}, {L"11", L'A', 11}, {L"11", L'P', 23}};
    for (const auto& each : cases) {
        TimeFields fields(5, 30, false);
        fields.SetText(TimePart::Hour, each.hour);
        EXPECT_EQ(fields.Type(TimePart::AmPm, {}, each.half).end, 2u);
        EXPECT_EQ(fields.Hour(), each.reads) << each.reads;
    }
    TimeFields fields(5, 30, false);
    fields.Type(TimePart::AmPm, {}, L'x');
    EXPECT_EQ(fields.Text(TimePart::AmPm), L"AM");
}

TEST(TimeFields, LeavingPutsAFieldRight) {
    const struct {
        TimePart part;
        const wchar_t* text;
        bool use24Hour;
        const wchar_t* left;
    } cases[] = {
        {TimePart::Hour, L"", false, L"10"},    {TimePart::Hour, L"0", false, L"12"},
        {TimePart::Hour, L"", true, L"10"},     {TimePart::Hour, L"0", true, L"0"},
        {TimePart::Minute, L"", false, L"30"},  {TimePart::Minute, L"7", false, L"07"},
        {TimePart::Minute, L"0", false, L"00"},
    };
    for (const auto& each : cases) {
        TimeFields fields(10, 30, each.use24Hour);
        fields.SetText(each.part, each.text);
        const int before = each.part == TimePart::Hour ? fields.Hour() : fields.Minute();
        fields.Leave(each.part);
        EXPECT_EQ(fields.Text(each.part), each.left);
        EXPECT_EQ(each.part == TimePart::Hour ? fields.Hour() : fields.Minute(), before);  // OK without leaving
    }
}

TEST(TimeDialog, AnswersATimeOfDayOnDayZero) {
    const struct {
        double initial;
        int hour;
        int minute;
    } cases[] = {{0.0, 0, 0},
                 {41703.0 + 12.5 / 24, 12, 30},
                 {0.5 / 24, 0, 30},
                 {-1.0 - 13.0 / 24 - 5.0 / 1440, 13, 5},
                 {5 + 86399.0 / 86400, 23, 59}};
    for (const auto& each : cases) {
        for (const bool use24Hour : {false, true}) {
            const TimeFields dialog(TimeDialogSettings{L"", each.initial, use24Hour, true});
            EXPECT_DOUBLE_EQ(dialog.DateTimeValue(), (each.hour * 60 + each.minute) / 1440.0);
        }
    }
    EXPECT_THROW(TimeFields(TimeDialogSettings{L"", 1e9, false, true}), std::out_of_range);
}

TEST(TimeDialog, ClockSwitchKeepsTheTime) {
    TimeFields dialog(TimeDialogSettings{L"", 13.0 / 24 + 5.0 / 1440, false, true});
    EXPECT_EQ(dialog.Text(TimePart::Hour), L"1");
    dialog.SetUse24Hour(true);
    EXPECT_EQ(dialog.Text(TimePart::Hour), L"13");
    EXPECT_EQ(dialog.Range(TimePart::Hour).highest, 23);
    dialog.SetText(TimePart::Hour, L"0");
    dialog.SetUse24Hour(false);
    EXPECT_EQ(dialog.Text(TimePart::Hour), L"12");
    EXPECT_EQ(dialog.Text(TimePart::AmPm), L"AM");
    EXPECT_EQ(dialog.Range(TimePart::Hour).lowest, 1);
    dialog.SetText(TimePart::Hour, L"1");
    dialog.SetUse24Hour(false);  // no change of mode: the half-typed field is left alone
    EXPECT_EQ(dialog.Text(TimePart::Hour), L"1");
}

TEST(TimeDialog, CaptionFilter) {
    const std::wstring_view cases[][2] = {
        {L"Cancel", L"Cancel"},   {L"O{{note}}K", L"OK"},   {L"{{a}}{{b}}x{{c}}", L"x"},
        {L"a{{b", L"a{{b"},       {L"a}}b{{c", L"a}}b{{c"}, {L"{{a{{b}}c}}", L"c}}"},
        {L"{{{x}}{y}}", L"{y}}"}, {L"{{{x}}{{y}}z", L"z"},  {L"{{}}", L""},
    };
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
    EXPECT_EQ(AnswerOf({settings, kNow}), (CivilDateTime{2024, 2, 10, 13, 0, 0}));
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
    const auto moved = [](year_month_day from, year_month month) {
        const year_month_day last = month / std::chrono::last;
        const int year{month.year()};
        return year < kMinYear || year > kMaxYear ? from : month / std::min(from.day(), last.day());
    };
    std::mt19937 random(1);
    const auto between = [&](int low, int high) { return low + static_cast<int>(random() % (high - low + 1u)); };
    for (const year_month_day start : {100y / 1 / 1, 9999y / 12 / 31, 2000y / 2 / 29, 2023y / 12 / 31}) {
        for (int walk = 0; walk < 200; ++walk) {
            year_month_day day = start;
            DateDialogModel dialog =
                DateDialog({int{day.year()}, int(unsigned{day.month()}), int(unsigned{day.day()})});
            for (int step = 0; step < 10; ++step) {
                const year_month month = day.year() / day.month();
                const int firstCell = static_cast<int>(weekday(sys_days(month / 1)).c_encoding());
                const int lastDay = static_cast<int>(unsigned{year_month_day(month / std::chrono::last).day()});
                for (int cell = 0; cell < MonthGrid::kCells; ++cell) {
                    const int shown = cell - firstCell + 1;
                    ASSERT_EQ(dialog.Grid().DayAt(cell), shown >= 1 && shown <= lastDay ? shown : 0);
                }
                ASSERT_EQ(dialog.Grid().DayAt(dialog.SelectedCell()), static_cast<int>(unsigned{day.day()}));
                ASSERT_EQ(dialog.YearText(), std::to_wstring(int{day.year()}));
                ASSERT_EQ(dialog.Month(), static_cast<int>(unsigned{day.month()}));
                ASSERT_EQ(AnswerOf(dialog), (CivilDateTime{int{day.year()}, dialog.Month(), int(unsigned{day.day()})}));
                const int count = between(-13, 13);
                const int cell = between(0, MonthGrid::kCells - 1);
                switch (between(0, 4)) {
                    case 0:
                        dialog.MoveMonths(count);
                        day = moved(day, month + months(count));
                        break;
                    case 1:
                        dialog.MoveDays(count);
                        if (const year_month_day to = sys_days(day) + days(count);
                            int{to.year()} >= kMinYear && int{to.year()} <= kMaxYear) {
                            day = to;
                        }
                        break;
                    case 2:
                        dialog.StepYear(count > 0);
                        day = moved(day, month + years(count > 0 ? 1 : -1));
                        break;
                    case 3:
                        dialog.ChooseMonth(1 + cell % 12);
                        day = moved(day, day.year() / (1 + cell % 12));
                        break;
                    default:
                        if (const int chosen = dialog.Grid().DayAt(cell); chosen != 0) {
                            day = month / chosen;
                        }
                        dialog.ChooseCell(cell);  // a hidden one changes nothing
                }
            }
        }
    }
}

TEST(DateDialog, TypedYears) {
    DateDialogModel dialog = DateDialog({2024, 2, 29, 10});
    const struct {
        const wchar_t* text;
        int answers;  // OK pressed while the text stands there
        const wchar_t* left;
    } cases[] = {{L"2028", 2028, L"2028"}, {L"", 2024, L"2024"},     {L"99", 2024, L"2024"},
                 {L"400", 400, L"400"},    {L"0000", 2024, L"2024"}, {L"20x4", 2024, L"2024"}};
    for (const auto& each : cases) {
        DateDialogModel typed = dialog;
        typed.SetYearText(each.text);
        EXPECT_EQ(AnswerOf(typed), (CivilDateTime{each.answers, 2, 29, 10}));
        typed.LeaveYear();
        EXPECT_EQ(typed.YearText(), each.left);
        EXPECT_EQ(typed.TakeCorrection(), each.left != std::wstring_view(each.text));
    }
    for (int year = 0; year < 20'000; ++year) {  // what is answered is what is shown
        dialog.SetYearText(std::to_wstring(year));
        dialog.LeaveYear();
        EXPECT_EQ(dialog.TakeCorrection(), year < 100 || year > 9999) << year;
        const CivilDateTime answer = AnswerOf(dialog);
        EXPECT_EQ(std::to_wstring(answer.year), dialog.YearText());
        EXPECT_EQ(answer.day, dialog.Grid().DayAt(dialog.SelectedCell()));
    }
    dialog = DateDialog({2024, 2, 29, 10});
    for (const wchar_t* text : {L"202", L"20", L"2", L"", L"2", L"20", L"202", L"2028"}) {
        dialog.SetYearText(text);  // the way to 2028 leaves the leap day alone
    }
    EXPECT_EQ(AnswerOf(dialog), (CivilDateTime{2028, 2, 29, 10}));
    dialog.SetYearText(L"2023");
    EXPECT_EQ(AnswerOf(dialog), (CivilDateTime{2023, 2, 28, 10}));
    EXPECT_EQ(dialog.Grid().LastDay(), 28);
}

}  // namespace v5
