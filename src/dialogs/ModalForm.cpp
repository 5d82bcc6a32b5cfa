#include "dialogs/ModalForm.h"

#include <algorithm>
#include <new>
#include <system_error>
#include <utility>

#include "dialogs/CommonControls.h"
#include "platform/Module.h"

namespace v5 {

namespace {

constexpr int kTwipsPerInch = 1440;
constexpr int kUnitsPerCharWidth = 4;   // a dialog unit is a quarter of the average character width …
constexpr int kUnitsPerCharHeight = 8;  // … and an eighth of the character height

#ifndef WM_DPICHANGED
constexpr UINT WM_DPICHANGED = 0x02E0;
#endif

// A dialog template without controls, font or texts: they come from code.
struct EmptyTemplate {
    DLGTEMPLATE header{WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME, 0, 0, 0, 0, 0, 0};
    WORD menu = 0;
    WORD windowClass = 0;
    WORD title = 0;
};

// The work area of the display that a window is on; of the primary display for none.
RECT WorkArea(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
    return monitor.rcWork;
}

SIZE SizeOf(const RECT& rect) {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

// The average character width, as the dialog manager works it out, and the height of a font.
SIZE BaseUnits(HWND window, HFONT font) {
    constexpr std::wstring_view kAlphabet = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const SIZE extent = MeasureText(window, font, kAlphabet);
    return {(extent.cx / 26 + 1) / 2, extent.cy};
}

}  // namespace

// The other windows of the thread while a form is shown: those that were enabled are disabled, and given back enabled,
// the one that was active with its focus.
class ModalForm::PausedWindows {
  public:
    PausedWindows() : mActive(GetActiveWindow()), mFocus(GetFocus()) {}
    ~PausedWindows() { Resume(); }
    PausedWindows(const PausedWindows&) = delete;
    PausedWindows& operator=(const PausedWindows&) = delete;

    // The window that a form of the user's belongs to: the active one; while another program is in front, the
    // uppermost of the thread that is visible. Null when there is none.
    HWND Uppermost() const {
        HWND found = mActive;
        if (found == nullptr) {
            EnumThreadWindows(GetCurrentThreadId(), &PausedWindows::TakeUsable, reinterpret_cast<LPARAM>(&found));
        }
        return found;
    }

    // Disables every enabled top-level window of the thread but `form`. Throws std::bad_alloc.
    void PauseAllBut(HWND form) {
        mForm = form;
        EnumThreadWindows(GetCurrentThreadId(), &PausedWindows::Collect, reinterpret_cast<LPARAM>(this));
        if (mOutOfMemory) {
            throw std::bad_alloc();
        }
        for (const HWND window : mWindows) {
            EnableWindow(window, FALSE);
        }
        mPaused = true;
    }

    // Before the form's window goes, so that the system activates one of these and not another program's.
    void Resume() {
        if (std::exchange(mPaused, false)) {
            for (const HWND window : mWindows) {
                EnableWindow(window, TRUE);
            }
        }
    }

    // Afterwards: what was active is so again, unless the user works in another program by now.
    void RestoreFocus(bool wasActive) const {
        if (wasActive && IsWindow(mActive)) {
            SetActiveWindow(mActive);
        }
        if (GetActiveWindow() == mActive && IsWindow(mFocus) && IsWindowVisible(mFocus)) {
            SetFocus(mFocus);
        }
    }

  private:
    // Ends the enumeration at the first window that a user can work with.
    static BOOL CALLBACK TakeUsable(HWND window, LPARAM result) {
        const bool isUsable = IsWindowVisible(window) && IsWindowEnabled(window);
        *reinterpret_cast<HWND*>(result) = isUsable ? window : nullptr;
        return isUsable ? FALSE : TRUE;
    }

    static BOOL CALLBACK Collect(HWND window, LPARAM self) {
        auto& paused = *reinterpret_cast<PausedWindows*>(self);
        if (window != paused.mForm && IsWindowEnabled(window)) {
            try {
                paused.mWindows.push_back(window);
            } catch (const std::bad_alloc&) {
                paused.mOutOfMemory = true;
            }
        }
        return TRUE;
    }

    HWND mActive;
    HWND mFocus;
    HWND mForm = nullptr;
    std::vector<HWND> mWindows;
    bool mPaused = false;
    bool mOutOfMemory = false;
};

// One control whose messages a handler sees first.
class ModalForm::ControlHook {
  public:
    ControlHook(ModalForm& form, HWND control, MessageHandler handler) : mForm(form), mHandler(std::move(handler)) {
        SetWindowLongPtrW(control, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        mPrevious = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ControlHook::WindowProc)));
    }

  private:
    static LRESULT CALLBACK WindowProc(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
        const auto* hook = reinterpret_cast<const ControlHook*>(GetWindowLongPtrW(control, GWLP_USERDATA));
        try {
            if (const auto answer = hook->mHandler(message, wParam, lParam)) {
                return *answer;
            }
        } catch (...) {
            hook->mForm.Fail();
        }
        return CallWindowProcW(hook->mPrevious, control, message, wParam, lParam);
    }

    ModalForm& mForm;
    MessageHandler mHandler;
    WNDPROC mPrevious;
};

ModalForm::ModalForm(std::wstring title) : mTitle(std::move(title)) {}

ModalForm::~ModalForm() = default;

void ModalForm::ShowModal(Ownership ownership) {
    PausedWindows others;
    mClosed = mWasActive = false;
    mFailure = nullptr;
    mOthers = &others;
    try {
        Create(ownership == Ownership::Owned ? others.Uppermost() : nullptr);
        others.PauseAllBut(mWindow);
        ShowWindow(mWindow, SW_SHOW);
        OnShown();
        RunMessageLoop();
    } catch (...) {
        Fail();
    }
    const bool wasActive = mWasActive || (mWindow != nullptr && GetActiveWindow() == mWindow);
    others.Resume();
    mOthers = nullptr;
    // Here and not in the destructor: controls that go send their last notifications to the derived class.
    if (mWindow != nullptr) {
        DestroyWindow(mWindow);
    }
    mHooks.clear();
    others.RestoreFocus(wasActive);
    if (mFailure) {
        std::rethrow_exception(mFailure);
    }
}

void ModalForm::Create(HWND owner) {
    const CommonControlsScope controls;
    const EmptyTemplate layout;
    CreateDialogIndirectParamW(ThisModule(), &layout.header, owner, &ModalForm::DialogProc,
                               reinterpret_cast<LPARAM>(this));
    if (mWindow == nullptr) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                                "cannot open a dialog window");
    }
    SetWindowTextW(mWindow, mTitle.c_str());
    CentreOn(owner);  // on the display whose density counts
    UseDpi(DpiOf(mWindow));
    CreateControls();
    Resize(LayOut());
    CentreOn(owner);
    FocusOn(GetNextDlgTabItem(mWindow, nullptr, FALSE));
    OnOpening();
}

void ModalForm::FocusOn(HWND control) const {
    SendMessageW(mWindow, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
}

void ModalForm::UseDpi(UINT dpi) {
    mDpi = dpi;
    OwnedHandle<HFONT> font = CreateMessageFont(dpi);
    for (HWND child = GetWindow(mWindow, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
    }
    mFont = std::move(font);
    mBaseUnits = BaseUnits(mWindow, mFont.get());
}

SIZE ModalForm::FrameSize() const {
    RECT outer{};
    RECT inner{};
    GetWindowRect(mWindow, &outer);
    GetClientRect(mWindow, &inner);
    const SIZE whole = SizeOf(outer);
    return {whole.cx - inner.right, whole.cy - inner.bottom};
}

SIZE ModalForm::LargestClient() const {
    const SIZE work = SizeOf(WorkArea(mWindow));
    const SIZE frame = FrameSize();
    return {work.cx - frame.cx, work.cy - frame.cy};
}

void ModalForm::Resize(SIZE client) const {
    const SIZE frame = FrameSize();
    SetWindowPos(mWindow, nullptr, 0, 0, client.cx + frame.cx, client.cy + frame.cy,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ModalForm::CentreOn(HWND owner) const {
    const RECT work = WorkArea(owner);
    RECT around = work;
    if (owner != nullptr && IsWindowVisible(owner) && !IsIconic(owner)) {
        GetWindowRect(owner, &around);
    }
    RECT form{};
    GetWindowRect(mWindow, &form);
    const SIZE size = SizeOf(form);
    const LONG left = (around.left + around.right - size.cx) / 2;
    const LONG top = (around.top + around.bottom - size.cy) / 2;
    SetWindowPos(mWindow, nullptr, std::max(work.left, std::min(left, work.right - size.cx)),
                 std::max(work.top, std::min(top, work.bottom - size.cy)), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ModalForm::RunMessageLoop() {
    MSG message;
    while (!mClosed) {
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got <= 0) {
            if (got == 0) {
                PostQuitMessage(static_cast<int>(message.wParam));
            }
            return;
        }
        // Hooks of the client see messages of its thread that belong to no window, as in the system's own dialogs.
        if (CallMsgFilterW(&message, MSGF_DIALOGBOX)) {
            continue;
        }
        const bool ours = message.hwnd == mWindow || IsChild(mWindow, message.hwnd);
        try {
            if (ours && OnQueuedMessage(message)) {
                continue;
            }
        } catch (...) {
            Fail();
            continue;
        }
        if (!IsDialogMessageW(mWindow, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

void ModalForm::Close() {
    mClosed = true;
    if (mWindow == nullptr) {
        return;
    }
    // A menu, or a move of the window by the user, has a message loop of its own, which would go on.
    EndMenu();
    GUITHREADINFO thread{};
    thread.cbSize = sizeof thread;
    if (GetGUIThreadInfo(GetCurrentThreadId(), &thread) && (thread.flags & GUI_INMOVESIZE) != 0) {
        SendMessageW(mWindow, WM_CANCELMODE, 0, 0);
        PostMessageW(mWindow, WM_KEYDOWN, VK_ESCAPE, 0);
    }
    // Gone at once, also when some other loop of the client's is under way.
    if (mOthers != nullptr) {
        mWasActive = GetActiveWindow() == mWindow;
        mOthers->Resume();
        ShowWindow(mWindow, SW_HIDE);
    }
    // Wakes the message loop when it is another thread's sent message that closes the form.
    PostMessageW(mWindow, WM_NULL, 0, 0);
}

void ModalForm::Fail() {
    if (!mFailure) {
        mFailure = std::current_exception();
    }
    Close();
}

INT_PTR CALLBACK ModalForm::DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        reinterpret_cast<ModalForm*>(lParam)->mWindow = window;
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        return FALSE;  // the focus is set when there are controls
    }
    auto* form = reinterpret_cast<ModalForm*>(GetWindowLongPtrW(window, DWLP_USER));
    return form != nullptr ? form->Handle(message, wParam, lParam) : FALSE;
}

INT_PTR ModalForm::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        if (const auto answer = Answer(message, wParam, lParam)) {
            // A dialog procedure returns brushes themselves, and other answers through the window.
            if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) {
                return *answer;
            }
            SetWindowLongPtrW(mWindow, DWLP_MSGRESULT, *answer);
            return TRUE;
        }
    } catch (...) {
        Fail();
    }
    if (message == WM_NCDESTROY) {
        mWindow = nullptr;
        mClosed = true;
        PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);  // wakes the message loop, as in Close()
    }
    return FALSE;
}

std::optional<LRESULT> ModalForm::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            OnCommand(LOWORD(wParam), HIWORD(wParam));
            return 0;
        case WM_DPICHANGED: {
            const auto& place = *reinterpret_cast<const RECT*>(lParam);
            UseDpi(HIWORD(wParam));
            SetWindowPos(mWindow, nullptr, place.left, place.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
            Resize(LayOut());
            InvalidateRect(mWindow, nullptr, TRUE);
            return 0;
        }
        default:
            return OnMessage(message, wParam, lParam);
    }
}

std::optional<LRESULT> ModalForm::OnMessage(UINT, WPARAM, LPARAM) {
    return std::nullopt;
}

bool ModalForm::OnQueuedMessage(const MSG&) {
    return false;
}

HWND ModalForm::AddControl(const ControlSpec& spec) {
    const HWND control =
        CreateWindowExW(spec.extendedStyle, spec.windowClass, spec.text, WS_CHILD | WS_VISIBLE | spec.style, 0, 0, 0, 0,
                        mWindow, reinterpret_cast<HMENU>(static_cast<INT_PTR>(spec.id)), ThisModule(), nullptr);
    if (control == nullptr) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "cannot create a control");
    }
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(mFont.get()), FALSE);
    const LRESULT kind = SendMessageW(control, WM_GETDLGCODE, 0, 0);
    if ((kind & DLGC_DEFPUSHBUTTON) != 0) {
        SendMessageW(mWindow, DM_SETDEFID, static_cast<WPARAM>(spec.id), 0);
    }
    if ((kind & DLGC_STATIC) != 0 && (spec.style & SS_NOPREFIX) != 0) {
        // The dialog manager looks for mnemonics in every static text, this style or not: "& " would take the space
        // bar from the buttons.
        HookControl(spec.id, [](UINT message, WPARAM, LPARAM) {
            return message == WM_GETDLGCODE ? std::optional<LRESULT>(0) : std::nullopt;
        });
    }
    return control;
}

void ModalForm::AddControls(std::span<const ControlSpec> specs) {
    for (const ControlSpec& spec : specs) {
        AddControl(spec);
    }
}

void ModalForm::Place(int id, const RECT& pixels) const {
    SetWindowPos(Control(id), nullptr, pixels.left, pixels.top, pixels.right - pixels.left, pixels.bottom - pixels.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void ModalForm::Place(int id, const UnitRect& place) const {
    // Edges are rounded, not sizes, so that edges at the same distance meet.
    Place(id, RECT{UnitsX(place.left), UnitsY(place.top), UnitsX(place.left + place.width),
                   UnitsY(place.top + place.height)});
}

void ModalForm::PlaceField(int id, const UnitRect& place) const {
    const int middle = (UnitsY(place.top) + UnitsY(place.top + place.height)) / 2;
    const int top = middle - FieldHeight() / 2;
    Place(id, RECT{UnitsX(place.left), top, UnitsX(place.left + place.width), top + FieldHeight()});
}

int ModalForm::FieldHeight() const {
    constexpr int kAboveAndBelow = 2;  // that a text field leaves free inside its edges
    return Measure(L"X").cy + 2 * GetSystemMetrics(SM_CYEDGE) + kAboveAndBelow;
}

int ModalForm::UnitsX(int units) const {
    return MulDiv(units, mBaseUnits.cx, kUnitsPerCharWidth);
}
int ModalForm::UnitsY(int units) const {
    return MulDiv(units, mBaseUnits.cy, kUnitsPerCharHeight);
}
int ModalForm::FromTwips(int twips) const {
    return MulDiv(twips, static_cast<int>(mDpi), kTwipsPerInch);
}
int ModalForm::ToTwips(int pixels) const {
    return MulDiv(pixels, kTwipsPerInch, static_cast<int>(mDpi));
}

SIZE ModalForm::Measure(std::wstring_view text) const {
    return MeasureText(mWindow, mFont.get(), text);
}

std::wstring ModalForm::TextOf(int id) const {
    const HWND control = Control(id);
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(control)), L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(control, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

void ModalForm::SetTextOf(int id, std::wstring_view text) const {
    SetWindowTextW(Control(id), std::wstring(text).c_str());
}

void ModalForm::ShowControl(int id, bool visible) const {
    ShowWindow(Control(id), visible ? SW_SHOW : SW_HIDE);
}

void ModalForm::EnableControl(int id, bool enabled) const {
    EnableWindow(Control(id), enabled);
}

void ModalForm::HookControl(int id, MessageHandler handler) {
    mHooks.push_back(std::make_unique<ControlHook>(*this, Control(id), std::move(handler)));
}

void ModalForm::DisableCloseBox() const {
    EnableMenuItem(GetSystemMenu(mWindow, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
}

}  // namespace v5
