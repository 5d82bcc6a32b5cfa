// The window of the support information box.
#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>

#include "platform/SystemFunction.h"
#include "productinfo/BannerForm.h"
#include "productinfo/ProductBoxes.h"

namespace v5 {
namespace {

// Opens an address ("mailto:…") with its registered handler. A failure is passed over.
void OpenAddress(HWND owner, const std::wstring& address) {
    SystemFunction<decltype(ShellExecuteW)>(L"shell32.dll", "ShellExecuteW")(owner, L"open", address.c_str(), nullptr,
                                                                             nullptr, SW_SHOWNORMAL);
}

constexpr COLORREF kLinkBlue = 0xFF0000;

// The link's blue; on a high-contrast display the colour that its user has chosen for links.
COLORREF LinkColour() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0);
    return (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0 ? GetSysColor(COLOR_HOTLIGHT) : kLinkBlue;
}

OwnedHandle<HFONT> Underlined(HFONT font) {
    LOGFONTW description{};
    GetObjectW(font, sizeof description, &description);
    description.lfUnderline = TRUE;
    return OwnedHandle<HFONT>(CreateFontIndirectW(&description));
}

class SupportForm final : public BannerForm {
  public:
    explicit SupportForm(const SupportInfo& info) : BannerForm(L"Vantor Support Information"), mInfo(info) {}

  protected:
    void CreateControls() override {
        AddBanner();
        for (const Row& row : mRows) {
            AddText(row.releaseId, row.package.release);
            AddText(row.dateId, row.package.installed);
        }
        AddControl({kLine, WC_STATICW, L"", SS_ETCHEDHORZ});
        AddText(lblCompany, mInfo.company);
        AddText(lblPhoneCaption, L"Phone:");
        AddText(lblPhone, mInfo.phone);
        AddText(lblEmailCaption, L"E-mail:");
        if (mInfo.emailIsLink) {
            // A button in a link's clothes: Tab reaches it, Space and Enter press it, screen readers read it.
            AddControl({lblEmail, WC_BUTTONW, mInfo.email.c_str(), WS_TABSTOP | BS_OWNERDRAW});
            HookControl(lblEmail, &SupportForm::ShowHandCursor);
        } else {
            AddText(lblEmail, mInfo.email);
        }
        AddClose();
    }

    SIZE LayOut() override {
        PlaceBanner();
        Embolden(lblCompany);
        int top = PlacePackages(BannerHeight() + UnitsY(units::kMargin)) + UnitsY(units::kGap);
        Place(kLine, RECT{LeftMargin(), top, RightMargin(), top + 2});
        top = PlaceText(lblCompany, LeftMargin(), RightMargin(), top + UnitsY(units::kGroupGap)) + UnitsY(units::kGap);
        top = PlaceCaptioned(lblPhoneCaption, lblPhone, top) + UnitsY(units::kGap) / 2;
        top = PlaceCaptioned(lblEmailCaption, lblEmail, top);
        if (mInfo.emailIsLink) {
            FitLink();
        }
        return PlaceClose(top + UnitsY(units::kGroupGap));
    }

    void OnCommand(int id, int notification) override {
        if (id == lblEmail && notification == BN_CLICKED && mInfo.emailIsLink) {
            OpenAddress(Window(), SupportMailAddress(mInfo.email, TextOf(lblVantorRelease)));
            return;
        }
        BannerForm::OnCommand(id, notification);
    }

    // Enter presses the link while it has the focus: as it draws itself, the dialog manager takes it for no button.
    bool OnQueuedMessage(const MSG& message) override {
        const bool presses = mInfo.emailIsLink && message.message == WM_KEYDOWN && message.wParam == VK_RETURN &&
                             message.hwnd == Control(lblEmail);
        if (presses) {
            SendMessageW(message.hwnd, BM_CLICK, 0, 0);
        }
        return presses;
    }

    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_DRAWITEM && wParam == lblEmail) {
            PaintLink(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            return TRUE;
        }
        return BannerForm::OnMessage(message, wParam, lParam);
    }

  private:
    enum ControlId {
        lblSupportFilesRelease = 401,
        lblSupportFilesInstallDate,
        lblVantorRelease,
        lblVantorInstallDate,
        lblVantorWebRelease,
        lblVantorWebInstallDate,
        lblOstraRelease,
        lblOstraInstallDate,
        kLine,
        lblCompany,
        lblPhoneCaption,
        lblPhone,
        lblEmailCaption,
        lblEmail,
    };

    struct Row {
        int releaseId;
        int dateId;
        const SupportPackage& package;
    };

    static std::optional<LRESULT> ShowHandCursor(UINT message, WPARAM, LPARAM) {
        if (message != WM_SETCURSOR) {
            return std::nullopt;
        }
        SetCursor(LoadCursorW(nullptr, IDC_HAND));
        return TRUE;
    }

    // Releases left, dates right; a package that is not installed takes no room.
    int PlacePackages(int top) const {
        const int dateLeft = RightMargin() - Measure(L"Installed 0000-00-00").cx;
        for (const Row& row : mRows) {
            const int releaseBottom = PlaceText(row.releaseId, LeftMargin(), dateLeft - UnitsX(units::kGap), top);
            const int dateBottom = PlaceText(row.dateId, dateLeft, RightMargin(), top);
            const int bottom = std::max(releaseBottom, dateBottom);
            top = bottom == top ? top : bottom + UnitsY(units::kGap) / 2;
        }
        return top;
    }

    int PlaceCaptioned(int captionId, int id, int top) const {
        const int textLeft =
            LeftMargin() + std::max(Measure(L"Phone:").cx, Measure(L"E-mail:").cx) + UnitsX(units::kGap);
        PlaceText(captionId, LeftMargin(), textLeft, top);
        return PlaceText(id, textLeft, RightMargin(), top);
    }

    // The link is as wide as its text, so that only the text answers to the mouse.
    void FitLink() const {
        RECT box{};
        GetWindowRect(Control(lblEmail), &box);
        SetWindowPos(Control(lblEmail), nullptr, 0, 0, Measure(mInfo.email).cx + 1, box.bottom - box.top,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }

    void PaintLink(const DRAWITEMSTRUCT& item) const {
        const OwnedHandle<HFONT> font = Underlined(Font());
        const HGDIOBJ previous = SelectObject(item.hDC, font.get());
        RECT box = item.rcItem;
        FillRect(item.hDC, &box, GetSysColorBrush(COLOR_BTNFACE));
        SetBkMode(item.hDC, TRANSPARENT);
        SetTextColor(item.hDC, LinkColour());
        DrawTextW(item.hDC, mInfo.email.c_str(), -1, &box, DT_NOPREFIX | DT_SINGLELINE);
        if ((item.itemState & ODS_FOCUS) != 0 && (item.itemState & ODS_NOFOCUSRECT) == 0) {
            SetTextColor(item.hDC, GetSysColor(COLOR_BTNTEXT));
            DrawFocusRect(item.hDC, &box);
        }
        SelectObject(item.hDC, previous);
    }

    const SupportInfo& mInfo;
    const Row mRows[4] = {
        {lblSupportFilesRelease, lblSupportFilesInstallDate, mInfo.supportFiles},
        {lblVantorRelease, lblVantorInstallDate, mInfo.main},
        {lblVantorWebRelease, lblVantorWebInstallDate, mInfo.web},
        {lblOstraRelease, lblOstraInstallDate, mInfo.ostra},
    };
};

}  // namespace

void ShowSupportBox(const SupportInfo& info) {
    SupportForm(info).ShowModal();
}

}  // namespace v5
