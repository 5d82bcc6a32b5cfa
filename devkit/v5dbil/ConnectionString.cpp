#include "v5dbil/ConnectionString.h"

#include <algorithm>

#include "base/Numbers.h"
#include "base/Text.h"

namespace v5::devkit {

namespace {

constexpr std::int32_t kMaxTimeoutSeconds = 600;

// Cuts the value at the front of `rest`, up to the semicolon after it, and takes it off `rest`.
std::wstring TakeValue(std::wstring_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(L' '), rest.size()));
    std::wstring value;
    if (!rest.empty() && (rest.front() == L'"' || rest.front() == L'\'')) {
        const wchar_t quote = rest.front();
        const size_t close = std::min(rest.find(quote, 1), rest.size());
        value = rest.substr(1, close - 1);
        rest.remove_prefix(close);
    } else {
        value = Trim(rest.substr(0, rest.find(L';')));
    }
    const size_t end = rest.find(L';');
    rest.remove_prefix(end == std::wstring_view::npos ? rest.size() : end + 1);
    return value;
}

bool AsksForWindows(std::wstring_view value) {
    return EqualsIgnoreCase(value, L"SSPI") || EqualsIgnoreCase(value, L"true") || EqualsIgnoreCase(value, L"yes");
}

void Apply(ConnectionSettings& settings, std::wstring_view key, const std::wstring& value) {
    if (EqualsIgnoreCase(key, L"Data Source") || EqualsIgnoreCase(key, L"Server")) {
        settings.dataSource = value;
    } else if (EqualsIgnoreCase(key, L"User ID") || EqualsIgnoreCase(key, L"UID")) {
        settings.userId = value;
    } else if (EqualsIgnoreCase(key, L"Integrated Security") || EqualsIgnoreCase(key, L"Trusted_Connection")) {
        settings.windowsAuthentication = AsksForWindows(value);
    } else if (EqualsIgnoreCase(key, L"Connect Timeout")) {
        const auto seconds = ToLong(value);
        if (seconds && *seconds >= 0 && *seconds <= kMaxTimeoutSeconds) {
            settings.busyTimeout = std::chrono::seconds(*seconds);
        }
    }
}

}  // namespace

ConnectionSettings ParseConnectionString(std::wstring_view text) {
    ConnectionSettings settings;
    while (!text.empty()) {
        const size_t equals = text.find_first_of(L"=;");
        if (equals == std::wstring_view::npos) {
            break;
        }
        const std::wstring_view key = Trim(text.substr(0, equals));
        const bool hasValue = text[equals] == L'=';
        text.remove_prefix(equals + 1);
        if (hasValue) {
            Apply(settings, key, TakeValue(text));
        }
    }
    return settings;
}

}  // namespace v5::devkit
