// The base of all of the library's windows: a modal dialog in the system's looks, built and laid out in code.
#pragma once

#include <windows.h>

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/DisplayScale.h"

namespace v5 {

// One control of a form. Tables of these stand in tab order, each label right before the control that it names, so
// that screen readers and mnemonics find it.
struct ControlSpec {
    int id;
    const wchar_t* windowClass;
    const wchar_t* text;
    DWORD style = 0;  // besides WS_CHILD and WS_VISIBLE
    DWORD extendedStyle = 0;
};

// A place on a form, in dialog units (a quarter of the font's average character width, an eighth of its height).
struct UnitRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

// The usual sizes and distances of dialogs, in dialog units.
namespace units {
inline constexpr int kMargin = 7;    // around the form
inline constexpr int kGap = 4;       // between related controls
inline constexpr int kGroupGap = 7;  // between unrelated controls
inline constexpr int kLabelHeight = 8;
inline constexpr int kFieldHeight = 12;  // one-line edit fields, combo boxes: text with little room above and below
inline constexpr int kButtonWidth = 50;
inline constexpr int kButtonHeight = 14;
inline constexpr int kCheckHeight = 10;
}  // namespace units

// A form derives from this class, creates its controls in CreateControls(), places them in LayOut() and handles what
// the user does in OnCommand() and the other hooks. The form's object outlives its window: results are read from it
// after ShowModal(). Hooks may throw: the form then closes and ShowModal() throws on.
class ModalForm {
  public:
    ModalForm(const ModalForm&) = delete;
    ModalForm& operator=(const ModalForm&) = delete;
    virtual ~ModalForm();

    enum class Ownership { Owned, Unowned };

    // Shows the form and returns when Close() was called, when the window was destroyed from outside, or when the
    // thread was asked to quit (the request is then passed on to the caller's message loop). An owned form belongs to
    // the thread's active window, or to its uppermost one while another program is in front. Every other enabled
    // top-level window of the thread is disabled meanwhile; all are given back on every way out, and what was active
    // has the focus back. Throws std::system_error when the window cannot be created.
    void ShowModal(Ownership ownership = Ownership::Owned);

    // Ends the modal show: the window is gone at once, whatever menu, move or drag is under way, and ShowModal()
    // returns as soon as the message that is being handled is done.
    void Close();

    HWND Window() const { return mWindow; }
    HWND Control(int id) const { return GetDlgItem(mWindow, id); }

    // Creates a control with the form's font; a BS_DEFPUSHBUTTON becomes the button that Enter presses. AddControls
    // does so for a table of them, in its order.
    HWND AddControl(const ControlSpec& spec);
    void AddControls(std::span<const ControlSpec> specs);

    // Places a control, in pixels or in dialog units.
    void Place(int id, const RECT& pixels) const;
    void Place(int id, const UnitRect& place) const;

    // Places a one-line text field in the middle of its place, no higher than FieldHeight(): such a field draws its
    // text at the top.
    void PlaceField(int id, const UnitRect& place) const;

    // The height in pixels at which a one-line text field has its text in the middle.
    int FieldHeight() const;

    // Pixels of dialog units, and of twips (1/1440 inch), on the form's display; and back.
    int UnitsX(int units) const;
    int UnitsY(int units) const;
    int FromTwips(int twips) const;
    int ToTwips(int pixels) const;

    // The size of a text in the form's font, in pixels.
    SIZE Measure(std::wstring_view text) const;

    std::wstring TextOf(int id) const;
    void SetTextOf(int id, std::wstring_view text) const;
    void ShowControl(int id, bool visible) const;
    void EnableControl(int id, bool enabled) const;
    // The largest client area, in pixels, that leaves the whole window on its display.
    SIZE LargestClient() const;
    HFONT Font() const { return mFont.get(); }
    UINT Dpi() const { return mDpi; }

    // Gives a control the focus as the Tab key does: an edit field's text is then selected.
    void FocusOn(HWND control) const;

    // Lets `handler` see every message of a control first. What it returns is the message's result; with nullopt the
    // control handles the message itself.
    using MessageHandler = std::function<std::optional<LRESULT>(UINT message, WPARAM wParam, LPARAM lParam)>;
    void HookControl(int id, MessageHandler handler);

  protected:
    // `title` is the window's caption.
    explicit ModalForm(std::wstring title);

    // Creates the form's controls and fills them. Window() and Font() exist.
    virtual void CreateControls() = 0;

    // Places all controls for the present Dpi() and font; gives the size of the client area in pixels. Called again
    // when the form comes to a display of another density.
    virtual SIZE LayOut() = 0;

    // The form stands in place and is about to be seen: the moment to set the focus, which otherwise goes to the first
    // control of the tab order.
    virtual void OnOpening() {}

    // The form has just become visible; its owner and the thread's other windows are disabled.
    virtual void OnShown() {}

    // A control's notification, or IDOK and IDCANCEL for Enter, Esc and the window's close box.
    virtual void OnCommand(int id, int notification) = 0;

    // Any other message of the window; nullopt leaves it to the system.
    virtual std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // A message of the form or one of its controls before anything else is done with it, as the message loop got it;
    // true when it is done with.
    virtual bool OnQueuedMessage(const MSG& message);

    // Greys the window's close box.
    void DisableCloseBox() const;

  private:
    class ControlHook;
    class PausedWindows;

    static INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam);
    void Create(HWND owner);
    void UseDpi(UINT dpi);
    SIZE FrameSize() const;
    void Resize(SIZE client) const;
    void CentreOn(HWND owner) const;
    void RunMessageLoop();
    void Fail();

    std::wstring mTitle;
    HWND mWindow = nullptr;
    bool mClosed = false;
    bool mWasActive = false;           // when it was closed
    PausedWindows* mOthers = nullptr;  // while the form is shown
    UINT mDpi = USER_DEFAULT_SCREEN_DPI;
    OwnedHandle<HFONT> mFont;
    SIZE mBaseUnits{};
    std::vector<std::unique_ptr<ControlHook>> mHooks;
    std::exception_ptr mFailure;
};

}  // namespace v5
