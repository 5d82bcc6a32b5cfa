// The identifiers of the dialogs' controls. OK and Cancel are 1 and 2 everywhere, and the buttons of the timed message
// box have their results, 1 to 7. The tests and other tools that work the windows from outside rely on these numbers.
#pragma once

#include "dialogs/MonthGrid.h"
#include "dialogs/TimeFields.h"

namespace v5::ids {

// Timed message box.
inline constexpr int kIcon = 100;
inline constexpr int kPrompt = 101;

// Date dialog.
inline constexpr int kMonthLabel = 110;
inline constexpr int kMonth = 111;
inline constexpr int kYearLabel = 112;
inline constexpr int kYear = 113;
inline constexpr int kYearUpDown = 114;
inline constexpr int kPreviousMonth = 115;
inline constexpr int kNextMonth = 116;
inline constexpr int kDayGroup = 117;
inline constexpr int kTimeGroup = 118;
inline constexpr int kNoDateBox = 119;
inline constexpr int kFirstHeading = 300;  // the weekday headings, Sunday first
inline constexpr int kFirstDay = 400;      // the day buttons, one for each cell of the grid

constexpr int Day(int cell) {
    return kFirstDay + cell;
}
constexpr bool IsDay(int id) {
    return id >= kFirstDay && id < kFirstDay + MonthGrid::kCells;
}

// Time dialog.
inline constexpr int k24Hour = 120;

// The time fields of both: a label, a text box and an up-down control for each part.
constexpr int TimeLabel(TimePart part) {
    return 200 + 10 * static_cast<int>(part);
}
constexpr int TimeText(TimePart part) {
    return TimeLabel(part) + 1;
}
constexpr int TimeUpDown(TimePart part) {
    return TimeLabel(part) + 2;
}

// DAHS chooser.
inline constexpr int kDahsList = 130;

// Password box.
inline constexpr int kPasswordMessage = 140;
inline constexpr int kPassword = 141;

}  // namespace v5::ids
