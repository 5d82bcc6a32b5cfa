// What the about box and the support information box have in common: the product's picture across the top, wrapped
// texts below it, and a Close button.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <wrl/client.h>

#include "dialogs/DisplayScale.h"
#include "dialogs/ModalForm.h"

namespace v5 {

class BannerForm : public ModalForm {
  protected:
    // Loads the picture; throws AutomationError.
    explicit BannerForm(std::wstring title);

    static constexpr int cmdClose = IDCANCEL;  // so that Esc and the window's close box press it, too

    // Create the picture, a text that shows "&" as it is, and the Close button (the last control of the tab order).
    void AddBanner();
    void AddText(int id, const std::wstring& text);
    void AddClose();

    // Places the picture, at its size for the present Dpi(). What follows goes below it with the form's margins.
    void PlaceBanner();

    // Places a text between two distances from the left edge, in pixels, at a height in pixels, and gives the height
    // below it. A text that does not fit on one line is wrapped; an empty one takes no room.
    int PlaceText(int id, int left, int right, int top) const;

    // Places the Close button below `top` and gives the size of the whole form.
    SIZE PlaceClose(int top) const;

    // Pixels: the width of the form and its left and right margins.
    int Width() const;
    int LeftMargin() const { return UnitsX(units::kMargin); }
    int RightMargin() const { return Width() - LeftMargin(); }
    int BannerHeight() const;

    // Makes a text bold, after each change of the form's density.
    void Embolden(int id);

    void OnOpening() override;
    void OnCommand(int id, int notification) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    int TextHeight(int id, int width) const;

    Microsoft::WRL::ComPtr<IPicture> mPicture;
    OwnedHandle<HFONT> mBoldFont;
    UINT mBoldDpi = 0;
};

}  // namespace v5
