#include "productinfo/BannerForm.h"

#include <commctrl.h>

#include "productinfo/Pictures.h"

namespace v5 {
namespace {

constexpr int imgLogo = 400;
constexpr int kFullBitmap = 102;  // VantorBitmap_Full_256Color_310x140

// The picture's size at 96 DPI, by which the form is laid out.
constexpr int kPictureWidth = 310;
constexpr int kPictureHeight = 140;

void Paint(IPicture& picture, const DRAWITEMSTRUCT& item) {
    OLE_XSIZE_HIMETRIC width = 0;
    OLE_YSIZE_HIMETRIC height = 0;
    picture.get_Width(&width);
    picture.get_Height(&height);
    const RECT& box = item.rcItem;
    SetStretchBltMode(item.hDC, HALFTONE);  // smooth on dense displays
    SetBrushOrgEx(item.hDC, 0, 0, nullptr);
    picture.Render(item.hDC, box.left, box.top, box.right - box.left, box.bottom - box.top, 0, height, width, -height,
                   nullptr);
}

}  // namespace

BannerForm::BannerForm(std::wstring title) : ModalForm(std::move(title)) {
    LoadBitmapPicture(kFullBitmap).As(&mPicture);
}

void BannerForm::AddBanner() {
    AddControl({imgLogo, WC_STATICW, L"Vantor", SS_OWNERDRAW});
}

void BannerForm::AddText(int id, const std::wstring& text) {
    AddControl({id, WC_STATICW, text.c_str(), SS_LEFT | SS_NOPREFIX});
}

void BannerForm::AddClose() {
    AddControl({cmdClose, WC_BUTTONW, L"Close", WS_TABSTOP | BS_DEFPUSHBUTTON});
}

void BannerForm::PlaceBanner() {
    Place(imgLogo, RECT{0, 0, Width(), BannerHeight()});
}

int BannerForm::TextHeight(int id, int width) const {
    const std::wstring text = TextOf(id);
    if (text.empty()) {
        return 0;
    }
    const HWND control = Control(id);
    const HDC dc = GetDC(control);
    const HGDIOBJ previous = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
    RECT box{0, 0, width, 0};
    DrawTextW(dc, text.c_str(), -1, &box, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS);
    SelectObject(dc, previous);
    ReleaseDC(control, dc);
    return box.bottom;
}

int BannerForm::PlaceText(int id, int left, int right, int top) const {
    const int bottom = top + TextHeight(id, right - left);
    Place(id, RECT{left, top, right, bottom});
    return bottom;
}

SIZE BannerForm::PlaceClose(int top) const {
    const int height = UnitsY(units::kButtonHeight);
    Place(cmdClose, RECT{RightMargin() - UnitsX(units::kButtonWidth), top, RightMargin(), top + height});
    return {Width(), top + height + UnitsY(units::kMargin)};
}

int BannerForm::Width() const {
    return MulDiv(kPictureWidth, static_cast<int>(Dpi()), USER_DEFAULT_SCREEN_DPI);
}

int BannerForm::BannerHeight() const {
    return MulDiv(kPictureHeight, static_cast<int>(Dpi()), USER_DEFAULT_SCREEN_DPI);
}

void BannerForm::Embolden(int id) {
    if (mBoldDpi != Dpi()) {
        mBoldFont = CreateMessageFont(Dpi(), true);
        mBoldDpi = Dpi();
    }
    SendMessageW(Control(id), WM_SETFONT, reinterpret_cast<WPARAM>(mBoldFont.get()), FALSE);
}

void BannerForm::OnOpening() {
    SetFocus(Control(cmdClose));
}

void BannerForm::OnCommand(int id, int) {
    if (id == cmdClose) {
        Close();
    }
}

std::optional<LRESULT> BannerForm::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DRAWITEM && wParam == imgLogo) {
        Paint(*mPicture.Get(), *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    }
    return std::nullopt;
}

}  // namespace v5
