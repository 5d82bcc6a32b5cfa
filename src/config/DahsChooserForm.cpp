#include "config/DahsChooserForm.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <type_traits>

#include "config/DahsChooser.h"
#include "config/Site.h"
#include "dialogs/ControlIds.h"
#include "dialogs/Dialogs.h"
#include "dialogs/ModalForm.h"
#include "platform/Module.h"
#include "platform/SystemFunction.h"

namespace v5 {

namespace {

constexpr wchar_t kTitle[] = L"Choose DAHS";
constexpr WORD kDahsIcon = 199;  // the product's plain icon
constexpr COLORREF kGrey = RGB(192, 192, 192);

// The list shows between these numbers of rows without scrolling, and is at least this number of dialog units wide.
constexpr int kFewestRows = 5;
constexpr int kMostRows = 15;
constexpr int kNarrowest = 160;

constexpr std::uint32_t kExclamation = 0x30;

void Report(const std::wstring& message) {
    TimedMessageBoxSettings settings;
    settings.Title = kTitle;
    settings.Prompt = message;
    settings.Buttons = kExclamation;
    ShowTimedMessageBox(settings);
}

// The list's one image, "DAHS", in the size of the display's small icons.
OwnedHandle<HIMAGELIST> CreateImages(int size) {
    const auto create = SystemFunction<decltype(ImageList_Create)>(L"comctl32.dll", "ImageList_Create");
    OwnedHandle<HIMAGELIST> images(create(size, size, ILC_COLOR32 | ILC_MASK, 1, 0));
    const OwnedHandle<HICON> icon(
        static_cast<HICON>(LoadImageW(ThisModule(), MAKEINTRESOURCEW(kDahsIcon), IMAGE_ICON, size, size, 0)));
    if (icon) {
        SystemFunction<decltype(ImageList_ReplaceIcon)>(L"comctl32.dll", "ImageList_ReplaceIcon")(images.get(), -1,
                                                                                                  icon.get());
    }
    return images;
}

class DahsChooserForm final : public ModalForm {
  public:
    DahsChooserForm(const DahsChooser& chooser, std::int32_t initialDahsId)
        : ModalForm(kTitle), mChooser(chooser), mSelected(chooser.RowOf(initialDahsId)) {
        if (!mSelected) {
            mSelected = chooser.FirstChoice();
        }
    }

    DahsChoice Result() const { return {mCancelled, mSelected ? mChooser.Rows()[*mSelected].dahsID : 0}; }

  protected:
    void CreateControls() override {
        AddControls(kControls);
        constexpr DWORD kStyles = LVS_EX_FULLROWSELECT | LVS_EX_INFOTIP;
        SendMessageW(List(), LVM_SETEXTENDEDLISTVIEWSTYLE, kStyles, kStyles);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT;
        column.pszText = const_cast<wchar_t*>(L"DAHS");
        SendMessageW(List(), LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
        for (size_t row = 0; row < mChooser.Rows().size(); ++row) {
            LVITEMW item{};
            item.mask = LVIF_TEXT | LVIF_IMAGE;
            item.iItem = static_cast<int>(row);
            item.pszText = const_cast<wchar_t*>(mChooser.Rows()[row].text.c_str());
            SendMessageW(List(), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        }
    }

    SIZE LayOut() override {
        using namespace units;
        mImages = CreateImages(FromTwips(kSmallIcon));
        SendMessageW(List(), LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(mImages.get()));
        Place(ids::lsvDahsList, UnitRect{kMargin, kMargin, kNarrowest, kNarrowest});  // its heading gets its height
        const RECT list = ListPlace();
        Place(ids::lsvDahsList, list);
        FitColumn();
        const int top = list.bottom + UnitsY(kGroupGap);
        const int width = UnitsX(kButtonWidth);
        const int bottom = top + UnitsY(kButtonHeight);
        const int ok = list.right - 2 * width - UnitsX(kGap);
        Place(ids::cmdOK, RECT{ok, top, ok + width, bottom});
        Place(ids::cmdCancel, RECT{list.right - width, top, list.right, bottom});
        return {list.right + UnitsX(kMargin), bottom + UnitsY(kMargin)};
    }

    void OnOpening() override {
        FocusOn(List());
        if (mSelected) {
            Select(*mSelected);
        }
    }

    void OnCommand(int id, int) override {
        if (id == ids::cmdOK) {
            Accept();
        } else if (id == ids::cmdCancel) {
            Close();
        }
    }

    std::optional<LRESULT> OnMessage(UINT message, WPARAM, LPARAM lParam) override {
        if (message != WM_NOTIFY || reinterpret_cast<const NMHDR*>(lParam)->idFrom != ids::lsvDahsList) {
            return std::nullopt;
        }
        switch (reinterpret_cast<const NMHDR*>(lParam)->code) {
            case static_cast<UINT>(NM_DBLCLK):
                if (reinterpret_cast<const NMITEMACTIVATE*>(lParam)->iItem >= 0) {
                    Accept();
                }
                return 0;
            case static_cast<UINT>(LVN_GETINFOTIPW):
                ShowWholeText(*reinterpret_cast<const NMLVGETINFOTIPW*>(lParam));
                return 0;
            case static_cast<UINT>(NM_CUSTOMDRAW):
                return Paint(*reinterpret_cast<NMLVCUSTOMDRAW*>(lParam));
            default:
                return std::nullopt;
        }
    }

  private:
    static constexpr int kSmallIcon = 240;  // twips: 16 pixels at 96 dots per inch
    static constexpr ControlSpec kControls[] = {
        {ids::lsvDahsList, WC_LISTVIEWW, L"DAHS",
         WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER | LVS_SHAREIMAGELISTS,
         WS_EX_CLIENTEDGE},
        {ids::cmdOK, WC_BUTTONW, L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON},
        {ids::cmdCancel, WC_BUTTONW, L"Cancel", WS_TABSTOP | BS_PUSHBUTTON},
    };

    HWND List() const { return Control(ids::lsvDahsList); }

    // The column that shows every row whole: each row's end tells its role.
    LONG WidestRow() const {
        LONG width = 0;
        for (const DahsChooserRow& row : mChooser.Rows()) {
            width = std::max(width, Measure(row.text).cx);
        }
        return width + FromTwips(kSmallIcon) + UnitsX(units::kMargin);
    }

    // As wide as the widest row and as high as all rows, within limits.
    RECT ListPlace() const {
        const int left = UnitsX(units::kMargin);
        const LONG widest = LargestClient().cx - 2 * left;
        const LONG width = std::clamp<LONG>(WidestRow() + GetSystemMetrics(SM_CXVSCROLL), UnitsX(kNarrowest), widest);
        const int top = UnitsY(units::kMargin);
        return {left, top, left + width, top + ListHeight()};
    }

    int ListHeight() const {
        const auto header = reinterpret_cast<HWND>(SendMessageW(List(), LVM_GETHEADER, 0, 0));
        RECT heading{};
        GetWindowRect(header, &heading);
        RECT row{LVIR_BOUNDS, 0, 0, Measure(L"X").cy};
        SendMessageW(List(), LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
        const int rows = std::clamp(static_cast<int>(mChooser.Rows().size()), kFewestRows, kMostRows);
        return heading.bottom - heading.top + rows * (row.bottom - row.top) + 2 * GetSystemMetrics(SM_CYEDGE);
    }

    void FitColumn() const {
        RECT inside{};
        GetClientRect(List(), &inside);
        const LONG width = std::max(inside.right, WidestRow());
        SendMessageW(List(), LVM_SETCOLUMNWIDTH, 0, static_cast<LPARAM>(width));
    }

    // A row too long for the list is shown in a tip.
    void ShowWholeText(const NMLVGETINFOTIPW& tip) const {
        const std::wstring& text = mChooser.Rows()[static_cast<size_t>(tip.iItem)].text;
        if (tip.cchTextMax > 0) {
            lstrcpynW(tip.pszText, text.c_str(), tip.cchTextMax);
        }
    }

    void Select(size_t row) const {
        LVITEMW item{};
        item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        item.state = item.stateMask;
        SendMessageW(List(), LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
        SendMessageW(List(), LVM_ENSUREVISIBLE, row, FALSE);
    }

    std::optional<size_t> SelectedRow() const {
        const LRESULT row = SendMessageW(List(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
        return row < 0 ? std::nullopt : std::optional(static_cast<size_t>(row));
    }

    void Accept() {
        mSelected = SelectedRow();
        if (!mChooser.Rows().empty() && !mSelected) {
            Report(L"Please choose a DAHS.");
            FocusOn(List());
            return;
        }
        mCancelled = false;
        Close();
    }

    LRESULT Paint(NMLVCUSTOMDRAW& draw) const {
        if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) {
            return CDRF_NOTIFYITEMDRAW;
        }
        if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && mChooser.Rows()[draw.nmcd.dwItemSpec].isSecondary) {
            draw.clrText = kGrey;
        }
        return CDRF_DODEFAULT;
    }

    const DahsChooser& mChooser;
    std::optional<size_t> mSelected;
    OwnedHandle<HIMAGELIST> mImages;
    bool mCancelled = true;  // until the user says OK
};

DahsChooser ReadChooser(const DahsChooserSettings& settings, SiteHost& host) {
    Site site(host);
    if (!site.Read(AppCategory::NotApplicable, false, false, settings.blankConnections)) {
        if (!site.Problems().empty()) {
            Report(site.Problems().front());
        }
        return {};
    }
    DahsChooser chooser(*site.Entries(), settings.allowSecondary, settings.allowRemote,
                        [&site](const DahsEntry& entry) { return site.IsRemote(entry); });
    if (const std::wstring message = chooser.EmptyListMessage(); !message.empty()) {
        Report(message);
    }
    return chooser;
}

}  // namespace

DahsChoice ShowDahsChooser(const DahsChooserSettings& settings, SiteHost& host) {
    const DahsChooser chooser = ReadChooser(settings, host);
    DahsChooserForm form(chooser, settings.initialDahsId);
    form.ShowModal();
    return form.Result();
}

}  // namespace v5
