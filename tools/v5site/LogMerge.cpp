#include "LogMerge.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <utility>

#include "Json.h"

namespace v5site {

namespace {

constexpr std::string_view kStart = "** START ";
constexpr std::string_view kEnd = "** END ";
constexpr std::string_view kGap = "---- ";      // "---- 11 seconds since previous write"
constexpr std::string_view kGapRemark = "gap";  // for JSON: a reader of text sees the line itself
constexpr size_t kTickColumns = 13;
constexpr size_t kStampLength = 22;  // "2014-03-05 02:07:09 PM"
constexpr std::int64_t kHour = 3600;
constexpr std::int64_t kTickTurn = std::int64_t{1} << 31;  // ticks begin anew behind it

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

int Number(std::string_view digits) {
    int number = 0;
    for (const char c : digits) {
        number = number * 10 + (c - '0');
    }
    return number;
}

// Whether `text` looks like `form`, in which 0 stands for any digit.
bool HasForm(std::string_view text, std::string_view form) {
    return text.size() >= form.size() && std::equal(form.begin(), form.end(), text.begin(),
                                                    [](char f, char c) { return f == '0' ? IsDigit(c) : f == c; });
}

std::int64_t Seconds(std::string_view date, int hour, int minute, int second) {
    const std::chrono::sys_days day =
        std::chrono::year{Number(date.substr(0, 4))} / Number(date.substr(5, 2)) / Number(date.substr(8, 2));
    return day.time_since_epoch().count() * 24 * kHour + hour * kHour + std::int64_t{minute} * 60 + second;
}

// Reads the stamp at the start of `text`; false when there is none.
bool ReadStamp(std::string_view text, std::int64_t& seconds) {
    if (!HasForm(text, "0000-00-00 00:00:00 ") || text.size() < kStampLength || text[21] != 'M' ||
        (text[20] != 'A' && text[20] != 'P')) {
        return false;
    }
    const int hour = Number(text.substr(11, 2)) % 12 + (text[20] == 'P' ? 12 : 0);
    seconds = Seconds(text, hour, Number(text.substr(14, 2)), Number(text.substr(17, 2)));
    return true;
}

// One log, line by line.
class LogReader {
  public:
    LogReader(LogInput input, size_t number) : mInput(std::move(input)), mNumber(number) {}

    // Goes to the next line; false at the end.
    bool Next() {
        mRemark = {};
        if (!TakeLine()) {
            return false;
        }
        Understand();
        return true;
    }

    const std::string& Name() const { return mInput.name; }
    size_t FileNumber() const { return mNumber; }
    std::string_view Line() const { return mLine; }
    std::string_view Remark() const { return mRemark; }  // on this line; empty: none
    std::int64_t Time() const { return mTime + mRepeated; }
    // Within a second, lines without a tick come first: a START line before what the run writes.
    bool IsBefore(const LogReader& other) const {
        const std::int64_t time = Time(), otherTime = other.Time();
        return time != otherTime      ? time < otherTime
               : mTick != other.mTick ? mTick < other.mTick
                                      : mNumber < other.mNumber;
    }
    bool IsRunning() const { return mIsRunning; }
    std::uint64_t MissingEnds() const { return mMissingEnds + (mIsRunning ? 1 : 0); }

  private:
    bool TakeLine() {
        while (true) {
            const char* begin = mBuffer.data() + mAt;
            const auto* end = static_cast<const char*>(std::memchr(begin, '\n', mFilled - mAt));
            if (end != nullptr || (mIsAtEnd && mAt < mFilled)) {
                const size_t length = end != nullptr ? static_cast<size_t>(end - begin) : mFilled - mAt;
                mLine = std::string_view(begin, length);
                mAt += length + (end != nullptr ? 1 : 0);
                if (mLine.ends_with('\r')) {
                    mLine.remove_suffix(1);
                }
                return true;
            }
            if (mIsAtEnd) {
                return false;
            }
            Fill();
        }
    }
    void Fill() {
        constexpr size_t kAtLeast = size_t{256} * 1024;
        std::memmove(mBuffer.data(), mBuffer.data() + mAt, mFilled - mAt);
        mFilled -= mAt;
        mAt = 0;
        if (mBuffer.size() - mFilled < kAtLeast) {
            mBuffer.resize(std::max(mBuffer.size() * 2, 2 * kAtLeast));
        }
        const size_t got = mInput.source->Read(mBuffer.data() + mFilled, mBuffer.size() - mFilled);
        mFilled += got;
        mIsAtEnd = got == 0;
    }

    void Understand() {
        if (mLine.starts_with("** ") && (mLine.starts_with(kStart) || mLine.starts_with(kEnd))) {
            TakeFrame();
            return;
        }
        std::string_view rest = mLine;
        size_t digits = 0;
        while (digits < rest.size() && digits < kTickColumns && IsDigit(rest[digits])) {
            ++digits;
        }
        const bool hasTick =
            digits > 0 && digits <= 10 && rest.size() >= kTickColumns &&
            rest.substr(digits, kTickColumns - digits).find_first_not_of(' ') == std::string_view::npos;
        std::int64_t tick = -1;
        if (hasTick) {
            tick = 0;
            for (const char c : rest.substr(0, digits)) {
                tick = tick * 10 + (c - '0');
            }
            rest.remove_prefix(kTickColumns);
        }
        if (rest.size() >= kStampLength && std::memcmp(rest.data(), mStamp.data(), kStampLength) == 0) {
            TakeTime(mStampSeconds, tick);  // as most lines of a busy log
        } else if (std::int64_t seconds = 0; ReadStamp(rest, seconds)) {
            std::copy_n(rest.begin(), kStampLength, mStamp.begin());
            mStampSeconds = seconds;
            TakeTime(seconds, tick);
        } else if (hasTick) {
            TakeTick(tick);
        } else if (rest.starts_with(kGap)) {
            mRemark = kGapRemark;
        }
    }
    // "** START Vantor log file  2014-03-05 02:07:09 PM **"
    void TakeFrame() {
        const bool isStart = mLine.starts_with(kStart);
        constexpr std::string_view kClose = " **";
        std::int64_t seconds = 0;
        if (mLine.size() < kStampLength + kClose.size() || !mLine.ends_with(kClose) ||
            !ReadStamp(mLine.substr(mLine.size() - kClose.size() - kStampLength), seconds)) {
            return;
        }
        if (isStart) {
            mRemark = mIsRunning ? "restart; the run before has no END line" : mHasRun ? "restart" : "";
            mMissingEnds += mIsRunning ? 1 : 0;
            mRepeated = 0;
            mRunTick = -1;
            mTick = -1;
            mRunTime = mTime = seconds;
        } else {
            TakeTime(seconds, mTick);
        }
        mIsRunning = isStart;
        mHasRun = true;
    }
    void TakeTime(std::int64_t seconds, std::int64_t tick) {
        const bool goesOn = tick < 0 || mTick < 0 || tick >= mTick;
        if (seconds < mTime - kHour / 2 && mIsRunning && goesOn && mRepeated == 0) {
            mRepeated = kHour;  // the clock went back while the computer ran on
            mRemark = "the end of summer time: this hour comes a second time";
        }
        mTime = seconds;
        mTick = tick;
    }
    void TakeTick(std::int64_t tick) {
        if (mRunTick < 0) {
            mRunTick = tick;
        }
        const std::int64_t since = tick >= mRunTick ? tick - mRunTick : tick - mRunTick + kTickTurn;
        mTime = mRunTime + since / 1000;
        mTick = tick;
    }

    LogInput mInput;
    const size_t mNumber;
    std::string mBuffer;
    size_t mAt = 0, mFilled = 0;
    bool mIsAtEnd = false;
    std::string_view mLine, mRemark;
    std::array<char, kStampLength> mStamp{};  // the last one and what it means
    std::int64_t mStampSeconds = 0;
    std::int64_t mTime = INT64_MIN / 2, mTick = -1;
    std::int64_t mRepeated = 0;  // seconds that the clock has been put back in this run
    std::int64_t mRunTime = INT64_MIN / 2, mRunTick = -1;
    bool mIsRunning = false, mHasRun = false;
    std::uint64_t mMissingEnds = 0;
};

bool ContainsIgnoringCase(std::string_view text, std::string_view what) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; };
    return std::search(text.begin(), text.end(), what.begin(), what.end(),
                       [&](char a, char b) { return lower(a) == lower(b); }) != text.end();
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void AppendJson(std::string& out, std::string_view text) {
    out += '"';
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            std::array<char, 8> code{};
            static_cast<void>(std::snprintf(code.data(), code.size(), "\\u%04X", static_cast<unsigned>(c)));
            out += code.data();
        } else {
            out += c;
        }
    }
    out += '"';
}

// The output, handed on in large pieces.
class Output {
  public:
    Output(const std::vector<LogReader>& readers, bool json, const std::function<bool(std::string_view)>& write)
        : mJson(json), mWrite(write) {
        size_t width = 0;
        for (const LogReader& reader : readers) {
            width = std::max(width, reader.Name().size());
        }
        for (const LogReader& reader : readers) {
            mLabels.push_back(reader.Name() + std::string(width - reader.Name().size() + 2, ' '));
        }
        mText = json ? "{\n  \"schema\": " + std::to_string(kJsonSchema) + ",\n  \"lines\": [" : "";
    }
    void Line(const LogReader& reader, std::string_view text, std::string_view remark) {
        if (mJson) {
            mText += mIsFirst ? "\n    {\"file\": " : ",\n    {\"file\": ";
            mIsFirst = false;
            AppendJson(mText, reader.Name());
            mText += ", \"text\": ";
            AppendJson(mText, text);
            if (!remark.empty()) {
                mText += ", \"remark\": ";
                AppendJson(mText, remark);
            }
            mText += '}';
        } else {
            const std::string& label = mLabels[reader.FileNumber()];
            if (!remark.empty() && remark != kGapRemark) {
                mText.append(label).append("!! ").append(remark).append("\n");
            }
            mText.append(label).append(text).append("\n");
        }
        Flush(1 << 20);
    }
    // A remark at the end of a file.
    void Remark(const LogReader& reader, std::string_view remark) {
        if (mJson) {
            Line(reader, "", remark);
        } else {
            mText.append(mLabels[reader.FileNumber()]).append("!! ").append(remark).append("\n");
        }
    }
    bool End() {
        mText += mJson ? mIsFirst ? "]\n}\n" : "\n  ]\n}\n" : "";
        Flush(0);
        return mIsFine;
    }
    bool IsFine() const { return mIsFine; }

  private:
    void Flush(size_t atLeast) {
        if (mText.size() > atLeast) {
            mIsFine = mIsFine && mWrite(mText);
            mText.clear();
        }
    }

    const bool mJson;
    const std::function<bool(std::string_view)>& mWrite;
    std::vector<std::string> mLabels;
    std::string mText;
    bool mIsFirst = true, mIsFine = true;
};

}  // namespace

std::int64_t LogTime(std::string_view text) {
    const auto part = [&](size_t at) { return text.size() >= at + 2 ? Number(text.substr(at, 2)) : 0; };
    return Seconds(text, part(11), part(14), part(17));
}

LogSummary MergeLogs(std::vector<LogInput> inputs, const LogOptions& options,
                     const std::function<std::string(std::string_view)>& toUtf8,
                     const std::function<bool(std::string_view)>& write) {
    std::vector<LogReader> readers;
    readers.reserve(inputs.size());
    for (LogInput& input : inputs) {
        readers.emplace_back(std::move(input), readers.size());
    }
    Output output(readers, options.json, write);
    LogSummary summary;
    std::vector<LogReader*> heads;
    const auto isLater = [](const LogReader* a, const LogReader* b) { return b->IsBefore(*a); };
    for (LogReader& reader : readers) {
        if (reader.Next()) {
            heads.push_back(&reader);
        }
    }
    std::make_heap(heads.begin(), heads.end(), isLater);
    while (!heads.empty() && output.IsFine()) {
        std::pop_heap(heads.begin(), heads.end(), isLater);
        LogReader& reader = *heads.back();
        heads.pop_back();
        bool hasMore = true;
        // As long as this file has the earliest line, nothing need be ordered anew.
        do {
            ++summary.lines;
            const std::string decoded = IsAscii(reader.Line()) ? std::string() : toUtf8(reader.Line());
            const std::string_view text = decoded.empty() ? reader.Line() : std::string_view(decoded);
            if (reader.Time() >= options.from && reader.Time() <= options.to &&
                (options.grep.empty() || ContainsIgnoringCase(text, options.grep))) {
                ++summary.shown;
                output.Line(reader, text, reader.Remark());
            }
            hasMore = reader.Next();
        } while (hasMore && output.IsFine() && (heads.empty() || !heads.front()->IsBefore(reader)));
        if (hasMore) {
            heads.push_back(&reader);
            std::push_heap(heads.begin(), heads.end(), isLater);
        } else if (reader.IsRunning() && options.to == INT64_MAX && options.grep.empty()) {
            output.Remark(reader, "no END line: the program still writes, or ended without one");
        }
    }
    for (const LogReader& reader : readers) {
        summary.missingEnds += reader.MissingEnds();
    }
    summary.isWritten = output.End();
    return summary;
}

}  // namespace v5site
