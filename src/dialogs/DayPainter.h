// How the date dialog's day and arrow buttons look: a calendar's cells in the system's colours.
#pragma once

#include <windows.h>

#include <commctrl.h>

namespace v5 {

// Answer a button's NM_CUSTOMDRAW notification. Where the system does not ask (without visual styles) the buttons draw
// themselves: the selected day is pressed, today is bold, the arrow buttons show their names.

// A day of the grid, with the button's own font and text: the selected day in the selection's colours, today in a
// frame.
LRESULT PaintDay(const NMCUSTOMDRAW& draw, bool today, bool selected);

// A push button with an arrow to the left or to the right instead of its text.
LRESULT PaintArrow(const NMCUSTOMDRAW& draw, bool right);

}  // namespace v5
