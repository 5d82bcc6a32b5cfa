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
    mLength = 0;
    mPrefixLength = 0;
    return *this;
}

LogLine& LogLine::Tick(std::uint32_t tickMilliseconds) {
    char* const field = Extend(kTickColumns);
    std::memset(field, ' ', kTickColumns);
    std::to_chars(field, field + kTickColumns, tickMilliseconds & kTickMask);
    return *this;
}

LogLine& LogLine::Stamp(const CivilDateTime& time) {
    if (!mIsStamped || time != mStampTime) {
        const std::wstring stamp = FormatTimestamp12(time);
        CopyAscii(std::wstring_view(stamp).substr(0, mStamp.size()), mStamp.data());
        mStampTime = time;
        mIsStamped = true;
    }
    std::memcpy(Extend(mStamp.size()), mStamp.data(), mStamp.size());
    return *this;
}

LogLine& LogLine::Text(std::wstring_view text) {
    char* const bytes = Extend(text.size());
    if (!CopyAscii(text, bytes)) {
        mCodePage.Encode(text, bytes);
    }
    return *this;
}

std::string_view LogLine::End() {
    std::memcpy(Extend(2), "\r\n", 2);
    return {mBytes.data(), mLength};
}

// Makes the line `count` bytes longer; their content is for the caller to write.
char* LogLine::Extend(size_t count) {
    const size_t start = mLength;
    if (mBytes.size() - start < count) {
        mBytes.resize(std::max(start + count, 2 * mBytes.size()));
    }
    mLength = start + count;
    return mBytes.data() + start;
}

}  // namespace v5
