// How dense the display under a window is, and how large the system's texts are there.
#pragma once

#include <windows.h>

#include <memory>
#include <string_view>
#include <type_traits>

namespace v5 {

struct FontDeleter {
    void operator()(HFONT font) const { DeleteObject(font); }
};
using FontHandle = std::unique_ptr<std::remove_pointer_t<HFONT>, FontDeleter>;

// The dots per inch (96 is 100 %) at which a window is drawn.
UINT DpiOf(HWND window);

// The system's message box font at a density, in normal or bold weight. Null only when the system has no memory left.
FontHandle CreateMessageFont(UINT dpi, bool bold = false);

// The size in pixels of a text of one or more lines, as a static control of a window draws it in a font: tabs are
// expanded, "&" is a plain character.
SIZE MeasureText(HWND window, HFONT font, std::wstring_view text);

}  // namespace v5
