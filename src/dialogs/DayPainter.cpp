#include "dialogs/DayPainter.h"

#include <algorithm>
#include <iterator>

namespace v5 {

namespace {

struct CellColours {
    int background;  // as for GetSysColor
    int text;
};

CellColours ColoursOf(UINT state, bool selected) {
    if ((state & CDIS_DISABLED) != 0) {
        return {COLOR_BTNFACE, COLOR_GRAYTEXT};
    }
    if (selected) {
        return {COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT};
    }
    return {COLOR_WINDOW, COLOR_WINDOWTEXT};
}

bool ShowsFocus(HWND button) {
    const auto state = static_cast<UINT>(SendMessageW(button, WM_QUERYUISTATE, 0, 0));
    return GetFocus() == button && (state & UISF_HIDEFOCUS) == 0;
}

}  // namespace

LRESULT PaintDay(const NMCUSTOMDRAW& draw, bool today, bool selected) {
    if (draw.dwDrawStage != CDDS_PREERASE && draw.dwDrawStage != CDDS_PREPAINT) {
        return CDRF_DODEFAULT;
    }
    const HWND button = draw.hdr.hwndFrom;
    const CellColours colours = ColoursOf(draw.uItemState, selected);
    RECT cell = draw.rc;
    FillRect(draw.hdc, &cell, GetSysColorBrush(colours.background));
    if (today) {
        RECT frame = cell;
        for (int width = 0; width < std::max<LONG>(2, (cell.bottom - cell.top) / 12); ++width) {
            FrameRect(draw.hdc, &frame, GetSysColorBrush(selected ? colours.text : COLOR_HOTLIGHT));
            InflateRect(&frame, -1, -1);
        }
    }
    wchar_t text[3] = L"";
    GetWindowTextW(button, text, static_cast<int>(std::size(text)));
    const auto font = reinterpret_cast<HFONT>(SendMessageW(button, WM_GETFONT, 0, 0));
    const HGDIOBJ previous = SelectObject(draw.hdc, font);
    SetBkMode(draw.hdc, TRANSPARENT);
    SetTextColor(draw.hdc, GetSysColor(colours.text));
    DrawTextW(draw.hdc, text, -1, &cell, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    SelectObject(draw.hdc, previous);
    if (ShowsFocus(button)) {
        InflateRect(&cell, -1, -1);
        SetTextColor(draw.hdc, GetSysColor(COLOR_WINDOWTEXT));
        DrawFocusRect(draw.hdc, &cell);
    }
    return CDRF_SKIPDEFAULT;
}

LRESULT PaintArrow(const NMCUSTOMDRAW& draw, bool right) {
    if (draw.dwDrawStage != CDDS_PREPAINT) {
        return CDRF_DODEFAULT;
    }
    const LONG size = (draw.rc.bottom - draw.rc.top) / 5;
    const LONG middle = (draw.rc.top + draw.rc.bottom) / 2;
    const LONG centre = (draw.rc.left + draw.rc.right) / 2;
    const LONG tip = right ? centre + size / 2 : centre - size / 2;
    const LONG base = right ? tip - size : tip + size;
    const POINT arrow[] = {{base, middle - size}, {tip, middle}, {base, middle + size}};
    const int colour = (draw.uItemState & CDIS_DISABLED) != 0 ? COLOR_GRAYTEXT : COLOR_BTNTEXT;
    const HGDIOBJ brush = SelectObject(draw.hdc, GetSysColorBrush(colour));
    const HGDIOBJ pen = SelectObject(draw.hdc, GetStockObject(DC_PEN));
    SetDCPenColor(draw.hdc, GetSysColor(colour));
    Polygon(draw.hdc, arrow, static_cast<int>(std::size(arrow)));
    SelectObject(draw.hdc, pen);
    SelectObject(draw.hdc, brush);
    if (ShowsFocus(draw.hdr.hwndFrom)) {
        RECT focus = draw.rc;
        InflateRect(&focus, -3, -3);
        DrawFocusRect(draw.hdc, &focus);
    }
    return CDRF_SKIPDEFAULT;
}

}  // namespace v5
