#include "SiteLines.h"

#include <windows.h>

#include <algorithm>

namespace v5site {

namespace {

constexpr std::string_view kBlanks = " \t\r";

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return lower;
}

std::string_view Stripped(std::string_view text) {
    const size_t first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string ReadBytes(const std::wstring& path) {
    HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    std::string bytes;
    if (file != INVALID_HANDLE_VALUE) {
        char buffer[8192];
        DWORD got = 0;
        while (ReadFile(file, buffer, sizeof buffer, &got, nullptr) && got > 0) {
            bytes.append(buffer, got);
        }
        CloseHandle(file);
    }
    return bytes;
}

// Section and key names are ASCII, so of a UTF-16 file the bytes without the zeros do.
std::string NamesReadable(std::string bytes) {
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        bytes.erase(0, 2);
        std::erase(bytes, '\0');
    } else if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.erase(0, 3);
    }
    return bytes;
}

// The decimal number after "DAHS" or "DAHS " in a finding; empty when there is none.
std::string DahsNumber(std::wstring_view finding, size_t& end) {
    for (size_t at = finding.find(L"DAHS"); at != std::wstring_view::npos; at = finding.find(L"DAHS", at + 1)) {
        size_t digit = at + 4;
        if (digit < finding.size() && finding[digit] == L' ') {
            ++digit;
        }
        std::string number;
        for (end = digit; end < finding.size() && finding[end] >= L'0' && finding[end] <= L'9'; ++end) {
            number += static_cast<char>(finding[end]);
        }
        const bool isWhole = end < finding.size() && (finding[end] == L':' || finding[end] == L' ');
        if (!number.empty() && isWhole) {
            return number;
        }
    }
    return {};
}

// The key that the rest of a finding names first in quotes.
std::string KeyNamed(std::wstring_view rest) {
    if (rest.starts_with(L": Computer name ")) {
        return "dahscomputername";
    }
    const size_t quote = rest.starts_with(L":") ? rest.find(L'\'') : std::wstring_view::npos;
    std::string key;
    for (size_t i = quote + 1; quote != std::wstring_view::npos && i < rest.size(); ++i) {
        const wchar_t c = rest[i];
        if (c == L'\'' || c == L'=' || c >= 0x80) {
            break;
        }
        key += static_cast<char>(c);
    }
    return Lower(key);
}

}  // namespace

SiteLines::SiteLines(const std::wstring& path) {
    const std::string bytes = NamesReadable(ReadBytes(path));
    for (size_t from = 0; from < bytes.size();) {
        const size_t end = std::min(bytes.find('\n', from), bytes.size());
        mLines.push_back(Lower(Stripped(std::string_view(bytes).substr(from, end - from))));
        from = end + 1;
    }
}

size_t SiteLines::LineOf(std::wstring_view finding) const {
    size_t end = 0;
    const std::string number = DahsNumber(finding, end);
    return number.empty() ? 0 : Find("[dahs" + number + "]", KeyNamed(finding.substr(end)));
}

size_t SiteLines::Find(const std::string& section, const std::string& key) const {
    const auto header = std::find(mLines.begin(), mLines.end(), section);
    if (header == mLines.end()) {
        return 0;
    }
    auto line = header;
    for (auto next = header + 1; !key.empty() && next != mLines.end() && !next->starts_with('['); ++next) {
        if (next->find('=') != std::string::npos &&
            Stripped(std::string_view(*next).substr(0, next->find('='))) == key) {
            line = next;
            break;
        }
    }
    return static_cast<size_t>(line - mLines.begin()) + 1;
}

}  // namespace v5site
