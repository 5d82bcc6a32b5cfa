// The identifiers of the dialogs' controls, by the names of the controls. OK and Cancel are 1 and 2 everywhere, and the
// buttons of the timed message box have their results, 1 to 7. The tests and other tools that work the windows from
// outside rely on these numbers.
#pragma once

#include "dialogs/MonthGrid.h"
#include "dialogs/TimeFields.h"
#include "dialogs/TimedMessageBoxModel.h"

namespace v5::ids {

inline constexpr int cmdOK = 1;      // IDOK of the system
inline constexpr int cmdCancel = 2;  // IDCANCEL

// Timed message box.
inline constexpr int imgIcons = 100;
inline constexpr int lblPrompt = 101;
constexpr int cmdButtons(MessageBoxResult result) {
    return static_cast<int>(result);
}

// Date dialog.
inline constexpr int lblMonth = 110;
inline constexpr int cboMonth = 111;
inline constexpr int lblYear = 112;
inline constexpr int txtYear = 113;
inline constexpr int updownYear = 114;
inline constexpr int cmdMonthMove[] = {115, 116};  // back and forward
inline constexpr int fraDay = 117;
inline constexpr int fraTime = 118;
inline constexpr int chkNull = 119;

// The weekday headings, Sunday first.
constexpr int lblWeekday(int day) {
    return 300 + day;
}

// The day buttons, one for each cell of the grid.
inline constexpr int kFirstDay = 400;
constexpr int optDayOfMonth(int cell) {
    return kFirstDay + cell;
}
constexpr bool IsDayOfMonth(int id) {
    return id >= kFirstDay && id < kFirstDay + MonthGrid::kCells;
}

// Time dialog.
inline constexpr int chk24Hour = 120;

// The time fields of both: a label, a text box and an up-down control for each part, ten numbers apart.
inline constexpr int lblHour = 200, txtHour = 201, updownHour = 202;
inline constexpr int txtMinute = 211, updownMinute = 212;
inline constexpr int txtAMPM = 221, updownAMPM = 222;
constexpr int PartOffset(TimePart part) {
    return 10 * static_cast<int>(part);
}
constexpr int TimeLabel(TimePart part) {
    return lblHour + PartOffset(part);
}
constexpr int TimeText(TimePart part) {
    return txtHour + PartOffset(part);
}
constexpr int TimeUpDown(TimePart part) {
    return updownHour + PartOffset(part);
}
static_assert(TimeText(TimePart::Minute) == txtMinute && TimeUpDown(TimePart::Minute) == updownMinute &&
              TimeText(TimePart::AmPm) == txtAMPM && TimeUpDown(TimePart::AmPm) == updownAMPM);

// DAHS chooser.
inline constexpr int lsvDahsList = 130;

// Password box.
inline constexpr int lblMsg = 140;
inline constexpr int txtPassword = 141;

}  // namespace v5::ids
