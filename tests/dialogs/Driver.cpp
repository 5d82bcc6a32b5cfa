#include "Driver.h"

#include <objbase.h>

#include <cstdlib>
#include <iterator>

namespace v5::test {

namespace {

constexpr ULONGLONG kStuckMilliseconds = 30000;
constexpr DWORD kPollMilliseconds = 5;

INPUT KeyInput(WORD key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    return input;
}

struct Search {
    const std::wstring& title;
    HWND found = nullptr;

    static BOOL CALLBACK Look(HWND window, LPARAM argument) {
        Search& search = *reinterpret_cast<Search*>(argument);
        wchar_t text[200] = L"";
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        InternalGetWindowText(window, text, static_cast<int>(std::size(text)));  // without asking its thread
        const bool isIt = process == GetCurrentProcessId() && IsWindowVisible(window) && search.title == text;
        search.found = isIt ? window : nullptr;
        return !isIt;
    }
};

}  // namespace

bool Eventually(const std::function<bool()>& condition) {
    const ULONGLONG began = GetTickCount64();
    while (!condition()) {
        if (GetTickCount64() - began > kStuckMilliseconds) {
            return false;
        }
        for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
            DispatchMessageW(&message);
        }
        Sleep(kPollMilliseconds);
    }
    return true;
}

// Not by FindWindowEx from one window to the next: newer Wine's server never comes back when that one is just going.
HWND FindDialog(const std::wstring& title) {
    Search search{title};
    EnumWindows(&Search::Look, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::wstring TextOf(HWND window) {
    wchar_t text[2000];
    return {text,
            static_cast<size_t>(SendMessageW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text)))};
}

ModalCall::ModalCall(std::function<void()> call, Owner owner) {
    mThread = std::thread([this, call = std::move(call), owner] {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        mThreadId = GetCurrentThreadId();
        if (owner == Owner::Window) {
            const HWND window = CreateWindowExW(0, L"#32770", L"Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 300, 200, 500,
                                                400, nullptr, nullptr, nullptr, nullptr);
            mOwnerField = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 10, 10, 100, 20, window, nullptr,
                                          nullptr, nullptr);
            SetActiveWindow(window);
            SetFocus(mOwnerField);
            mOwner = window;
        }
        call();
        mDone = true;
        // The owner stays for the test to look at, until the test lets go of the call.
        for (MSG message; mOwner != nullptr && GetMessageW(&message, nullptr, 0, 0) > 0;) {
            DispatchMessageW(&message);
        }
        DestroyWindow(mOwner);
        CoUninitialize();
    });
}

void ModalCall::Wait() {
    EXPECT_EVENTUALLY(IsDone());
    if (!IsDone()) {
        std::abort();  // the dialog cannot be ended: no further test makes sense
    }
}

ModalCall::~ModalCall() {
    Wait();
    PostThreadMessageW(mThreadId, WM_QUIT, 0, 0);
    mThread.join();
}

Dialog::Dialog(const std::wstring& title) : mWindow(nullptr) {
    EXPECT_EVENTUALLY((mWindow = FindDialog(title)) != nullptr);
    EXPECT_EVENTUALLY((SetForegroundWindow(mWindow), GetForegroundWindow() == mWindow && FocusId() != 0));
}

int Dialog::FocusId() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(mWindow, nullptr), &info);
    return info.hwndFocus != nullptr ? GetDlgCtrlID(info.hwndFocus) : 0;
}

void Dialog::Key(WORD key, WORD held) const {
    std::vector<INPUT> inputs = {KeyInput(key, 0), KeyInput(key, KEYEVENTF_KEYUP)};
    if (held != 0) {
        inputs.insert(inputs.begin(), KeyInput(held, 0));
        inputs.push_back(KeyInput(held, KEYEVENTF_KEYUP));
    }
    ASSERT_EQ(SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)), inputs.size());
}

void Dialog::Keys(const std::vector<WORD>& keys) const {
    for (const WORD key : keys) {
        Key(key);
    }
}

void Dialog::Type(const std::wstring& text) const {
    for (const wchar_t c : text) {
        const SHORT key = VkKeyScanW(c);
        Key(LOBYTE(key), (HIBYTE(key) & 1) != 0 ? VK_SHIFT : 0);
    }
}

void Dialog::Click(int id) const {
    RECT area{};
    GetClientRect(Control(id), &area);
    Click(Control(id), area);
}

// Posted, since a pointer that other programs can move would make clicks a matter of luck.
void Dialog::Click(HWND control, const RECT& area, int times) const {
    const LPARAM middle = MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2);
    for (int i = 0; i < times; ++i) {
        PostMessageW(control, i % 2 == 0 ? WM_LBUTTONDOWN : WM_LBUTTONDBLCLK, MK_LBUTTON, middle);
        PostMessageW(control, WM_LBUTTONUP, 0, middle);
    }
}

}  // namespace v5::test
