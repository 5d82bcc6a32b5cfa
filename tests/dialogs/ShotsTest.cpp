// No test: `./dev shots` runs this by its name to take a picture of every dialog.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "Calls.h"
#include "SiteFolder.h"
#include "dialogs/ControlIds.h"
#include "security/PasswordForm.h"

namespace v5::test {

namespace {

// Writes a part of the screen into a bitmap file.
void Capture(const RECT& area, const std::string& path) {
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    BITMAPINFOHEADER info{};
    info.biSize = sizeof info;
    info.biWidth = width;
    info.biHeight = -height;
    info.biPlanes = 1;
    info.biBitCount = 24;
    void* pixels = nullptr;
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap =
        CreateDIBSection(screen, reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS, &pixels, nullptr, 0);
    SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    GdiFlush();
    const auto size = static_cast<DWORD>((width * 3 + 3) / 4 * 4 * height);  // rows end at multiples of four bytes
    BITMAPFILEHEADER header{};
    header.bfType = 0x4D42;  // "BM"
    header.bfOffBits = sizeof header + sizeof info;
    header.bfSize = header.bfOffBits + size;
    FILE* file = std::fopen(path.c_str(), "wb");
    ASSERT_NE(file, nullptr) << path;
    std::fwrite(&header, sizeof header, 1, file);
    std::fwrite(&info, sizeof info, 1, file);
    std::fwrite(pixels, size, 1, file);
    std::fclose(file);
    DeleteDC(memory);
    DeleteObject(bitmap);
    ReleaseDC(nullptr, screen);
}

// Shows a dialog, takes its picture as soon as it is painted, and closes it.
void Shoot(const std::string& name, const std::wstring& title, const std::function<void()>& show) {
    const char* folder = std::getenv("V5_SHOTS");
    ASSERT_NE(folder, nullptr) << "V5_SHOTS names the folder for the pictures";
    ModalCall call(show);
    const Dialog dialog(title);
    SendMessageW(dialog.Window(), WM_NCACTIVATE, TRUE, 0);  // without a window manager, captions look inactive
    RedrawWindow(dialog.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_FRAME);
    RECT area{};
    GetWindowRect(dialog.Window(), &area);
    Capture(area, std::string(folder) + "\\" + name + ".bmp");
    for (const WPARAM id : {IDCANCEL, IDABORT, IDNO}) {
        PostMessageW(dialog.Window(), WM_COMMAND, id, 0);
    }
}

}  // namespace

// Also the picture at the end of `./dev demo`.
TEST(Shots, DISABLED_DateDialog) {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    const int day = now.wDay > 14 ? now.wDay - 8 : now.wDay + 9;  // today stands out beside it
    Shoot("date", L"Start of the report", [&] {
        GetDateFromUser(L"Start of the report", DateOf(now.wYear, now.wMonth, day, 13, 30), false, true, false);
    });
}

TEST(Shots, DISABLED_OtherDialogs) {
    Shoot("message-warning", L"Vantor 5", [] {
        AsyncMsgBox(
            L"The calibration cannot be started while the analyzer is purging. Should the program wait for the end of "
            L"the purge and then start the calibration by itself, or should it be left to the next scheduled time?"
            L"\r\n\r\nAnalyzer: SO2 & NOx, stack 2",
            0x34, L"Vantor 5");
    });
    Shoot("message-error", L"Vantor 5", [] { AsyncMsgBox(L"The report cannot be printed.", 0x12, L"Vantor 5"); });
    Shoot("message-question", L"Vantor 5", [] { AsyncMsgBox(L"Save the changes?", 0x123, L"Vantor 5"); });
    Shoot("message-information", L"Vantor 5", [] { AsyncMsgBox(L"The backup is complete.", 0x41, L"Vantor 5"); });
    Shoot("message-plain", L"Vantor 5", [] { AsyncMsgBox(L"Done.", 0, L"Vantor 5"); });
    Shoot("date-only", L"First CEMS date", [] { GetDateFromUser(L"First CEMS date", DateOf(2024, 12, 20), true); });
    Shoot("date-none", L"End of the outage", [] { GetDateFromUser(L"End of the outage", -1, false, false, false); });
    Shoot("time", L"Time of the daily calibration",
          [] { GetTimeFromUser(L"Time of the daily calibration", 13.5 / 24); });
    const SiteFolder site({{1, "NORTH", "Primary"},
                           {2, "NORTH", "Secondary"},
                           {3, "SOUTH", "Standalone"},
                           {4, "WEST", "Standalone", true}});
    Shoot("dahs", L"Choose DAHS", [] { GetDahsIdFromUser(0); });
    Shoot("password", L"Enter debug mode", [] {
        PasswordForm form;
        form.SetWindowTitle(L"Enter debug mode");
        form.SetMessage(
            L"Your account may not enter the debug mode of the I/O software. Somebody who may can enter the password "
            L"here.");
        form.Ask();
    });
    Shoot("about", L"About Vantor", [] { ShowVantorAboutBox(L"Report Generator"); });
    Shoot("support", L"Vantor Support Information", [] { ShowVantorSupportInfo(); });
}

}  // namespace v5::test
