#include "log/LogLine.h"

#include <charconv>

#include "log/LogPorts.h"

namespace v5 {

namespace {

constexpr std::uint32_t kTickMask = 0x7FFFFFFF;
constexpr size_t kTickColumns = 13;

}  // namespace

LogLine& LogLine::Begin() {
    bytes_.clear();
    return *this;
}

LogLine& LogLine::Tick(std::uint32_t tickMilliseconds) {
    const size_t start = bytes_.size();
    bytes_.append(kTickColumns, ' ');
    std::to_chars(&bytes_[start], &bytes_[start] + kTickColumns, tickMilliseconds & kTickMask);
    return *this;
}

LogLine& LogLine::Stamp(const CivilDateTime& time) {
    if (stamp_.empty() || time != stampTime_) {
        const std::wstring stamp = FormatTimestamp12(time);
        stamp_.assign(stamp.begin(), stamp.end());  // digits and ASCII letters
        stampTime_ = time;
    }
    bytes_ += stamp_;
    return *this;
}

LogLine& LogLine::Text(std::wstring_view text) {
    const size_t start = bytes_.size();
    bytes_.resize(start + text.size());
    char* const bytes = bytes_.data() + start;
    std::uint32_t seen = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        bytes[i] = static_cast<char>(text[i]);
        seen |= static_cast<std::uint32_t>(text[i]);
    }
    if (seen > 0x7F) {  // every ANSI code page agrees with ASCII on ASCII only
        encoder_.Encode(text, bytes);
    }
    return *this;
}

std::string_view LogLine::End() {
    bytes_ += "\r\n";
    return bytes_;
}

}  // namespace v5
