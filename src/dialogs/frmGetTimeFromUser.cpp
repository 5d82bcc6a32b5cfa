// The window of the time dialog.
#include <windows.h>

#include <commctrl.h>

#include "dialogs/ControlIds.h"
#include "dialogs/Dialogs.h"
#include "dialogs/ModalForm.h"
#include "dialogs/TimeFieldControls.h"

namespace v5 {

namespace {

class frmGetTimeFromUser final : public ModalForm {
  public:
    explicit frmGetTimeFromUser(const TimeDialogSettings& settings)
        : ModalForm(settings.Title), mTime(settings), mAllowsCancel(settings.AllowUserToCancel) {}

    TimeDialogResult Result() const { return {mTime.DateTimeValue(), mCancelled}; }

  protected:
    void CreateControls() override {
        mFields.Create();
        AddControls(kControls);
        for (const int id : {ids::chk24Hour, ids::cmdOK, ids::cmdCancel}) {
            SetTextOf(id, FilterCaption(TextOf(id)));
        }
        if (!mAllowsCancel) {
            ShowControl(ids::cmdCancel, false);
            EnableControl(ids::cmdCancel, false);
            DisableCloseBox();
        }
        ShowClock();
    }

    SIZE LayOut() override {
        using namespace units;
        constexpr int kWidth = TimeFieldControls::kWidth + 2 * kMargin;
        int top = kMargin;
        mFields.LayOut(kMargin, top);
        top += TimeFieldControls::kHeight + kGroupGap;
        Place(ids::chk24Hour, UnitRect{kMargin, top, TimeFieldControls::kWidth, kCheckHeight});
        top += kCheckHeight + kGroupGap;
        const int cancelLeft = kWidth - kMargin - kButtonWidth;
        Place(ids::cmdCancel, UnitRect{cancelLeft, top, kButtonWidth, kButtonHeight});
        Place(ids::cmdOK, UnitRect{mAllowsCancel ? cancelLeft - kGap - kButtonWidth : cancelLeft, top, kButtonWidth,
                                   kButtonHeight});
        return {UnitsX(kWidth), UnitsY(top + kButtonHeight + kMargin)};
    }

    void OnCommand(int id, int notification) override {
        if (mFields.OnCommand(id, notification)) {
            return;
        }
        switch (id) {
            case ids::chk24Hour:
                mTime.SetUse24Hour(IsDlgButtonChecked(Window(), ids::chk24Hour) == BST_CHECKED);
                ShowClock();
                break;
            case ids::cmdOK:
                mFields.LeaveAll();
                mCancelled = false;
                Close();
                break;
            case ids::cmdCancel:
                if (mAllowsCancel) {
                    Close();
                }
                break;
            default:
                break;
        }
    }

    std::optional<LRESULT> OnMessage(UINT message, WPARAM, LPARAM lParam) override {
        return message == WM_NOTIFY ? mFields.OnNotify(*reinterpret_cast<const NMHDR*>(lParam)) : std::nullopt;
    }

  private:
    static constexpr ControlSpec kControls[] = {
        {ids::chk24Hour, WC_BUTTONW, L"Use 24 hour format", WS_TABSTOP | BS_AUTOCHECKBOX},
        {ids::cmdOK, WC_BUTTONW, L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON},
        {ids::cmdCancel, WC_BUTTONW, L"Cancel", WS_TABSTOP | BS_PUSHBUTTON},
    };

    void ShowClock() {
        CheckDlgButton(Window(), ids::chk24Hour, mTime.Use24Hour() ? BST_CHECKED : BST_UNCHECKED);
        mFields.Refresh();
    }

    TimeFields mTime;
    bool mAllowsCancel;
    bool mCancelled = true;  // until the user says OK
    TimeFieldControls mFields{*this, mTime};
};

}  // namespace

TimeDialogResult ShowTimeDialog(const TimeDialogSettings& settings) {
    frmGetTimeFromUser form(settings);
    form.ShowModal();
    return form.Result();
}

}  // namespace v5
