// The window of the timed message box.
#include <windows.h>

#include <commctrl.h>

#include "dialogs/ControlIds.h"
#include "dialogs/Dialogs.h"
#include "dialogs/ModalForm.h"
#include "dialogs/PromptWrap.h"

namespace v5 {

namespace {

constexpr UINT_PTR tmrTimeout = 1;
constexpr UINT kTickMilliseconds = 1000;

// The system's icon for a message box icon; null for none.
const wchar_t* SystemIcon(MessageBoxIcon icon) {
    switch (icon) {
        case MessageBoxIcon::Critical:
            return IDI_ERROR;
        case MessageBoxIcon::Question:
            return IDI_QUESTION;
        case MessageBoxIcon::Exclamation:
            return IDI_WARNING;
        case MessageBoxIcon::Information:
            return IDI_INFORMATION;
        default:
            return nullptr;
    }
}

class frmAsyncMsgBox final : public ModalForm {
  public:
    explicit frmAsyncMsgBox(const TimedMessageBoxSettings& settings)
        : ModalForm(settings.Title), mPrompt(settings.Prompt), mModel(settings.Buttons, settings.Timeout) {}

    MessageBoxResult Result() const { return mResult; }

  protected:
    void CreateControls() override {
        if (mModel.Icon() != MessageBoxIcon::None) {
            AddControl({ids::imgIcons, WC_STATICW, L"", SS_ICON});
        }
        AddControl({ids::lblPrompt, WC_STATICW, L"", SS_LEFTNOWORDWRAP | SS_NOPREFIX});
        AddButton(mModel.DefaultButton(), BS_DEFPUSHBUTTON);  // the first of the tab order
        for (const MessageBoxResult button : mModel.Buttons()) {
            if (button != mModel.DefaultButton()) {
                AddButton(button, BS_PUSHBUTTON);
            }
        }
        if (mModel.EscapeButton() == MessageBoxResult::None) {
            DisableCloseBox();
        }
    }

    SIZE LayOut() override {
        const auto width = [this](std::wstring_view text) { return ToTwips(Measure(text).cx); };
        const std::wstring wrapped = WrapPrompt(mPrompt, kPromptLimit, width);
        SetTextOf(ids::lblPrompt, wrapped);
        const SIZE promptPixels = Measure(wrapped);
        const TwipsSize prompt{ToTwips(promptPixels.cx), ToTwips(promptPixels.cy)};
        const TwipsSize icon{kIconSize, kIconSize};
        const TwipsSize button{ToTwips(UnitsX(units::kButtonWidth)), ToTwips(UnitsY(units::kButtonHeight))};
        const MessageBoxLayout layout = LayOutMessageBox(mModel, prompt, icon, button, ToTwips(LargestClient().cy));
        ShowIcon();
        Place(ids::imgIcons, Pixels(layout.icon));
        Place(ids::lblPrompt, Pixels(layout.prompt, promptPixels));
        for (size_t i = 0; i < layout.buttons.size(); ++i) {
            Place(ids::cmdButtons(mModel.Buttons()[i]), Pixels(layout.buttons[i]));
        }
        return {FromTwips(layout.client.width), FromTwips(layout.client.height)};
    }

    void OnOpening() override { FocusOn(Control(ids::cmdButtons(mModel.DefaultButton()))); }

    void OnShown() override {
        SetForegroundWindow(Window());  // a message is to be seen, whatever other window the user works in
        if (mModel.HasTimeout()) {
            SetTimer(Window(), tmrTimeout, kTickMilliseconds, nullptr);
        }
    }

    void OnCommand(int id, int) override {
        const bool isButton =
            id >= ids::cmdButtons(MessageBoxResult::Ok) && id <= ids::cmdButtons(MessageBoxResult::No);
        if (isButton && Control(id) != nullptr) {
            Press(static_cast<MessageBoxResult>(id));
        } else if (id == ids::cmdCancel && mModel.EscapeButton() != MessageBoxResult::None) {
            Press(mModel.EscapeButton());
        }
    }

    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM) override {
        if (message != WM_TIMER || wParam != tmrTimeout) {
            return std::nullopt;
        }
        if (mModel.Tick()) {
            Press(mModel.DefaultButton());
        }
        return 0;
    }

    bool OnQueuedMessage(const MSG& message) override {
        if (message.message != WM_CHAR) {
            return false;
        }
        const MessageBoxResult button = TimedMessageBoxModel::ButtonForKey(static_cast<wchar_t>(message.wParam));
        if (button == MessageBoxResult::None) {
            return false;
        }
        Press(button);
        return true;
    }

  private:
    static constexpr int kIconSize = 480;  // 32 pixels at 96 dots per inch

    void AddButton(MessageBoxResult button, DWORD kind) {
        const std::wstring caption(ButtonOf(button).caption);
        AddControl({ids::cmdButtons(button), WC_BUTTONW, caption.c_str(), WS_TABSTOP | kind});
    }

    void Press(MessageBoxResult button) {
        KillTimer(Window(), tmrTimeout);
        mResult = button;
        Close();
    }

    // Gives the icon the size that the display asks for.
    void ShowIcon() {
        if (const wchar_t* name = SystemIcon(mModel.Icon())) {
            const int size = FromTwips(kIconSize);
            OwnedHandle<HICON> icon(
                static_cast<HICON>(CopyImage(LoadIconW(nullptr, name), IMAGE_ICON, size, size, LR_COPYFROMRESOURCE)));
            SendMessageW(Control(ids::imgIcons), STM_SETICON, reinterpret_cast<WPARAM>(icon.get()), 0);
            mIcon = std::move(icon);
        }
    }

    RECT Pixels(const TwipsRect& twips) const {
        return {FromTwips(twips.left), FromTwips(twips.top), FromTwips(twips.left + twips.width),
                FromTwips(twips.top + twips.height)};
    }

    // The same for text, which must not lose its last pixel to rounding.
    RECT Pixels(const TwipsRect& twips, SIZE measured) const {
        RECT place = Pixels(twips);
        place.right = place.left + measured.cx + 1;
        return place;
    }

    std::wstring mPrompt;
    TimedMessageBoxModel mModel;
    OwnedHandle<HICON> mIcon;
    MessageBoxResult mResult = MessageBoxResult::Cancel;  // unless a button says otherwise
};

}  // namespace

MessageBoxResult ShowTimedMessageBox(const TimedMessageBoxSettings& settings) {
    frmAsyncMsgBox form(settings);
    constexpr UINT kIconBits = 0x70;
    constexpr UINT kPlainBeep = 0xFFFFFFFF;
    if (settings.beep && !MessageBeep(settings.Buttons & kIconBits)) {
        MessageBeep(kPlainBeep);
    }
    form.ShowModal(settings.hasOwner ? ModalForm::Ownership::Owned : ModalForm::Ownership::Unowned);
    return form.Result();
}

}  // namespace v5
