#include "security/frmGetPasswordFromUser.h"

#include <windows.h>

#include <commctrl.h>

#include <iterator>

#include "dialogs/ControlIds.h"
#include "dialogs/ModalForm.h"
#include "dialogs/PromptWrap.h"

namespace v5 {

namespace {

constexpr int kLongestPassword = 255;
constexpr int kMessageWidth = 190;  // dialog units

class frmGetPasswordFromUser final : public ModalForm {
  public:
    frmGetPasswordFromUser(const PasswordDialogTexts& texts, const std::function<bool(SecretText)>& isSettled)
        : ModalForm(texts.WindowTitle.empty() ? L"Password" : texts.WindowTitle),
          mMessage(texts.Message.empty() ? L"Enter the password:" : texts.Message),
          mIsSettled(isSettled) {}

  protected:
    void CreateControls() override {
        AddControls(kControls);
        SendMessageW(Control(ids::txtPassword), EM_LIMITTEXT, kLongestPassword, 0);
        HookControl(ids::txtPassword, [this](UINT message, WPARAM wParam, LPARAM) { return Protect(message, wParam); });
    }

    SIZE LayOut() override {
        using namespace units;
        const auto width = [this](std::wstring_view text) { return static_cast<int>(Measure(text).cx); };
        const std::wstring wrapped = WrapPrompt(mMessage, UnitsX(kMessageWidth), width);
        SetTextOf(ids::lblMsg, wrapped);
        const int left = UnitsX(kMargin);
        const int right = UnitsX(kMargin + kMessageWidth);
        int top = UnitsY(kMargin);
        Place(ids::lblMsg, RECT{left, top, right, top + Measure(wrapped).cy});
        top += Measure(wrapped).cy + UnitsY(kGap);
        Place(ids::txtPassword, RECT{left, top, right, top + FieldHeight()});
        top += FieldHeight() + UnitsY(kGroupGap);
        const int button = UnitsX(kButtonWidth);
        const int bottom = top + UnitsY(kButtonHeight);
        const int cancel = right - button;
        Place(ids::cmdCancel, RECT{cancel, top, right, bottom});
        Place(ids::cmdOK, RECT{cancel - UnitsX(kGap) - button, top, cancel - UnitsX(kGap), bottom});
        return {right + UnitsX(kMargin), bottom + UnitsY(kMargin)};
    }

    void OnOpening() override { FocusOn(Control(ids::txtPassword)); }

    void OnCommand(int id, int) override {
        if (id == ids::cmdOK) {
            Judge();
        } else if (id == ids::cmdCancel) {
            Close();
        }
    }

  private:
    static constexpr ControlSpec kControls[] = {
        {ids::lblMsg, WC_STATICW, L"", SS_LEFTNOWORDWRAP | SS_NOPREFIX},
        {ids::txtPassword, WC_EDITW, L"", WS_TABSTOP | ES_PASSWORD | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE},
        {ids::cmdOK, WC_BUTTONW, L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON},
        {ids::cmdCancel, WC_BUTTONW, L"Cancel", WS_TABSTOP | BS_PUSHBUTTON},
    };

    // Keeps the text in the box: nobody but PasswordText() gets it out, by the clipboard, by asking or by unmasking.
    std::optional<LRESULT> Protect(UINT message, WPARAM wParam) const {
        switch (message) {
            case WM_COPY:
            case WM_CUT:
            case EM_GETLINE:
                return 0;
            case WM_GETTEXT:
            case WM_GETTEXTLENGTH:
                return mReading ? std::nullopt : std::optional<LRESULT>(0);
            case EM_SETPASSWORDCHAR:
                return wParam == 0 ? std::optional<LRESULT>(0) : std::nullopt;
            default:
                return std::nullopt;
        }
    }

    void Judge() {
        ShowWindow(Window(), SW_HIDE);
        SecretText typed = PasswordText();
        ClearPasswordText();
        if (mIsSettled(std::move(typed))) {
            Close();
            return;
        }
        ShowWindow(Window(), SW_SHOW);
        SetForegroundWindow(Window());
        FocusOn(Control(ids::txtPassword));
    }

    void ClearPasswordText() const { SetTextOf(ids::txtPassword, L""); }

    SecretText PasswordText() {
        wchar_t typed[kLongestPassword + 1];
        mReading = true;
        const int length = GetWindowTextW(Control(ids::txtPassword), typed, static_cast<int>(std::size(typed)));
        mReading = false;
        SecretText password(std::wstring_view(typed, static_cast<size_t>(length)));
        Wipe(typed, std::size(typed));
        return password;
    }

    std::wstring mMessage;
    const std::function<bool(SecretText)>& mIsSettled;
    bool mReading = false;
};

}  // namespace

void AskForPassword(const PasswordDialogTexts& texts, const std::function<bool(SecretText)>& isSettled) {
    frmGetPasswordFromUser(texts, isSettled).ShowModal();
}

}  // namespace v5
