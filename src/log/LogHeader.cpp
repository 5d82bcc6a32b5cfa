#include "log/LogHeader.h"

#include <algorithm>

#include "log/LogPorts.h"

namespace v5 {

namespace {

constexpr std::wstring_view kLeft = L"** ";
constexpr std::wstring_view kRight = L" **";

std::vector<std::wstring> Boxed(const std::vector<std::wstring>& lines) {
    size_t width = 0;
    for (const std::wstring& line : lines) {
        width = std::max(width, line.size());
    }
    const std::wstring frame(kLeft.size() + width + kRight.size(), L'*');
    std::vector<std::wstring> box{frame};
    for (const std::wstring& line : lines) {
        box.push_back(std::wstring(kLeft).append(line).append(width - line.size(), L' ').append(kRight));
    }
    box.push_back(frame);
    return box;
}

}  // namespace

std::vector<std::wstring> LogHeader(const LogHost& host, std::wstring_view title, const CivilDateTime& now,
                                    std::wstring_view filename) {
    return Boxed({
        std::wstring(title),
        host.LongDateAndTime(now),
        L"",
        L"Installed Vantor Releases:",
        L"    " + host.ReleaseNumber(ReleaseKind::Full),
        L"    " + host.ReleaseNumber(ReleaseKind::SupportFiles),
        L"    " + host.ReleaseNumber(ReleaseKind::Web),
        L"Log Filename: " + std::wstring(filename),
        L"Machine Name: " + host.ComputerName(),
        L"O/S: " + host.OperatingSystem(),
    });
}

}  // namespace v5
