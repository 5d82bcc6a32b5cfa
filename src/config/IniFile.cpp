#include "config/IniFile.h"

#include <algorithm>
#include <utility>

namespace v5 {

namespace {

// Blanks in the sense of the profile functions: white space and the old end-of-file mark Ctrl+Z.
bool IsBlank(wchar_t c) {
    return c == L' ' || (c >= L'\t' && c <= L'\r') || c == L'\x1A';
}

std::wstring_view Strip(std::wstring_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::wstring_view UpToNul(std::wstring_view text) {
    return text.substr(0, text.find(L'\0'));
}

std::wstring_view WithoutQuotes(std::wstring_view value) {
    const bool quoted =
        value.size() >= 2 && (value.front() == L'"' || value.front() == L'\'') && value.front() == value.back();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

wchar_t LineEndOf(std::wstring_view text) {
    return text.find(L'\n') == std::wstring_view::npos ? L'\r' : L'\n';
}

std::wstring_view TakeIniLine(std::wstring_view& rest, wchar_t lineEnd) {
    const size_t end = rest.find(lineEnd);
    const std::wstring_view line = rest.substr(0, end);
    rest.remove_prefix(end == std::wstring_view::npos ? rest.size() : end + 1);
    return Strip(line);
}

bool IsIniHeader(std::wstring_view line, std::wstring_view& name) {
    if (line.empty() || line.front() != L'[') {
        return false;
    }
    const size_t close = line.rfind(L']');
    if (close == std::wstring_view::npos) {
        return false;
    }
    name = Strip(UpToNul(line.substr(1, close - 1)));
    return true;
}

bool IsIniSetting(std::wstring_view line, std::wstring_view& key, std::wstring_view& value) {
    const size_t equals = line.find(L'=');
    if (equals == std::wstring_view::npos || line.front() == L';') {
        return false;
    }
    key = Strip(UpToNul(line.substr(0, equals)));
    value = WithoutQuotes(Strip(UpToNul(line.substr(equals + 1))));
    return true;
}

IniFile::IniFile(std::wstring text, const IniNames& sections)
    : mText(std::move(text)), mLineEnd(LineEndOf(mText)), mSections(sections.size()) {
    Index(sections);
}

void IniFile::Index(const IniNames& sections) {
    std::wstring_view rest = mText;
    size_t current = IniNames::kNone;
    const wchar_t* begin = nullptr;
    const auto closeSection = [&](const wchar_t* end) {
        if (current != IniNames::kNone && mSections[current].data() == nullptr) {
            mSections[current] = std::wstring_view(begin, static_cast<size_t>(end - begin));
        }
    };
    while (!rest.empty()) {
        const wchar_t* lineStart = rest.data();
        std::wstring_view name;
        if (IsIniHeader(TakeIniLine(rest, mLineEnd), name)) {
            closeSection(lineStart);
            current = sections.Find(name);
            begin = rest.data();
        }
    }
    closeSection(rest.data());
}

void IniFile::ReadSection(size_t section, const IniNames& keys, std::span<std::wstring_view> values) const {
    std::fill(values.begin(), values.end(), std::wstring_view());
    std::wstring_view rest = mSections[section];
    while (!rest.empty()) {
        std::wstring_view name, value;
        if (!IsIniSetting(TakeIniLine(rest, mLineEnd), name, value)) {
            continue;
        }
        const size_t key = keys.Find(name);
        if (key != IniNames::kNone && values[key].data() == nullptr) {
            values[key] = value;
        }
    }
}

}  // namespace v5
