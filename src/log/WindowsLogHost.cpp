#include "log/WindowsLogHost.h"

#include <windows.h>

#include <array>

#include "platform/AnsiCodePage.h"
#include "platform/Module.h"
#include "platform/SystemInfo.h"
#include "productinfo/WindowsInstaller.h"

namespace v5 {

std::wstring WindowsLogHost::LibraryFolder() const {
    return ModuleFolder();
}

std::wstring WindowsLogHost::SystemErrorText(std::uint32_t code) const {
    std::array<char, 256> text;  // longer messages count as not found: published so
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                                        text.data(), static_cast<DWORD>(text.size()), nullptr);
    return FromAnsi({text.data(), length});
}

std::wstring WindowsLogHost::LongDateAndTime(const CivilDateTime& time) const {
    SYSTEMTIME system{};
    system.wYear = static_cast<WORD>(time.year);
    system.wMonth = static_cast<WORD>(time.month);
    system.wDay = static_cast<WORD>(time.day);
    system.wHour = static_cast<WORD>(time.hour);
    system.wMinute = static_cast<WORD>(time.minute);
    system.wSecond = static_cast<WORD>(time.second);
    std::array<wchar_t, 256> dateText{};  // a user's own format has at most 80 characters
    std::array<wchar_t, 256> timeText{};
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_LONGDATE, &system, nullptr, dateText.data(),
                   static_cast<int>(dateText.size()));
    GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &system, nullptr, timeText.data(), static_cast<int>(timeText.size()));
    return std::wstring(dateText.data()) + L" " + timeText.data();
}

std::wstring WindowsLogHost::ReleaseNumber(ReleaseKind kind) const {
    WindowsInstaller installer;
    return v5::ReleaseNumber(installer, nullptr, kind);
}

std::wstring WindowsLogHost::ComputerName() const {
    return LocalComputerName();
}

std::wstring WindowsLogHost::OperatingSystem() const {
    return OperatingSystemText();
}

}  // namespace v5
