#include "log/LogLine.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "log/LogPorts.h"

namespace v5 {

namespace {

constexpr std::uint32_t kTickMask = 0x7FFFFFFF;
constexpr size_t kTickColumns = 13;

// Copies `text` as it stands and tells whether it is all ASCII, on which every ANSI code page agrees.
bool CopyAscii(std::wstring_view text, char* bytes) {
    std::uint32_t seen = 0;
    for (const wchar_t c : text) {
        *bytes++ = static_cast<char>(c);
        seen |= static_cast<std::uint32_t>(c);
    }
    return seen < 0x80;
}

}  // namespace

LogLine& LogLine::Begin() {
    length_ = 0;
    prefixLength_ = 0;
    return *this;
}

LogLine& LogLine::Tick(std::uint32_t tickMilliseconds) {
    char* const field = Extend(kTickColumns);
    std::memset(field, ' ', kTickColumns);
    std::to_chars(field, field + kTickColumns, tickMilliseconds & kTickMask);
    return *this;
}

LogLine& LogLine::Stamp(const CivilDateTime& time) {
    if (!isStamped_ || time != stampTime_) {
        const std::wstring stamp = FormatTimestamp12(time);
        CopyAscii(std::wstring_view(stamp).substr(0, stamp_.size()), stamp_.data());
        stampTime_ = time;
        isStamped_ = true;
    }
    std::memcpy(Extend(stamp_.size()), stamp_.data(), stamp_.size());
    return *this;
}

LogLine& LogLine::Text(std::wstring_view text) {
    char* const bytes = Extend(text.size());
    if (!CopyAscii(text, bytes)) {
        encoder_.Encode(text, bytes);
    }
    return *this;
}

std::string_view LogLine::End() {
    std::memcpy(Extend(2), "\r\n", 2);
    return {bytes_.data(), length_};
}

// Makes the line `count` bytes longer; their content is for the caller to write.
char* LogLine::Extend(size_t count) {
    const size_t start = length_;
    if (bytes_.size() - start < count) {
        bytes_.resize(std::max(start + count, 2 * bytes_.size()));
    }
    length_ = start + count;
    return bytes_.data() + start;
}

}  // namespace v5
