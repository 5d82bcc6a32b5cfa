// Works a modal window from another thread while the test's own thread is inside the call that shows it.
#pragma once

#include <windows.h>

#include <functional>
#include <iterator>
#include <string>
#include <thread>

namespace v5::test {

inline std::wstring WindowText(HWND window) {
    wchar_t text[512] = {};
    SendMessageW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    return text;
}

class WindowVisitor {
  public:
    // Waits for this process's window of the title, lets `visit` look at it, and closes it with Esc's command.
    WindowVisitor(std::wstring title, std::function<void(HWND)> visit)
        : thread_([this, title = std::move(title), visit = std::move(visit), caller = GetCurrentThreadId()] {
              if (const HWND window = WaitFor(title, caller)) {
                  visited_ = true;
                  visit(window);
                  PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
              }
          }) {}
    ~WindowVisitor() { Visited(); }
    WindowVisitor(const WindowVisitor&) = delete;
    WindowVisitor& operator=(const WindowVisitor&) = delete;

    // Waits for the visit to end; false when the window never came.
    bool Visited() {
        if (thread_.joinable()) {
            thread_.join();
        }
        return visited_;
    }

  private:
    static HWND WaitFor(const std::wstring& title, DWORD caller) {
        constexpr int kTries = 500;
        for (int i = 0; i < kTries; ++i) {
            const HWND window = FindWindowW(nullptr, title.c_str());
            if (window != nullptr && IsWindowVisible(window) && GetWindowThreadProcessId(window, nullptr) == caller) {
                return window;
            }
            Sleep(20);
        }
        return nullptr;
    }

    bool visited_ = false;
    std::thread thread_;
};

}  // namespace v5::test
