#include "config/IniFile.h"

#include <algorithm>
#include <utility>

#include "base/Utf8.h"

namespace v5 {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LittleEndianMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigEndianMark = "\xFE\xFF";

// Blanks in the sense of the profile functions: white space and the old end-of-file mark Ctrl+Z.
bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r') || c == '\x1A';
}

std::string_view Strip(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::string_view UpToNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

std::string_view WithoutQuotes(std::string_view value) {
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

// Takes the next line off the front of `rest`, blanks around it dropped.
std::string_view TakeLine(std::string_view& rest, char lineEnd) {
    const size_t end = rest.find(lineEnd);
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return Strip(line);
}

// Whether the line is a section's header; if so, `name` is the section. A "[" that is never closed starts none.
bool IsHeader(std::string_view line, std::string_view& name) {
    if (line.empty() || line.front() != '[') {
        return false;
    }
    const size_t close = line.rfind(']');
    if (close == std::string_view::npos) {
        return false;
    }
    name = Strip(UpToNul(line.substr(1, close - 1)));
    return true;
}

bool IsAscii(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

IniFile::IniFile(std::string bytes, const IniNames& sections, AnsiDecoder decodeAnsi)
    : mBytes(std::move(bytes)), mDecodeAnsi(std::move(decodeAnsi)), mSections(sections.size()) {
    if (mBytes.starts_with(kUtf16LittleEndianMark)) {
        mBytes = Utf8FromUtf16(std::string_view(mBytes).substr(2), ByteOrder::kLittleEndian);
        mIsUtf8 = true;
    } else if (mBytes.starts_with(kUtf16BigEndianMark)) {
        mBytes = Utf8FromUtf16(std::string_view(mBytes).substr(2), ByteOrder::kBigEndian);
        mIsUtf8 = true;
    } else if (mBytes.starts_with(kUtf8Mark)) {
        mBytes.erase(0, kUtf8Mark.size());
        mIsUtf8 = true;
    }
    mLineEnd = mBytes.find('\n') == std::string::npos ? '\r' : '\n';
    Index(sections);
}

void IniFile::Index(const IniNames& sections) {
    std::string_view rest = mBytes;
    size_t current = IniNames::kNone;
    const char* begin = nullptr;
    const auto closeSection = [&](const char* end) {
        if (current != IniNames::kNone && mSections[current].data() == nullptr) {
            mSections[current] = std::string_view(begin, static_cast<size_t>(end - begin));
        }
    };
    while (!rest.empty()) {
        const char* lineStart = rest.data();
        std::string_view name;
        if (IsHeader(TakeLine(rest, mLineEnd), name)) {
            closeSection(lineStart);
            current = sections.Find(name);
            begin = rest.data();
        }
    }
    closeSection(rest.data());
}

void IniFile::ReadSection(size_t section, const IniNames& keys, std::span<std::string_view> values) const {
    std::fill(values.begin(), values.end(), std::string_view());
    std::string_view rest = mSections[section];
    while (!rest.empty()) {
        const std::string_view line = TakeLine(rest, mLineEnd);
        const size_t equals = line.find('=');
        if (equals == std::string_view::npos || line.front() == ';') {
            continue;
        }
        const size_t key = keys.Find(Strip(UpToNul(line.substr(0, equals))));
        if (key != IniNames::kNone && values[key].data() == nullptr) {
            values[key] = WithoutQuotes(Strip(UpToNul(line.substr(equals + 1))));
        }
    }
}

std::wstring IniFile::Decode(std::string_view value) const {
    if (IsAscii(value)) {
        return {value.begin(), value.end()};
    }
    return mIsUtf8 ? WideFromUtf8(value) : mDecodeAnsi(value);
}

}  // namespace v5
