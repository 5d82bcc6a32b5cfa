// No test: `./dev shots` runs this by its name to take a picture of every dialog.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include "Calls.h"
#include "SiteFile.h"
#include "component/SiteFolder.h"
#include "dialogs/ControlIds.h"
#include "security/frmGetPasswordFromUser.h"

namespace v5::test {

namespace {

// A copy of a window as it stands on the screen.
class Picture {
  public:
    explicit Picture(HWND window) {
        GetWindowRect(window, &mArea);
        mInfo.biSize = sizeof mInfo;
        mInfo.biWidth = mArea.right - mArea.left;
        mInfo.biHeight = mArea.top - mArea.bottom;
        mInfo.biPlanes = 1;
        mInfo.biBitCount = 24;
        const HDC screen = GetDC(nullptr);
        mDc = CreateCompatibleDC(screen);
        mBitmap =
            CreateDIBSection(screen, reinterpret_cast<const BITMAPINFO*>(&mInfo), DIB_RGB_COLORS, &mPixels, nullptr, 0);
        SelectObject(mDc, mBitmap);
        BitBlt(mDc, 0, 0, mInfo.biWidth, -mInfo.biHeight, screen, mArea.left, mArea.top, SRCCOPY);
        ReleaseDC(nullptr, screen);
    }
    ~Picture() {
        DeleteDC(mDc);
        DeleteObject(mBitmap);
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    bool operator==(const Picture& other) const {
        return Size() == other.Size() && std::memcmp(mPixels, other.mPixels, Size()) == 0;
    }

    // Draws the cross of the close box, for which the test machine has no font.
    void DrawCloseCross(HWND window) const {
        RECT box{};
        for (LONG x = mArea.left; x < mArea.right; ++x) {
            for (LONG y = mArea.top; y < mArea.top + GetSystemMetrics(SM_CYCAPTION); ++y) {
                if (SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(x, y)) == HTCLOSE) {
                    const RECT point{x, y, x + 1, y + 1};
                    UnionRect(&box, &box, &point);
                }
            }
        }
        OffsetRect(&box, -mArea.left, -mArea.top);
        InflateRect(&box, -2, -2);
        const UINT state = GetMenuState(GetSystemMenu(window, FALSE), SC_CLOSE, MF_BYCOMMAND);
        FillRect(mDc, &box, GetSysColorBrush(COLOR_BTNFACE));
        SetBkMode(mDc, TRANSPARENT);
        SetTextColor(mDc, GetSysColor((state & MF_GRAYED) != 0 ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
        DrawTextW(mDc, L"\u00D7", 1, &box, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOCLIP);
        GdiFlush();
    }

    void Save(const std::string& path) const {
        BITMAPFILEHEADER header{};
        header.bfType = 0x4D42;  // "BM"
        header.bfOffBits = sizeof header + sizeof mInfo;
        header.bfSize = header.bfOffBits + static_cast<DWORD>(Size());
        std::ofstream file(path, std::ios::binary);
        ASSERT_TRUE(file.is_open()) << path;
        file.write(reinterpret_cast<const char*>(&header), sizeof header);
        file.write(reinterpret_cast<const char*>(&mInfo), sizeof mInfo);
        file.write(static_cast<const char*>(mPixels), static_cast<std::streamsize>(Size()));
    }

  private:
    // Rows end at multiples of four bytes.
    size_t Size() const {
        return (static_cast<size_t>(mInfo.biWidth) * 3 + 3) / 4 * 4 * static_cast<size_t>(-mInfo.biHeight);
    }

    RECT mArea{};
    BITMAPINFOHEADER mInfo{};
    HDC mDc = nullptr;
    HBITMAP mBitmap = nullptr;
    void* mPixels = nullptr;
};

// Whether the window looks the same for a while: all of it is painted.
bool HasSettled(HWND window) {
    constexpr DWORD kStepMilliseconds = 60;
    const Picture first(window);
    for (int i = 0; i < 3; ++i) {
        Sleep(kStepMilliseconds);
        if (!(Picture(window) == first)) {
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
    const Picture picture(dialog.Window());
    if (GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr) {
        picture.DrawCloseCross(dialog.Window());
    }
    picture.Save(std::string(folder) + "\\" + name + ".bmp");
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
             AskForPassword({prompt, title}, [](const SecretText&) { return true; });
         }},
        {"about", L"About Vantor", [](auto) { ShowVantorAboutBox(L"Report Generator"); }},
        {"support", L"Vantor Support Information", [](auto) { ShowVantorSupportInfo(); }},
    };
    for (const auto& each : dialogs) {
        Shoot(each.name, each.title, [&] { each.show(each.title); });
    }
}

}  // namespace v5::test
