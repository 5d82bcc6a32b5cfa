// How dense the display under a window is, and how large the system's texts are there.
#pragma once

#include <windows.h>

#include <string_view>

#include "platform/OwnedHandle.h"

namespace v5 {

// The dots per inch (96 is 100 %) at which a window is drawn.
UINT DpiOf(HWND window);

// The system's message box font at a density, in normal or bold weight. Null only when the system has no memory left.
OwnedHandle<HFONT> CreateMessageFont(UINT dpi, bool bold = false);

// The size in pixels of a text of one or more lines, as a static control of a window draws it in a font: tabs are
// expanded, "&" is a plain character.
SIZE MeasureText(HWND window, HFONT font, std::wstring_view text);

}  // namespace v5
