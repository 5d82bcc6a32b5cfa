// The date and the time dialog: what windows add to their models. Keys, clicks, focus, looks, the values handed back.
#include <windows.h>

#include <algorithm>

#include "Calls.h"
#include "dialogs/ControlIds.h"

namespace v5::test {

namespace {

constexpr wchar_t kTitle[] = L"Under test";

constexpr int kHour = ids::TimeText(TimePart::Hour);
constexpr int kMinute = ids::TimeText(TimePart::Minute);
constexpr int kAmPm = ids::TimeText(TimePart::AmPm);

TimeAnswer AskTime(double initial, const Work& work) {
    return AnswerOf([&] { return GetTimeFromUser(kTitle, initial); }, kTitle, work);
}

struct DateOptions {
    bool dateOnly = false;
    bool minutesAlso = true;
    bool dateCannotBeNull = true;
};

double AskDate(double initial, const Work& work, DateOptions options = {}) {
    const auto call = [&] {
        return GetDateFromUser(kTitle, initial, options.dateOnly, options.minutesAlso, options.dateCannotBeNull);
    };
    return AnswerOf(call, kTitle, work);
}

// What can be seen of day, month, year, hour, minute and half of the day: the one with the focus in brackets, a dash
// for what is disabled; "none" or "date" where no date is a choice.
std::wstring Shown(const Dialog& dialog) {
    std::vector<int> fields;
    for (int cell = 0; cell < MonthGrid::kCells; ++cell) {
        if (dialog.IsChecked(ids::optDayOfMonth(cell))) {
            fields.push_back(ids::optDayOfMonth(cell));
        }
    }
    fields.insert(fields.end(), {ids::cboMonth, ids::txtYear, kHour, kMinute, kAmPm});
    std::wstring shown;
    for (const int id : fields) {
        if (dialog.IsVisible(id)) {
            const std::wstring text = dialog.IsEnabled(id) ? dialog.Text(id) : L"-";
            shown += (shown.empty() ? L"" : L" ") + (dialog.FocusId() == id ? L"[" + text + L"]" : text);
        }
    }
    return shown + (!dialog.IsVisible(ids::chkNull) ? L"" : dialog.IsChecked(ids::chkNull) ? L" none" : L" date");
}

// What the user does, and what is to be seen then.
struct Step {
    Work act;
    const wchar_t* shown;
};

Work PressHolding(WORD held, WORD key) {
    return [held, key](const Dialog& dialog) { dialog.Key(key, held); };
}

Work Type(const wchar_t* text) {
    return [text](const Dialog& dialog) { dialog.Type(text); };
}

// A click on the half of an up-down control that steps up or down.
Work Spin(int id, bool up) {
    return [id, up](const Dialog& dialog) {
        RECT half{};
        GetClientRect(dialog.Control(id), &half);
        (up ? half.bottom : half.top) = (half.top + half.bottom) / 2;
        dialog.Click(dialog.Control(id), half);
    };
}

Work Send(int id, UINT message, const wchar_t* text = nullptr) {
    return [=](const Dialog& dialog) { SendMessageW(dialog.Control(id), message, 0, reinterpret_cast<LPARAM>(text)); };
}

// The steps one by one, then OK by key or click.
Work Through(const std::vector<Step>& steps, bool clicks) {
    return [&steps, clicks](const Dialog& dialog) {
        for (const Step& step : steps) {
            step.act(dialog);
            Eventually([&] { return Shown(dialog) == step.shown; });
            EXPECT_EQ(Shown(dialog), step.shown) << "step " << &step - steps.data();
            EXPECT_EQ(dialog.IsVisible(kAmPm), dialog.IsVisible(ids::TimeUpDown(TimePart::AmPm)));
        }
        clicks ? dialog.Click(IDOK) : dialog.Key(VK_RETURN);
    };
}

}  // namespace

TEST(TimeDialog, StepByStep) {
    const struct {
        double initial;
        std::vector<Step> steps;
        int minutes;  // of the day, answered
    } cases[] = {
        {DateOf(2024, 3, 5, 13, 5),
         {{Type(L"1x23"), L"[12] 05 PM"},  // the hour is selected as a whole; x is ignored, for 3 is no room
          {Press({VK_TAB, '7', VK_TAB}), L"12 07 [PM]"},
          {Type(L"a"), L"12 07 [AM]"},
          {Send(kAmPm, WM_CUT), L"12 07 [AM]"}},
         7},
        {10.0 / 24,
         {{Send(kHour, WM_PASTE), L"[10] 00 AM"},
          {Press({VK_END, VK_BACK, VK_BACK}), L"[] 00 AM"},
          {Type(L"151"), L"[11] 00 AM"},  // 15 is no hour here
          {Press({VK_RIGHT, VK_DELETE}), L"11 [] AM"},
          {Press({VK_RIGHT}), L"11 00 [AM]"}},  // an empty field is put right
         11 * 60},
        {0.5,
         {{Press({VK_DOWN}), L"[11] 00 AM"},
          {Spin(ids::TimeUpDown(TimePart::Hour), true), L"[12] 00 PM"},
          {Type(L"9"), L"[9] 00 PM"},  // a step selects the field
          {Spin(ids::TimeUpDown(TimePart::Minute), false), L"9 [59] PM"},
          {Spin(ids::TimeUpDown(TimePart::AmPm), true), L"9 59 [AM]"}},
         9 * 60 + 59},
        {13.0 / 24 + 5.0 / 1440,
         {{[](const Dialog& dialog) { EXPECT_EQ(dialog.Text(ids::chk24Hour), L"Use 24 hour format"); }, L"[1] 05 PM"},
          {Click(ids::chk24Hour), L"13 05"},
          {Click(kHour), L"[13] 05"},
          {Press({VK_HOME}), L"[13] 05"},
          {PressHolding(VK_SHIFT, VK_END), L"[13] 05"},
          {Type(L"0"), L"[0] 05"}},
         5},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.initial);
        const TimeAnswer answer = AskTime(each.initial, Through(each.steps, each.minutes == 5));
        EXPECT_DOUBLE_EQ(answer.time, each.minutes / 1440.0);
        EXPECT_FALSE(answer.cancelled);
    }
}

TEST(DateDialog, StepByStep) {
    const double initial = DateOf(2024, 12, 20, 13, 30);
    const Work look = [](const Dialog&) {};
    const struct {
        double initial;
        DateOptions options;
        std::vector<Step> steps;
        double answer;
    } cases[] = {
        {initial, {}, {{look, L"[20] December 2024 1 30 PM"}}, initial},
        {initial, {.dateOnly = true}, {{look, L"[20] December 2024"}}, DateOf(2024, 12, 20)},
        {initial, {.minutesAlso = false}, {{look, L"[20] December 2024 1 PM"}}, DateOf(2024, 12, 20, 13)},
        {initial,
         {.dateCannotBeNull = false},
         {{look, L"[20] December 2024 1 30 PM date"}, {Click(ids::chkNull), L"- - - - - - none"}},
         -1},
        {-1, {.dateCannotBeNull = false}, {{look, L"- - - - - - none"}}, -1},
        {DateOf(2023, 12, 31),
         {.dateOnly = true},
         {{Press({VK_RIGHT}), L"[1] January 2024"},
          {Press({VK_UP, VK_LEFT, VK_DOWN}), L"[31] December 2023"},
          {Press({VK_NEXT, VK_NEXT, VK_PRIOR}), L"[29] January 2024"},
          {Click(ids::cmdMonthMove[0]), L"29 December 2023"},
          {Click(ids::cmdMonthMove[1]), L"29 January 2024"},
          {Click(ids::optDayOfMonth(15)), L"[15] January 2024"}},
         DateOf(2024, 1, 15)},
        {DateOf(2024, 2, 29),
         {.dateOnly = true},
         {{PressHolding(VK_MENU, 'Y'), L"29 February [2024]"},
          {Press({VK_UP}), L"28 February [2025]"},
          {Type(L"2028"), L"28 February [2028]"},  // the year is selected as a whole
          {PressHolding(VK_MENU, 'M'), L"28 [February] 2028"},
          {Press({'O'}), L"28 [October] 2028"},
          {PressHolding(VK_MENU, 'Y'), L"28 October [2028]"},
          {Press({VK_BACK, '9', '9'}), L"28 October [99]"},
          {PressHolding(VK_MENU, 'D'), L"[28] October 2028"},  // 99 is no year here
          {Spin(ids::updownYear, false), L"28 October [2027]"}},
         DateOf(2027, 10, 28)},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(&each - cases);
        EXPECT_DOUBLE_EQ(AskDate(each.initial, Through(each.steps, each.options.dateOnly), each.options), each.answer);
    }
}

TEST(DateAndTimeDialog, EveryWayToCancel) {
    for (const Work& way : {Press({VK_ESCAPE}), Click(IDCANCEL), Work(CloseByCaption)}) {
        EXPECT_TRUE(AskTime(0.25, way).cancelled);
        EXPECT_EQ(AskDate(DateOf(2024, 12, 20), way), 0.0);
    }
}

TEST(DateDialog, EveryCellOfTheMonthWithTodayAndTheSelectedDayMarked) {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    AskDate(0.0, [&](const Dialog& dialog) {
        const MonthGrid grid(now.wYear, now.wMonth);
        EXPECT_TRUE(dialog.IsChecked(ids::optDayOfMonth(grid.CellOf(now.wDay))));
        dialog.Key(now.wDay > 14 ? VK_UP : VK_DOWN);
        EXPECT_EVENTUALLY(!dialog.IsChecked(ids::optDayOfMonth(grid.CellOf(now.wDay))));
        for (int cell = 0; cell < MonthGrid::kCells; ++cell) {
            SCOPED_TRACE(cell);
            const int id = ids::optDayOfMonth(cell);
            ASSERT_EQ(dialog.IsVisible(id), grid.DayAt(cell) != 0);
            if (!dialog.IsVisible(id)) {
                continue;
            }
            EXPECT_EQ(dialog.Text(id), std::to_wstring(grid.DayAt(cell)));
            // Inside the frame that today has and the focus mark, a cell shows its background.
            RECT area{};
            GetClientRect(dialog.Control(id), &area);
            const HDC dc = GetDC(dialog.Control(id));
            EXPECT_EVENTUALLY(GetPixel(dc, 4, area.bottom / 2) ==
                              GetSysColor(dialog.IsChecked(id) ? COLOR_HIGHLIGHT : COLOR_WINDOW));
            EXPECT_EVENTUALLY((GetPixel(dc, 0, area.bottom / 2) == GetSysColor(COLOR_HOTLIGHT)) ==
                              (grid.DayAt(cell) == now.wDay));
            ReleaseDC(dialog.Control(id), dc);
        }
        dialog.Key(VK_ESCAPE);
    });
}

TEST(DateDialog, TabVisitsEverythingOnceAndMnemonicsDoNotClash) {
    const auto work = [](const Dialog& dialog) {
        std::vector<int> order;
        do {
            order.push_back(dialog.FocusId());
            dialog.Key(VK_TAB);
            EXPECT_EVENTUALLY(dialog.FocusId() != order.back());
        } while (dialog.FocusId() != order.front() && order.size() < 100);
        EXPECT_EQ(order, (std::vector<int>{ids::optDayOfMonth(19), kHour, kMinute, kAmPm, ids::chkNull, IDOK, IDCANCEL,
                                           ids::cmdMonthMove[0], ids::cboMonth, ids::txtYear, ids::cmdMonthMove[1]}));
        std::wstring mnemonics;
        for (HWND control = GetWindow(dialog.Window(), GW_CHILD); control != nullptr;
             control = GetWindow(control, GW_HWNDNEXT)) {
            const std::wstring text = TextOf(control);
            if (const size_t mark = text.find(L'&'); mark != std::wstring::npos && IsWindowVisible(control)) {
                mnemonics += static_cast<wchar_t>(towupper(text[mark + 1]));
            }
        }
        std::sort(mnemonics.begin(), mnemonics.end());
        EXPECT_EQ(mnemonics, L"ADHIMNY");
        // A screen reader takes the static text before a field for its name.
        for (const int field : {ids::cboMonth, ids::txtYear, kHour, kMinute, kAmPm}) {
            EXPECT_TRUE(TextOf(GetWindow(dialog.Control(field), GW_HWNDPREV)).ends_with(L":")) << field;
        }
        dialog.Key(VK_ESCAPE);
    };
    AskDate(DateOf(2024, 12, 20), work, {.dateCannotBeNull = false});
}

}  // namespace v5::test
