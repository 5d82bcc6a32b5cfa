#include "PasswordMask.h"

#include <algorithm>
#include <cwctype>

namespace v5site {

namespace {

bool EndsWith(std::wstring_view text, std::wstring_view end) {
    return text.size() >= end.size() &&
           std::equal(end.begin(), end.end(), text.end() - static_cast<std::ptrdiff_t>(end.size()),
                      [](wchar_t a, wchar_t b) {
                          return a == static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(b)));
                      });
}

bool IsPasswordName(std::wstring_view name) {
    const size_t last = name.find_last_not_of(L" \t\"'");
    name = name.substr(0, last + 1);
    return EndsWith(name, L"password") || EndsWith(name, L"pwd") || EndsWith(name, L"passwd") ||
           EndsWith(name, L"secret");
}

// The quote that closes a value which begins with `open`; none for a value without quotes.
wchar_t Closing(wchar_t open) {
    return open == L'{' ? L'}' : open == L'"' || open == L'\'' ? open : L'\0';
}

// Where the closing quote of a value is whose text starts at `start`; a doubled quote stands for itself.
size_t EndOfQuoted(std::wstring_view text, size_t start, wchar_t close) {
    size_t end = text.find(close, start);
    while (end != std::wstring_view::npos && end + 1 < text.size() && text[end + 1] == close) {
        end = text.find(close, end + 2);
    }
    return std::min(end, text.size());
}

std::wstring WithQuotesUndoubled(std::wstring_view text, wchar_t quote) {
    std::wstring plain;
    for (size_t i = 0; i < text.size(); ++i) {
        plain += text[i];
        i += text[i] == quote && i + 1 < text.size() && text[i + 1] == quote ? 1 : 0;
    }
    return plain;
}

std::wstring WithQuotesDoubled(std::wstring_view text, wchar_t quote) {
    std::wstring quoted;
    for (const wchar_t c : text) {
        quoted.append(c == quote ? 2 : 1, c);
    }
    return quoted;
}

// `hasSecrets`: whether any address may hold a secret; else what looks like a secret may be the number of a port.
std::wstring MaskAddresses(std::wstring_view text, bool hasSecrets) {
    constexpr std::wstring_view kScheme = L"://";
    std::wstring masked;
    for (size_t found = text.find(kScheme); found != std::wstring_view::npos; found = text.find(kScheme)) {
        const size_t user = found + kScheme.size();
        const size_t colon = std::min(text.find_first_of(L":@/?#\" \t", user), text.size());
        masked += text.substr(0, user);
        text.remove_prefix(user);
        if (user + text.size() == colon || text[colon - user] != L':') {
            continue;
        }
        masked += text.substr(0, colon + 1 - user);
        text.remove_prefix(colon + 1 - user);
        const size_t at = text.substr(0, text.find_first_of(L"\" \t")).rfind(L'@');
        const size_t end =
            at != std::wstring_view::npos ? at : std::min(text.find_first_of(L"/?#;\"' \t"), text.size());
        const std::wstring_view secret = text.substr(0, end);
        const bool isPort = !hasSecrets && secret.find_first_not_of(L"0123456789") == std::wstring_view::npos;
        if (at != std::wstring_view::npos || (!secret.empty() && !isPort)) {
            masked += L"***";
            text.remove_prefix(end);
        }
    }
    return masked += text;
}

std::wstring MaskSettings(std::wstring_view text, int depth) {
    constexpr int kDeepest = 8;  // values within values; each level of real ones doubles the quotes
    if (depth > kDeepest) {
        return L"***";
    }
    std::wstring masked;
    size_t at = 0;
    while (at < text.size()) {
        const size_t equals = text.find_first_of(L"=;", at);
        if (equals == std::wstring_view::npos || text[equals] == L';') {  // a setting or the rest of a value
            const size_t next = std::min(equals, text.size() - 1) + 1;
            masked += text.substr(at, next - at);
            at = next;
            continue;
        }
        masked += text.substr(at, equals + 1 - at);
        const size_t first = std::min(text.find_first_not_of(L" \t", equals + 1), text.size());
        const wchar_t close = first < text.size() ? Closing(text[first]) : L'\0';
        const size_t quoteEnd = close == L'\0' ? first : EndOfQuoted(text, first + 1, close);
        if (IsPasswordName(text.substr(at, equals - at))) {
            masked += L"***";
            at = std::min(text.find(L';', quoteEnd), text.size());
            continue;
        }
        if (close == L'\0') {  // the value may itself be a setting: look at it as one
            at = equals + 1;
            continue;
        }
        const std::wstring inner = WithQuotesUndoubled(text.substr(first + 1, quoteEnd - first - 1), close);
        masked += text.substr(equals + 1, first - equals);
        masked += WithQuotesDoubled(MaskSettings(inner, depth + 1), close);
        masked += text.substr(quoteEnd, 1);
        at = std::min(quoteEnd + 1, text.size());
    }
    return masked;
}

}  // namespace

std::wstring MaskPasswords(std::wstring_view text) {
    // In this order: an address never hides where a quote ends. What was masked may have held an address's "@".
    return MaskAddresses(MaskSettings(text, 0), text.find(L'@') != std::wstring_view::npos);
}

}  // namespace v5site
