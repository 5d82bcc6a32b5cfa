// The dialogs that all programs of the product share, each shown modally by one call: the window belongs to the
// calling thread's active window and the call returns when the user (or the time-out) has closed it. Each call may
// throw std::system_error when the system has no room for a window.
#pragma once

#include "dialogs/DateDialogModel.h"
#include "dialogs/TimeFields.h"
#include "dialogs/TimedMessageBoxModel.h"

namespace v5 {

class Clock;

// Lets the user pick a date, with or without time of day. Gives the automation date, kDateCancelled or kNoDate.
// Throws std::out_of_range when the initial date is none. The clock tells which day is today.
double ShowDateDialog(const DateDialogSettings& settings, const Clock& clock);

struct TimeDialogResult {
    double time = 0.0;  // the entered time of day as an automation date, also when cancelled
    bool cancelled = false;
};

// Lets the user enter a time of day. Throws std::out_of_range when the initial time is no automation date.
TimeDialogResult ShowTimeDialog(const TimeDialogSettings& settings);

// Shows a message box that presses its default button by itself after a time. Gives the result of the button that
// closed it; Cancel when the thread was asked to quit meanwhile.
MessageBoxResult ShowTimedMessageBox(const TimedMessageBoxSettings& settings);

}  // namespace v5
