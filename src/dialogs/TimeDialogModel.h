// What the time dialog knows and does, without its window.
#pragma once

#include <string>
#include <string_view>

#include "dialogs/TimeFields.h"

namespace v5 {

// `caption` without its spans from "{{" to the next "}}" after it, markers included; a "{{" without a later "}}" stays.
std::wstring FilterCaption(std::wstring_view caption);

struct TimeDialogSettings {
    std::wstring Title;            // the window's caption
    double DateTimeValue = 0.0;    // automation date; its time of day is shown at first
    bool Use24HourFormat = false;  // hours 0 to 23 without AM/PM field; the user can change it
    bool AllowUserToCancel = true;
};

class TimeDialogModel {
  public:
    // Throws std::out_of_range when the initial time is no automation date.
    explicit TimeDialogModel(const TimeDialogSettings& settings);

    bool Use24Hour() const { return mTime.Use24Hour(); }

    // The user ticks or clears the 24-hour box: shows the same time on the other clock. Nothing changes when that clock
    // is shown already.
    void SetUse24Hour(bool use24Hour);

    TimeFields& Time() { return mTime; }
    const TimeFields& Time() const { return mTime; }

    // The automation date of the entered time of day, on 30 December 1899.
    double DateTimeValue() const;

  private:
    TimeFields mTime;
};

}  // namespace v5
