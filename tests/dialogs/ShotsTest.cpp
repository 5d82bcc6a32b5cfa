// No test: `./dev shots` runs this by its name to take a picture of every dialog.
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "Calls.h"
#include "SiteFile.h"
#include "component/SiteFolder.h"
#include "dialogs/ControlIds.h"
#include "security/frmGetPasswordFromUser.h"

namespace v5::test {

namespace {

// Draws the cross of the close box, for which the test machine has no font.
void DrawCloseCross(HDC dc, HWND window, const RECT& area) {
    RECT box{};
    for (LONG x = area.left; x < area.right; ++x) {
        for (LONG y = area.top; y < area.top + GetSystemMetrics(SM_CYCAPTION); ++y) {
            if (SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(x, y)) == HTCLOSE) {
                const RECT point{x, y, x + 1, y + 1};
                UnionRect(&box, &box, &point);
            }
        }
    }
    OffsetRect(&box, -area.left, -area.top);
    InflateRect(&box, -2, -2);
    const UINT state = GetMenuState(GetSystemMenu(window, FALSE), SC_CLOSE, MF_BYCOMMAND);
    FillRect(dc, &box, GetSysColorBrush(COLOR_BTNFACE));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor((state & MF_GRAYED) != 0 ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
    DrawTextW(dc, L"\u00D7", 1, &box, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOCLIP);
}

// A copy of a window as it stands on the screen: a BMP file behind its first header.
struct Picture {
    BITMAPINFOHEADER info{};
    std::vector<char> pixels;
};

Picture PictureOf(HWND window, bool drawsCross) {
    RECT area{};
    GetWindowRect(window, &area);
    const LONG width = area.right - area.left, height = area.bottom - area.top;
    Picture picture;
    picture.info = {sizeof picture.info, width, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    picture.pixels.resize(static_cast<size_t>((width * 3 + 3) / 4 * 4 * height));  // rows end at multiples of four
    const HDC screen = GetDC(nullptr), dc = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ previous = SelectObject(dc, bitmap);
    BitBlt(dc, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    if (drawsCross) {
        DrawCloseCross(dc, window, area);
    }
    SelectObject(dc, previous);
    GetDIBits(screen, bitmap, 0, static_cast<UINT>(height), picture.pixels.data(),
              reinterpret_cast<BITMAPINFO*>(&picture.info), DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    return picture;
}

// Whether the window looks the same for a while: all of it is painted.
bool HasSettled(HWND window) {
    constexpr DWORD kStepMilliseconds = 60;
    const Picture first = PictureOf(window, false);
    for (int i = 0; i < 3; ++i) {
        Sleep(kStepMilliseconds);
        if (PictureOf(window, false).pixels != first.pixels) {
            return false;
        }
    }
    return true;
}

// Shows a dialog, takes its picture when it is painted, and closes it.
void Shoot(const std::string& name, const std::wstring& title, const std::function<void()>& show) {
    const char* folder = std::getenv("V5_SHOTS");
    ASSERT_NE(folder, nullptr) << "V5_SHOTS names the folder for the pictures";
    ModalCall call(show);
    const Dialog dialog(title);
    EXPECT_EVENTUALLY(HasSettled(dialog.Window()));
    SendMessageW(dialog.Window(), WM_NCACTIVATE, TRUE, 0);  // without a window manager, captions look inactive
    RedrawWindow(dialog.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_FRAME);
    EXPECT_EVENTUALLY(HasSettled(dialog.Window()));
    const bool isWine = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    const Picture picture = PictureOf(dialog.Window(), isWine);
    constexpr DWORD kHeaders = sizeof(BITMAPFILEHEADER) + sizeof picture.info;
    const BITMAPFILEHEADER header{0x4D42, kHeaders + picture.info.biSizeImage, 0, 0, kHeaders};  // "BM"
    std::ofstream file(std::string(folder) + "\\" + name + ".bmp", std::ios::binary);
    ASSERT_TRUE(file.is_open()) << name;
    file.write(reinterpret_cast<const char*>(&header), sizeof header);
    file.write(reinterpret_cast<const char*>(&picture.info), sizeof picture.info);
    file.write(picture.pixels.data(), static_cast<std::streamsize>(picture.pixels.size()));
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
    const SiteFolder site(SiteFile({{1, "NORTH", "Primary"},
                                    {2, "NORTH", "Secondary"},
                                    {3, "SOUTH", "Standalone"},
                                    {4, "WEST", "Standalone", true}}));
    const wchar_t* const prompt =
        L"Your account may not enter the debug mode of the I/O software. Somebody who may can "
        L"enter the password here.";
    const wchar_t* const warning =
        L"The calibration cannot be started while the analyzer is purging. Should the program wait for the end of the "
        L"purge and then start the calibration by itself, or should it be left to the next scheduled time?\r\n\r\n"
        L"Analyzer: SO2 & NOx, stack 2";
    const struct {
        const char* name;
        const wchar_t* title;
        std::function<void(const wchar_t* title)> show;
    } dialogs[] = {
        {"message-warning", L"Vantor 5", [&](auto title) { AsyncMsgBox(warning, 0x34, title); }},
        {"message-error", L"Vantor 5", [](auto title) { AsyncMsgBox(L"The report cannot be printed.", 0x12, title); }},
        {"message-question", L"Vantor 5", [](auto title) { AsyncMsgBox(L"Save the changes?", 0x123, title); }},
        {"message-information", L"Vantor 5", [](auto title) { AsyncMsgBox(L"The backup is complete.", 0x41, title); }},
        {"message-plain", L"Vantor 5", [](auto title) { AsyncMsgBox(L"Done.", 0, title); }},
        {"date-only", L"First CEMS date", [](auto title) { GetDateFromUser(title, DateOf(2024, 12, 20), true); }},
        {"date-none", L"End of the outage", [](auto title) { GetDateFromUser(title, -1, false, false, false); }},
        {"time", L"Time of the daily calibration", [](auto title) { GetTimeFromUser(title, 13.5 / 24); }},
        {"dahs", L"Choose DAHS", [](auto) { GetDahsIdFromUser(0); }},
        {"password", L"Enter debug mode",
         [&](auto title) {
             const auto isSettled = [](const SecretText&) { return true; };
             AskForPassword({prompt, title}, isSettled);
         }},
        {"about", L"About Vantor", [](auto) { ShowVantorAboutBox(L"Report Generator"); }},
        {"support", L"Vantor Support Information", [](auto) { ShowVantorSupportInfo(); }},
    };
    for (const auto& each : dialogs) {
        Shoot(each.name, each.title, [&] { each.show(each.title); });
    }
}

}  // namespace v5::test
