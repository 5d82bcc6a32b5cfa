// The window of the date dialog.
#include <windows.h>

#include <commctrl.h>

#include "base/Clock.h"
#include "dialogs/ControlIds.h"
#include "dialogs/DayPainter.h"
#include "dialogs/Dialogs.h"
#include "dialogs/ModalForm.h"
#include "dialogs/TimeFieldControls.h"

namespace v5 {

namespace {

using namespace ids;

// Sizes in dialog units.
constexpr int kCellWidth = 22;
constexpr int kCellHeight = 14;
constexpr int kGroupMargin = 7;  // between a group box and what it holds
constexpr int kGroupTop = 11;    // the same at the top, below the group's name
constexpr int kContentWidth = MonthGrid::kDaysPerWeek * kCellWidth + 2 * kGroupMargin;
constexpr int kArrowWidth = 16;
constexpr int kYearWidth = 44;
constexpr int kMonthWidth = kContentWidth - 2 * kArrowWidth - kYearWidth - 3 * units::kGap;

// Arrow keys of the day grid, and the days or months that they move.
constexpr struct {
    WPARAM key;
    int days;
    int months;
} kGridKeys[] = {
    {VK_LEFT, -1, 0},  {VK_RIGHT, 1, 0}, {VK_UP, -MonthGrid::kDaysPerWeek, 0}, {VK_DOWN, MonthGrid::kDaysPerWeek, 0},
    {VK_PRIOR, 0, -1}, {VK_NEXT, 0, 1},
};

class frmGetDateFromUser final : public ModalForm {
  public:
    frmGetDateFromUser(const DateDialogSettings& settings, const CivilDateTime& now)
        : ModalForm(settings.Title), mModel(settings, now) {
        mTime.SetVisible(mModel.ShowsTime(), mModel.ShowsMinutes());
    }

    double Result() const { return mAccepted ? mModel.DateTimeValue() : kDateCancelled; }

  protected:
    void CreateControls() override {
        AddControls(kMonthControls);
        UDACCEL steps{0, 1};
        SendMessageW(Control(updownYear), UDM_SETACCEL, 1, reinterpret_cast<LPARAM>(&steps));
        SendMessageW(Control(txtYear), EM_LIMITTEXT, 4, 0);
        for (const std::wstring_view name : kMonthNames) {
            SendMessageW(Control(cboMonth), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.data()));
        }
        AddControl({fraDay, WC_BUTTONW, L"&Day", WS_GROUP | BS_GROUPBOX});
        for (int i = 0; i < MonthGrid::kDaysPerWeek; ++i) {
            AddControl({lblWeekday(i), WC_STATICW, kWeekdayNames[i].data(), SS_CENTER});
        }
        for (int cell = 0; cell < MonthGrid::kCells; ++cell) {
            const DWORD group = cell == 0 ? WS_GROUP : 0;
            AddControl({optDayOfMonth(cell), WC_BUTTONW, L"", group | BS_RADIOBUTTON | BS_PUSHLIKE});
        }
        AddControl({fraTime, WC_BUTTONW, L"Time", WS_GROUP | BS_GROUPBOX});
        mTime.Create();
        AddControls(kClosingControls);
        ShowControl(fraTime, mModel.ShowsTime());
        ShowControl(chkNull, mModel.ShowsNoDate());
        CheckDlgButton(Window(), chkNull, mModel.NoDate() ? BST_CHECKED : BST_UNCHECKED);
        ShowMonth();
        ShowNoDate();
    }

    SIZE LayOut() override {
        using namespace units;
        mBoldFont = CreateMessageFont(Dpi(), true);
        int top = LayOutMonthRow(kMargin);
        top = LayOutGrid(top + kGroupGap);
        if (mModel.ShowsTime()) {
            constexpr int kHeight = kGroupTop + TimeFieldControls::kHeight + kGroupMargin;
            top += kGroupGap;
            Place(fraTime, UnitRect{kMargin, top, kContentWidth, kHeight});
            mTime.LayOut(kMargin + kGroupMargin, top + kGroupTop);
            top += kHeight;
        }
        if (mModel.ShowsNoDate()) {
            top += kGroupGap;
            Place(chkNull, UnitRect{kMargin, top, kContentWidth, kCheckHeight});
            top += kCheckHeight;
        }
        top += kGroupGap;
        constexpr int kCancelLeft = kMargin + kContentWidth - kButtonWidth;
        Place(cmdOK, UnitRect{kCancelLeft - kGap - kButtonWidth, top, kButtonWidth, kButtonHeight});
        Place(cmdCancel, UnitRect{kCancelLeft, top, kButtonWidth, kButtonHeight});
        ShowMonth();
        return {UnitsX(kContentWidth + 2 * kMargin), UnitsY(top + kButtonHeight + kMargin)};
    }

    void OnOpening() override {
        FocusOn(mModel.NoDate() ? Control(chkNull) : Control(optDayOfMonth(mModel.SelectedCell())));
    }

    void OnCommand(int id, int notification) override {
        if (mTime.OnCommand(id, notification)) {
            return;
        }
        if (IsDayOfMonth(id)) {
            ChooseDay(id - kFirstDay);
            return;
        }
        switch (id) {
            case cboMonth:
                if (notification == CBN_SELCHANGE) {
                    mModel.ChooseMonth(static_cast<int>(SendMessageW(Control(cboMonth), CB_GETCURSEL, 0, 0)) + 1);
                    ShowMonth();
                }
                break;
            case txtYear:
                OnYear(notification);
                break;
            case cmdMonthMove[0]:
            case cmdMonthMove[1]:
                mModel.MoveMonths(id == cmdMonthMove[1] ? 1 : -1);
                ShowMonth();
                break;
            case chkNull:
                mModel.SetNoDate(IsDlgButtonChecked(Window(), chkNull) == BST_CHECKED);
                ShowNoDate();
                break;
            case cmdOK:
                Accept();
                break;
            case cmdCancel:
                Close();
                break;
            default:
                break;
        }
    }

    std::optional<LRESULT> OnMessage(UINT message, WPARAM, LPARAM lParam) override {
        if (message != WM_NOTIFY) {
            return std::nullopt;
        }
        const auto& notice = *reinterpret_cast<const NMHDR*>(lParam);
        const int id = static_cast<int>(notice.idFrom);
        if (notice.code == static_cast<UINT>(UDN_DELTAPOS) && id == updownYear) {
            StepYear(reinterpret_cast<const NMUPDOWN&>(notice).iDelta > 0);
            return TRUE;
        }
        if (notice.code == static_cast<UINT>(NM_CUSTOMDRAW)) {
            return Paint(id, reinterpret_cast<const NMCUSTOMDRAW&>(notice));
        }
        return mTime.OnNotify(notice);
    }

    bool OnQueuedMessage(const MSG& message) override {
        if (message.message != WM_KEYDOWN || !IsDayOfMonth(GetDlgCtrlID(message.hwnd))) {
            return false;
        }
        for (const auto& each : kGridKeys) {
            if (each.key == message.wParam) {
                if (each.months != 0) {
                    mModel.MoveMonths(each.months);
                } else {
                    mModel.MoveDays(each.days);
                }
                ShowMonth();
                FocusOn(Control(optDayOfMonth(mModel.SelectedCell())));
                return true;
            }
        }
        return false;
    }

  private:
    static constexpr ControlSpec kMonthControls[] = {
        {cmdMonthMove[0], WC_BUTTONW, L"Previous month", WS_TABSTOP | BS_PUSHBUTTON},
        {lblMonth, WC_STATICW, L"&Month:"},
        {cboMonth, WC_COMBOBOXW, L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST},
        {lblYear, WC_STATICW, L"&Year:"},
        {txtYear, WC_EDITW, L"", WS_TABSTOP | ES_CENTER | ES_NUMBER, WS_EX_CLIENTEDGE},
        {updownYear, UPDOWN_CLASSW, L"", UDS_ALIGNRIGHT | UDS_ARROWKEYS},
        {cmdMonthMove[1], WC_BUTTONW, L"Next month", WS_TABSTOP | BS_PUSHBUTTON},
    };
    static constexpr ControlSpec kClosingControls[] = {
        {chkNull, WC_BUTTONW, L"&No date", WS_GROUP | WS_TABSTOP | BS_AUTOCHECKBOX},
        {cmdOK, WC_BUTTONW, L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON},
        {cmdCancel, WC_BUTTONW, L"Cancel", WS_TABSTOP | BS_PUSHBUTTON},
    };

    // A year that was put right is shown before it is answered.
    void Accept() {
        mModel.LeaveYear();
        if (!mModel.NoDate() && mModel.TakeCorrection()) {
            ShowMonth();
            FocusOn(Control(txtYear));
            return;
        }
        mAccepted = true;
        Close();
    }

    // The list and the year field share one height, and the arrow buttons beside them, too.
    int LayOutMonthRow(int top) {
        using namespace units;
        const int fields = top + kLabelHeight + 2;
        const int list = kMargin + kArrowWidth + kGap;
        const int year = list + kMonthWidth + kGap;
        Place(lblMonth, UnitRect{list, top, kMonthWidth, kLabelHeight});
        Place(lblYear, UnitRect{year, top, kYearWidth, kLabelHeight});
        const RECT row = PlaceMonthList(list, fields);
        PlaceInRow(cmdMonthMove[0], kMargin, kArrowWidth, row);
        PlaceInRow(txtYear, year, kYearWidth, row);
        SendMessageW(Control(updownYear), UDM_SETBUDDY, reinterpret_cast<WPARAM>(Control(txtYear)), 0);
        PlaceInRow(cmdMonthMove[1], year + kYearWidth + kGap, kArrowWidth, row);
        return fields + kFieldHeight;
    }

    void PlaceInRow(int id, int left, int width, const RECT& row) const {
        Place(id, RECT{UnitsX(left), row.top, UnitsX(left + width), row.bottom});
    }

    // Gives the place of the closed list. A combo box is given the height of its opened list; that of its closed field
    // follows from that of its items.
    RECT PlaceMonthList(int left, int top) const {
        constexpr int kListHeight = units::kFieldHeight + 12 * (units::kLabelHeight + 2);
        const HWND list = Control(cboMonth);
        PlaceField(cboMonth, UnitRect{left, top, kMonthWidth, units::kFieldHeight});
        RECT place = PlaceOf(list);
        Place(cboMonth, RECT{place.left, place.top, place.right, place.top + UnitsY(kListHeight)});
        const LRESULT height = SendMessageW(list, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0);
        const LONG missing = FieldHeight() - (PlaceOf(list).bottom - place.top);
        SendMessageW(list, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), height + missing);
        return PlaceOf(list);  // in which the system may have had a word
    }

    RECT PlaceOf(HWND control) const {
        RECT place{};
        GetWindowRect(control, &place);
        MapWindowPoints(nullptr, Window(), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }

    int LayOutGrid(int top) {
        using namespace units;
        constexpr int kWeeks = MonthGrid::kCells / MonthGrid::kDaysPerWeek;
        constexpr int kHeadingHeight = kLabelHeight + 2;
        constexpr int kHeight = kGroupTop + kHeadingHeight + kWeeks * kCellHeight + kGroupMargin;
        Place(fraDay, UnitRect{kMargin, top, kContentWidth, kHeight});
        const int left = kMargin + kGroupMargin;
        for (int i = 0; i < MonthGrid::kDaysPerWeek; ++i) {
            Place(lblWeekday(i), UnitRect{left + i * kCellWidth, top + kGroupTop, kCellWidth, kLabelHeight});
        }
        for (int cell = 0; cell < MonthGrid::kCells; ++cell) {
            const int row = cell / MonthGrid::kDaysPerWeek;
            const int column = cell % MonthGrid::kDaysPerWeek;
            Place(optDayOfMonth(cell),
                  UnitRect{left + column * kCellWidth, top + kGroupTop + kHeadingHeight + row * kCellHeight, kCellWidth,
                           kCellHeight});
        }
        return top + kHeight;
    }

    // Shows the model's month, year and selected day.
    void ShowMonth() {
        mShowing = true;
        SendMessageW(Control(cboMonth), CB_SETCURSEL, static_cast<WPARAM>(mModel.Month() - 1), 0);
        ShowYear();
        for (int cell = 0; cell < MonthGrid::kCells; ++cell) {
            ShowDay(cell);
        }
        mShowing = false;
    }

    void ShowYear() {
        if (TextOf(txtYear) != mModel.YearText()) {
            SetTextOf(txtYear, mModel.YearText());
        }
        const NumberRange range = mModel.YearRange();
        SendMessageW(Control(updownYear), UDM_SETRANGE32, static_cast<WPARAM>(range.lowest), range.highest);
        SendMessageW(Control(updownYear), UDM_SETPOS32, 0, _wtoi(mModel.YearText().c_str()));
    }

    void ShowDay(int cell) {
        const int day = mModel.Grid().DayAt(cell);
        const HWND button = Control(optDayOfMonth(cell));
        const bool selected = cell == mModel.SelectedCell();
        const HFONT font = mModel.IsToday(cell) ? mBoldFont.get() : Font();
        if (day != 0) {
            SetTextOf(optDayOfMonth(cell), std::to_wstring(day));
        }
        SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
        SendMessageW(button, BM_SETCHECK, selected ? BST_CHECKED : BST_UNCHECKED, 0);
        // Only the selected day is a stop of the Tab key; the arrow keys move on from there.
        const LONG_PTR style = GetWindowLongPtrW(button, GWL_STYLE) & ~static_cast<LONG_PTR>(WS_TABSTOP);
        SetWindowLongPtrW(button, GWL_STYLE, selected ? style | WS_TABSTOP : style);
        ShowWindow(button, day != 0 ? SW_SHOWNA : SW_HIDE);
        InvalidateRect(button, nullptr, TRUE);
    }

    void ChooseDay(int cell) {
        if (cell != mModel.SelectedCell()) {
            mModel.ChooseCell(cell);
            ShowMonth();
        }
    }

    void OnYear(int notification) {
        if (notification == EN_CHANGE && !mShowing) {
            mModel.SetYearText(TextOf(txtYear));
            ShowMonth();
        } else if (notification == EN_KILLFOCUS) {
            mModel.LeaveYear();
            ShowMonth();
        }
    }

    void StepYear(bool up) {
        mModel.StepYear(up);
        ShowMonth();
        FocusOn(Control(txtYear));
        SendMessageW(Control(txtYear), EM_SETSEL, 0, -1);
    }

    // Without a date there is nothing to choose.
    void ShowNoDate() {
        const bool enabled = !mModel.NoDate();
        for (const ControlSpec& spec : kMonthControls) {
            EnableControl(spec.id, enabled);
        }
        EnableControl(fraDay, enabled);
        for (int i = 0; i < MonthGrid::kDaysPerWeek; ++i) {
            EnableControl(lblWeekday(i), enabled);
        }
        for (int cell = 0; cell < MonthGrid::kCells; ++cell) {
            EnableControl(optDayOfMonth(cell), enabled);
        }
        EnableControl(fraTime, enabled);
        mTime.Enable(enabled);
    }

    std::optional<LRESULT> Paint(int id, const NMCUSTOMDRAW& draw) const {
        if (IsDayOfMonth(id)) {
            return PaintDay(draw, mModel.IsToday(id - kFirstDay), id - kFirstDay == mModel.SelectedCell());
        }
        if (id == cmdMonthMove[0] || id == cmdMonthMove[1]) {
            return PaintArrow(draw, id == cmdMonthMove[1]);
        }
        return std::nullopt;
    }

    DateDialogModel mModel;
    TimeFieldControls mTime{*this, mModel.Time()};
    OwnedHandle<HFONT> mBoldFont;
    bool mShowing = false;  // the controls change by our own hand, not the user's
    bool mAccepted = false;
};

}  // namespace

double ShowDateDialog(const DateDialogSettings& settings, const Clock& clock) {
    frmGetDateFromUser form(settings, clock.LocalNow());
    form.ShowModal();
    return form.Result();
}

}  // namespace v5
