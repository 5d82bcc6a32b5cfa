#include "productinfo/SupportInfo.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

#include "ProductConstants.h"
#include "base/Dates.h"
#include "base/Numbers.h"
#include "base/Text.h"

namespace v5 {
namespace {

// The number in the pattern "0000-00-00": eight digits at least, more of them before the first dash.
std::wstring WithDatePattern(double number) {
    std::wstring digits = ZeroPadded(std::to_wstring(std::llround(number)), 8);
    digits.insert(digits.size() - 2, L"-");
    digits.insert(digits.size() - 5, L"-");
    return digits;
}

bool IsDayOfCalendar(int year, int month, int day) {
    return year >= kMinYear && year <= kMaxYear && month >= 1 && month <= 12 && day >= 1 &&
           day <= DaysInMonth(year, month);
}

// Three groups of one to four digits between two equal separators.
std::optional<std::array<int, 3>> DateParts(std::wstring_view text) {
    const size_t first = text.find_first_of(L"-/.");
    if (first == std::wstring_view::npos) {
        return std::nullopt;
    }
    const std::vector<std::wstring> pieces = Split(text, text[first]);
    std::array<int, 3> parts{};
    if (pieces.size() != parts.size()) {
        return std::nullopt;
    }
    for (size_t i = 0; i < parts.size(); ++i) {
        if (pieces[i].empty() || pieces[i].size() > 4 ||
            pieces[i].find_first_not_of(L"0123456789") != std::wstring::npos) {
            return std::nullopt;
        }
        parts[i] = std::stoi(pieces[i]);
    }
    return parts;
}

bool IsDate(std::wstring_view text) {
    const auto parts = DateParts(text);
    if (!parts) {
        return false;
    }
    const auto [a, b, c] = *parts;
    return IsDayOfCalendar(a, b, c) || IsDayOfCalendar(c, a, b) || IsDayOfCalendar(c, b, a);
}

// Runs one step whose failure is passed over.
template <typename Step>
void Try(Step step) {
    try {
        step();
    } catch (...) {  // NOLINT(bugprone-empty-catch): the label keeps the text that it has
    }
}

void ReadDate(InstallerQueries& installer, MessageSink* sink, std::wstring_view upgradeCode, SupportPackage& package) {
    Try([&] {
        const std::wstring date = DisplayDate(InstallDate(installer, sink, upgradeCode));
        if (!date.empty()) {
            package.installed = L"Installed " + date;
        }
    });
}

void ReadPackage(InstallerQueries& installer, MessageSink* sink, std::wstring_view upgradeCode,
                 SupportPackage& package) {
    Try([&] { package.release = InstalledProductName(installer, sink, upgradeCode); });
    ReadDate(installer, sink, upgradeCode, package);
}

// The Ostra product under its code, or else under the code that it had before.
void ReadOstra(InstallerQueries& installer, MessageSink* sink, SupportPackage& package) {
    Try([&] { package.release = InstalledProductName(installer, sink, product::kUpgradeCodeOstra); });
    if (package.release.empty()) {
        ReadPackage(installer, sink, product::kUpgradeCodeOstraOlder, package);
    } else {
        ReadDate(installer, sink, product::kUpgradeCodeOstra, package);
    }
}

bool IsMailProgramRegistered(const RegistryReader& registry) {
    bool isRegistered = false;
    Try([&] {
        isRegistered =
            !registry.ReadText(RegistryRoot::ClassesRoot, L"mailto\\shell\\open\\command", L"").value_or(L"").empty();
    });
    return isRegistered;
}

}  // namespace

SupportInfo ReadSupportInfo(InstallerQueries& installer, const RegistryReader& registry, MessageSink* sink) {
    SupportInfo info;
    ReadPackage(installer, sink, product::kUpgradeCodeSupportFiles, info.supportFiles);
    ReadPackage(installer, sink, product::kUpgradeCodeMain, info.main);
    ReadPackage(installer, sink, product::kUpgradeCodeWeb, info.web);
    ReadOstra(installer, sink, info.ostra);
    info.company = product::kCompanyName;
    info.phone = product::kSupportPhone;
    info.email = product::kSupportEmail;
    info.emailIsLink = IsMailProgramRegistered(registry);
    return info;
}

std::wstring SupportMailAddress(std::wstring_view email, std::wstring_view vantorRelease) {
    const std::wstring subject = L"?subject=support request (" + std::wstring(vantorRelease) + L")";
    return L"mailto:" + std::wstring(email) + ReplaceAll(ReplaceAll(subject, L" ", L"%20"), L".", L"%2E");
}

std::wstring DisplayDate(std::wstring_view installDate) {
    const std::optional<double> number = ParseNumber(installDate);
    if (number && (*number < 0 || *number >= 1e9)) {
        return {};  // no date has so many digits, and none has a sign
    }
    const std::wstring text = number ? WithDatePattern(*number) : std::wstring(installDate);
    return IsDate(text) ? text : std::wstring();
}

}  // namespace v5
