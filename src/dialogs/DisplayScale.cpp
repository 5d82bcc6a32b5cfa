#include "dialogs/DisplayScale.h"

namespace v5 {

namespace {

// A function of user32 that older systems lack; null there.
template <typename Function>
Function UserFunction(const char* name) {
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), name);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

class WindowDc {
  public:
    WindowDc(HWND window, HFONT font) : mWindow(window), mDc(GetDC(window)), mPrevious(SelectObject(mDc, font)) {}
    ~WindowDc() {
        SelectObject(mDc, mPrevious);
        ReleaseDC(mWindow, mDc);
    }
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;

    HDC Get() const { return mDc; }

  private:
    HWND mWindow;
    HDC mDc;
    HGDIOBJ mPrevious;
};

UINT SystemDpi() {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return static_cast<UINT>(dpi);
}

NONCLIENTMETRICSW SystemFonts(UINT dpi) {
    using ForDpi = BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT);
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    const auto forDpi = UserFunction<ForDpi>("SystemParametersInfoForDpi");
    if (forDpi == nullptr || !forDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi)) {
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    }
    return metrics;
}

}  // namespace

UINT DpiOf(HWND window) {
    using ForWindow = UINT(WINAPI*)(HWND);
    const auto forWindow = UserFunction<ForWindow>("GetDpiForWindow");
    const UINT dpi = forWindow != nullptr ? forWindow(window) : 0;
    return dpi != 0 ? dpi : SystemDpi();
}

OwnedHandle<HFONT> CreateMessageFont(UINT dpi, bool bold) {
    LOGFONTW font = SystemFonts(dpi).lfMessageFont;
    if (bold) {
        font.lfWeight = FW_BOLD;
    }
    return OwnedHandle<HFONT>(CreateFontIndirectW(&font));
}

SIZE MeasureText(HWND window, HFONT font, std::wstring_view text) {
    const WindowDc dc(window, font);
    RECT box{};
    DrawTextW(dc.Get(), text.data(), static_cast<int>(text.size()), &box, DT_CALCRECT | DT_NOPREFIX | DT_EXPANDTABS);
    return {box.right, box.bottom};
}

}  // namespace v5
