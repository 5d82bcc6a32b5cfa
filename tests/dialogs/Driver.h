// Works a dialog of the component as a user does: the dialog is shown by a call on a thread of its own, the test
// presses keys and buttons through the system's input queue and looks at the controls.
#pragma once

#include <windows.h>
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace v5::test {

// Whether a condition comes true before the machine must be taken for stuck (30 s). Does not wait longer than needed.
bool Eventually(const std::function<bool()>& condition);

#define EXPECT_EVENTUALLY(condition) EXPECT_TRUE(::v5::test::Eventually([&] { return (condition); })) << #condition
#define ASSERT_EVENTUALLY(condition) ASSERT_TRUE(::v5::test::Eventually([&] { return (condition); })) << #condition

// The visible dialog window of this process with a caption; null when there is none.
HWND FindDialog(const std::wstring& title);

std::wstring TextOf(HWND window);

// One modal call on a thread with a single-threaded apartment and, if wanted, an owner window of its own.
class ModalCall {
  public:
    enum class Owner { None, Window };

    explicit ModalCall(std::function<void()> call, Owner owner = Owner::None);
    ModalCall(const ModalCall&) = delete;
    ModalCall& operator=(const ModalCall&) = delete;
    ~ModalCall();

    // Waits for the call to return.
    void Wait();
    bool IsDone() const { return mDone; }

    HWND OwnerWindow() const { return mOwner; }
    HWND OwnerField() const { return mOwnerField; }  // an edit field in the owner, which has the focus at first
    DWORD ThreadId() const { return mThreadId; }

  private:
    std::atomic<HWND> mOwner = nullptr;
    std::atomic<HWND> mOwnerField = nullptr;
    std::atomic<DWORD> mThreadId = 0;
    std::atomic<bool> mDone = false;
    std::thread mThread;
};

// A dialog that stands on the screen and is worked by keys and clicks.
class Dialog {
  public:
    // Waits until the dialog with this caption is there.
    explicit Dialog(const std::wstring& title);

    HWND Window() const { return mWindow; }
    HWND Control(int id) const { return GetDlgItem(mWindow, id); }
    std::wstring Text(int id) const { return TextOf(Control(id)); }
    bool IsVisible(int id) const { return IsWindowVisible(Control(id)) != FALSE; }
    bool IsEnabled(int id) const { return IsWindowEnabled(Control(id)) != FALSE; }
    bool IsChecked(int id) const { return SendMessageW(Control(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }

    // The control that has the keyboard focus, by its identifier; 0 for none.
    int FocusId() const;

    // Presses and releases a key, with Shift, Alt or nothing held.
    void Key(WORD key, WORD held = 0) const;
    void Keys(const std::vector<WORD>& keys) const;
    // Types characters.
    void Type(const std::wstring& text) const;
    // Clicks with the left mouse button on the middle of a control, or of a rectangle in client coordinates of it.
    void Click(int id) const;
    void Click(HWND control, const RECT& area, int times = 1) const;

  private:
    HWND mWindow;
};

// What a user does with a dialog.
using Work = std::function<void(const Dialog&)>;

inline Work Press(const std::vector<WORD>& keys) {
    return [keys](const Dialog& dialog) { dialog.Keys(keys); };
}
inline Work Click(int id) {
    return [id](const Dialog& dialog) { dialog.Click(id); };
}
inline void CloseByCaption(const Dialog& dialog) {
    PostMessageW(dialog.Window(), WM_SYSCOMMAND, SC_CLOSE, 0);
}

// Makes a modal call, works its dialog, and gives the call's answer.
template <class Call>
auto AnswerOf(const Call& call, const std::wstring& title, const Work& work) {
    decltype(call()) answer{};
    ModalCall modal([&] { answer = call(); });
    work(Dialog(title));
    modal.Wait();
    return answer;
}

}  // namespace v5::test
