#include <windows.h>

#include <set>

#include "Calls.h"
#include "dialogs/ControlIds.h"

namespace v5::test {

namespace {

constexpr wchar_t kDateTitle[] = L"Date under test";
constexpr wchar_t kTimeTitle[] = L"Time under test";

constexpr int kHour = ids::TimeText(TimePart::Hour);
constexpr int kMinute = ids::TimeText(TimePart::Minute);
constexpr int kAmPm = ids::TimeText(TimePart::AmPm);

using Work = std::function<void(const Dialog&)>;

TimeAnswer AskTime(double initial, const Work& work) {
    TimeAnswer answer;
    ModalCall call([&] { answer = GetTimeFromUser(kTimeTitle, initial); });
    work(Dialog(kTimeTitle));
    call.Wait();
    return answer;
}

struct DateOptions {
    bool dateOnly = false;
    bool minutesAlso = true;
    bool dateCannotBeNull = true;
};

double AskDate(double initial, const Work& work, DateOptions options = {}) {
    double answer = -2;
    ModalCall call([&] {
        answer = GetDateFromUser(kDateTitle, initial, options.dateOnly, options.minutesAlso, options.dateCannotBeNull);
    });
    work(Dialog(kDateTitle));
    call.Wait();
    return answer;
}

constexpr double kMinuteOfDay = 1.0 / 1440;

// The half of an up-down control that steps up or down.
RECT HalfOf(HWND upDown, bool up) {
    RECT area{};
    GetClientRect(upDown, &area);
    (up ? area.bottom : area.top) = (area.top + area.bottom) / 2;
    return area;
}

void ClickUpDown(const Dialog& dialog, TimePart part, bool up) {
    const HWND upDown = dialog.Control(ids::TimeUpDown(part));
    dialog.Click(upDown, HalfOf(upDown, up));
}

// The day that the grid shows as selected; 0 when not exactly one is.
int SelectedDay(const Dialog& dialog) {
    int day = 0;
    for (int cell = 0; cell < MonthGrid::kCells; ++cell) {
        if (dialog.IsChecked(ids::optDayOfMonth(cell))) {
            if (day != 0) {
                return 0;
            }
            day = _wtoi(dialog.Text(ids::optDayOfMonth(cell)).c_str());
        }
    }
    return day;
}

std::wstring Shown(const Dialog& dialog) {
    return std::to_wstring(SelectedDay(dialog)) + L" " + dialog.Text(ids::cboMonth) + L" " + dialog.Text(ids::txtYear);
}

// The controls that Tab visits, from the present one on, once around.
std::vector<int> TabOrder(const Dialog& dialog) {
    std::vector<int> order;
    const int first = dialog.FocusId();
    int focus = first;
    do {
        order.push_back(focus);
        dialog.Key(VK_TAB);
        EXPECT_EVENTUALLY(dialog.FocusId() != focus);
        focus = dialog.FocusId();
    } while (focus != first && order.size() < 100);
    return order;
}

}  // namespace

TEST(TimeDialog, ShowsTheInitialTimeAndReturnsWhatIsTyped) {
    const TimeAnswer answer = AskTime(DateOf(2024, 3, 5, 13, 5), [](const Dialog& dialog) {
        EXPECT_EQ(dialog.Text(kHour) + L":" + dialog.Text(kMinute) + dialog.Text(kAmPm), L"1:05PM");
        EXPECT_EQ(dialog.Text(ids::chk24Hour), L"Use 24 hour format");
        EXPECT_FALSE(dialog.IsChecked(ids::chk24Hour));
        EXPECT_EQ(dialog.FocusId(), kHour);
        dialog.Type(L"1x2");  // the hour is selected as a whole; x is ignored
        EXPECT_EVENTUALLY(dialog.Text(kHour) == L"12");
        dialog.Type(L"3");  // no room
        dialog.Key(VK_TAB);
        EXPECT_EVENTUALLY(dialog.FocusId() == kMinute);
        dialog.Type(L"7");
        EXPECT_EVENTUALLY(dialog.Text(kMinute) == L"7");
        dialog.Key(VK_TAB);
        EXPECT_EVENTUALLY(dialog.Text(kMinute) == L"07");
        dialog.Type(L"a");
        EXPECT_EVENTUALLY(dialog.Text(kAmPm) == L"AM");
        dialog.Key(VK_RETURN);
    });
    EXPECT_DOUBLE_EQ(answer.time, 7 * kMinuteOfDay);
    EXPECT_FALSE(answer.cancelled);
}

TEST(TimeDialog, KeysEditTheFieldsAndMoveBetweenThem) {
    const TimeAnswer answer = AskTime(10.0 / 24, [](const Dialog& dialog) {
        dialog.Keys({VK_END, VK_BACK});
        EXPECT_EVENTUALLY(dialog.Text(kHour) == L"1");
        dialog.Type(L"5");  // 15 is no hour here
        dialog.Type(L"1");
        EXPECT_EVENTUALLY(dialog.Text(kHour) == L"11");
        dialog.Key(VK_RIGHT);
        EXPECT_EVENTUALLY(dialog.FocusId() == kMinute);
        dialog.Keys({VK_DELETE});  // the field is selected as a whole
        EXPECT_EVENTUALLY(dialog.Text(kMinute).empty());
        dialog.Key(VK_RIGHT);
        EXPECT_EVENTUALLY(dialog.FocusId() == kAmPm);
        EXPECT_EQ(dialog.Text(kMinute), L"00");  // an empty field is put right
        dialog.Keys({VK_LEFT, VK_LEFT});
        EXPECT_EVENTUALLY(dialog.FocusId() == kHour || dialog.FocusId() == kMinute);
        dialog.Key(VK_RETURN);
    });
    EXPECT_DOUBLE_EQ(answer.time, 11.0 / 24);
}

TEST(TimeDialog, NothingButDigitsIsPasted) {
    AskTime(10.0 / 24, [](const Dialog& dialog) {
        SendMessageW(dialog.Control(kHour), EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(L"3"));
        SendMessageW(dialog.Control(kHour), WM_PASTE, 0, 0);
        EXPECT_EQ(dialog.Text(kHour), L"3");
        SendMessageW(dialog.Control(kAmPm), WM_CUT, 0, 0);
        SendMessageW(dialog.Control(kAmPm), WM_CLEAR, 0, 0);
        EXPECT_EQ(dialog.Text(kAmPm), L"AM");
        dialog.Key(VK_ESCAPE);
    });
}

TEST(TimeDialog, UpDownsStepAroundAndFlip) {
    const TimeAnswer answer = AskTime(0.5, [](const Dialog& dialog) {
        EXPECT_EQ(dialog.Text(kHour) + dialog.Text(kAmPm), L"12PM");
        dialog.Key(VK_DOWN);
        EXPECT_EVENTUALLY(dialog.Text(kHour) + dialog.Text(kAmPm) == L"11AM");
        ClickUpDown(dialog, TimePart::Hour, true);
        EXPECT_EVENTUALLY(dialog.Text(kHour) + dialog.Text(kAmPm) == L"12PM");
        DWORD start = 1;
        DWORD end = 0;
        EXPECT_EVENTUALLY((SendMessageW(dialog.Control(kHour), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                                        reinterpret_cast<LPARAM>(&end)),
                           start == 0 && end == 2));
        ClickUpDown(dialog, TimePart::Hour, true);
        EXPECT_EVENTUALLY(dialog.Text(kHour) + dialog.Text(kAmPm) == L"1PM");
        ClickUpDown(dialog, TimePart::Minute, false);
        EXPECT_EVENTUALLY(dialog.Text(kMinute) == L"59");
        ClickUpDown(dialog, TimePart::Minute, true);
        EXPECT_EVENTUALLY(dialog.Text(kMinute) == L"00");
        ClickUpDown(dialog, TimePart::AmPm, true);
        EXPECT_EVENTUALLY(dialog.Text(kAmPm) == L"AM");
        dialog.Click(IDOK);
    });
    EXPECT_DOUBLE_EQ(answer.time, 1.0 / 24);
}

TEST(TimeDialog, ClockSwitch) {
    const TimeAnswer answer = AskTime(13.0 / 24 + 5 * kMinuteOfDay, [](const Dialog& dialog) {
        dialog.Click(ids::chk24Hour);
        EXPECT_EVENTUALLY(dialog.Text(kHour) == L"13");
        EXPECT_FALSE(dialog.IsVisible(kAmPm));
        EXPECT_FALSE(dialog.IsVisible(ids::TimeUpDown(TimePart::AmPm)));
        dialog.Click(ids::chk24Hour);
        EXPECT_EVENTUALLY(dialog.Text(kHour) == L"1");
        EXPECT_TRUE(dialog.IsVisible(kAmPm));
        EXPECT_EQ(dialog.Text(kAmPm), L"PM");
        dialog.Click(ids::chk24Hour);
        EXPECT_EVENTUALLY(dialog.Text(kHour) == L"13");
        dialog.Click(kHour);
        dialog.Keys({VK_HOME});
        dialog.Key(VK_END, VK_SHIFT);
        dialog.Type(L"0");
        EXPECT_EVENTUALLY(dialog.Text(kHour) == L"0");
        dialog.Key(VK_RETURN);
    });
    EXPECT_DOUBLE_EQ(answer.time, 5 * kMinuteOfDay);
}

TEST(DateDialog, ReturnsTheInitialDateAndTime) {
    const double initial = DateOf(2024, 12, 20, 13, 30);
    EXPECT_DOUBLE_EQ(
        AskDate(initial,
                [](const Dialog& dialog) {
                    EXPECT_EQ(Shown(dialog), L"20 December 2024");
                    EXPECT_EQ(dialog.Text(kHour) + L":" + dialog.Text(kMinute) + dialog.Text(kAmPm), L"1:30PM");
                    EXPECT_FALSE(dialog.IsVisible(ids::chkNull));
                    EXPECT_EQ(dialog.FocusId(), ids::optDayOfMonth(19));  // December 2024 starts with a Sunday
                    dialog.Key(VK_RETURN);
                }),
        initial);
    const struct {
        DateOptions options;
        bool hour;
        double answer;
    } cases[] = {{{.dateOnly = true}, false, DateOf(2024, 12, 20)},
                 {{.minutesAlso = false}, true, DateOf(2024, 12, 20, 13)}};
    for (const auto& each : cases) {
        const auto work = [&](const Dialog& dialog) {
            EXPECT_EQ(dialog.IsVisible(kHour), each.hour);
            EXPECT_FALSE(dialog.IsVisible(kMinute));
            dialog.Click(IDOK);
        };
        EXPECT_DOUBLE_EQ(AskDate(initial, work, each.options), each.answer);
    }
}

TEST(DateAndTimeDialog, EveryWayToCancel) {
    const Work ways[] = {[](const Dialog& dialog) { dialog.Key(VK_ESCAPE); },
                         [](const Dialog& dialog) { dialog.Click(IDCANCEL); },
                         [](const Dialog& dialog) { PostMessageW(dialog.Window(), WM_SYSCOMMAND, SC_CLOSE, 0); }};
    for (const Work& way : ways) {
        EXPECT_TRUE(AskTime(0.25, way).cancelled);
        EXPECT_EQ(AskDate(DateOf(2024, 12, 20), way), 0.0);
    }
}

TEST(DateDialog, GridGoesAcrossTheTurnOfTheYear) {
    const auto work = [](const Dialog& dialog) {
        const std::pair<std::vector<WORD>, const wchar_t*> steps[] = {{{VK_RIGHT}, L"1 January 2024"},
                                                                      {{VK_UP}, L"25 December 2023"},
                                                                      {{VK_DOWN}, L"1 January 2024"},
                                                                      {{VK_LEFT}, L"31 December 2023"},
                                                                      {{VK_NEXT, VK_NEXT}, L"29 February 2024"},
                                                                      {{VK_PRIOR}, L"29 January 2024"}};
        for (const auto& [keys, shown] : steps) {
            dialog.Keys(keys);
            EXPECT_EVENTUALLY(Shown(dialog) == shown);
        }
        dialog.Click(ids::cmdMonthMove[0]);
        EXPECT_EVENTUALLY(Shown(dialog) == L"29 December 2023");
        dialog.Click(ids::cmdMonthMove[1]);
        EXPECT_EVENTUALLY(Shown(dialog) == L"29 January 2024");
        // January 2024 starts with a Monday, and its last two rows end with the 31st, a Wednesday.
        EXPECT_FALSE(dialog.IsVisible(ids::optDayOfMonth(0)));
        EXPECT_EQ(dialog.Text(ids::optDayOfMonth(1)), L"1");
        EXPECT_EQ(dialog.Text(ids::optDayOfMonth(31)), L"31");
        EXPECT_TRUE(dialog.IsVisible(ids::optDayOfMonth(31)));
        EXPECT_FALSE(dialog.IsVisible(ids::optDayOfMonth(32)));
        dialog.Click(ids::optDayOfMonth(15));
        EXPECT_EVENTUALLY(Shown(dialog) == L"15 January 2024");
        dialog.Key(VK_RETURN);
    };
    EXPECT_DOUBLE_EQ(AskDate(DateOf(2023, 12, 31), work, {.dateOnly = true}), DateOf(2024, 1, 15));
}

TEST(DateDialog, MonthListAndYearField) {
    EXPECT_DOUBLE_EQ(AskDate(DateOf(2024, 2, 29),
                             [](const Dialog& dialog) {
                                 dialog.Key('Y', VK_MENU);
                                 EXPECT_EVENTUALLY(dialog.FocusId() == ids::txtYear);
                                 dialog.Key(VK_UP);
                                 EXPECT_EVENTUALLY(Shown(dialog) == L"28 February 2025");
                                 dialog.Type(L"2028");  // the year is selected as a whole
                                 EXPECT_EVENTUALLY(Shown(dialog) == L"28 February 2028");
                                 dialog.Key('M', VK_MENU);
                                 EXPECT_EVENTUALLY(dialog.FocusId() == ids::cboMonth);
                                 dialog.Key('O');
                                 EXPECT_EVENTUALLY(Shown(dialog) == L"28 October 2028");
                                 dialog.Key('Y', VK_MENU);
                                 EXPECT_EVENTUALLY(dialog.FocusId() == ids::txtYear);
                                 dialog.Keys({VK_BACK, '9', '9'});
                                 EXPECT_EVENTUALLY(dialog.Text(ids::txtYear) == L"99");
                                 dialog.Key('D', VK_MENU);
                                 EXPECT_EVENTUALLY(dialog.Text(ids::txtYear) == L"2028");  // 99 is no year here
                                 const HWND upDown = dialog.Control(ids::updownYear);
                                 dialog.Click(upDown, HalfOf(upDown, false));
                                 EXPECT_EVENTUALLY(Shown(dialog) == L"28 October 2027");
                                 dialog.Key(VK_RETURN);
                             },
                             {.dateOnly = true}),
                     DateOf(2027, 10, 28));
}

TEST(DateDialog, NoDate) {
    EXPECT_EQ(AskDate(DateOf(2024, 12, 20),
                      [](const Dialog& dialog) {
                          dialog.Click(ids::chkNull);
                          EXPECT_EVENTUALLY(dialog.IsChecked(ids::chkNull));
                          EXPECT_EVENTUALLY(!dialog.IsEnabled(ids::optDayOfMonth(19)) && !dialog.IsEnabled(kHour));
                          dialog.Key(VK_RETURN);
                      },
                      {.dateCannotBeNull = false}),
              -1.0);
    EXPECT_EQ(AskDate(-1.0,
                      [](const Dialog& dialog) {
                          EXPECT_TRUE(dialog.IsChecked(ids::chkNull));
                          dialog.Key(VK_RETURN);
                      },
                      {.dateCannotBeNull = false}),
              -1.0);
}

TEST(DateDialog, TodayAndTheSelectedDayLookDifferent) {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    AskDate(0.0, [&](const Dialog& dialog) {
        const int today = now.wDay;
        EXPECT_EQ(SelectedDay(dialog), today);
        dialog.Key(today > 14 ? VK_UP : VK_DOWN);
        EXPECT_EVENTUALLY(SelectedDay(dialog) != today);
        // Inside the frame that today has and the focus mark, a cell shows its background.
        for (int cell = 14; cell < 28; ++cell) {
            const HWND button = dialog.Control(ids::optDayOfMonth(cell));
            RECT area{};
            GetClientRect(button, &area);
            const HDC dc = GetDC(button);
            EXPECT_EVENTUALLY(GetPixel(dc, 4, area.bottom / 2) ==
                              GetSysColor(dialog.IsChecked(ids::optDayOfMonth(cell)) ? COLOR_HIGHLIGHT : COLOR_WINDOW));
            const bool isToday = _wtoi(dialog.Text(ids::optDayOfMonth(cell)).c_str()) == today;
            EXPECT_EVENTUALLY((GetPixel(dc, 0, area.bottom / 2) == GetSysColor(COLOR_HOTLIGHT)) == isToday);
            ReleaseDC(button, dc);
        }
        dialog.Key(VK_ESCAPE);
    });
}

TEST(DateDialog, TabVisitsEverythingOnceAndMnemonicsDoNotClash) {
    AskDate(DateOf(2024, 12, 20),
            [](const Dialog& dialog) {
                const std::vector<int> expected = {ids::optDayOfMonth(19),
                                                   kHour,
                                                   kMinute,
                                                   kAmPm,
                                                   ids::chkNull,
                                                   IDOK,
                                                   IDCANCEL,
                                                   ids::cmdMonthMove[0],
                                                   ids::cboMonth,
                                                   ids::txtYear,
                                                   ids::cmdMonthMove[1]};
                EXPECT_EQ(TabOrder(dialog), expected);
                std::multiset<wchar_t> mnemonics;
                for (HWND control = GetWindow(dialog.Window(), GW_CHILD); control != nullptr;
                     control = GetWindow(control, GW_HWNDNEXT)) {
                    const std::wstring text = TextOf(control);
                    if (const size_t mark = text.find(L'&'); mark != std::wstring::npos && IsWindowVisible(control)) {
                        mnemonics.insert(static_cast<wchar_t>(towupper(text[mark + 1])));
                    }
                }
                EXPECT_EQ(mnemonics, (std::multiset<wchar_t>{L'A', L'D', L'H', L'I', L'M', L'N', L'Y'}));
                // A screen reader takes the static text before a field for its name.
                for (const int field : {ids::cboMonth, ids::txtYear, kHour, kMinute, kAmPm}) {
                    EXPECT_TRUE(TextOf(GetWindow(dialog.Control(field), GW_HWNDPREV)).ends_with(L":")) << field;
                }
                dialog.Key(VK_ESCAPE);
            },
            {.dateCannotBeNull = false});
}

}  // namespace v5::test
