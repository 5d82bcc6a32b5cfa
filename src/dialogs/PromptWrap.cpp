#include "dialogs/PromptWrap.h"

#include <algorithm>

namespace v5 {

namespace {

constexpr std::wstring_view kLineEnd = L"\r\n";

// The position behind the character at `at`, which takes two code units outside the basic plane of UTF-16.
size_t NextCharacter(std::wstring_view text, size_t at) {
    const bool pair = at + 1 < text.size() && text[at] >= 0xD800 && text[at] <= 0xDBFF && text[at + 1] >= 0xDC00 &&
                      text[at + 1] <= 0xDFFF;
    return at + (pair ? 2 : 1);
}

class Wrapper {
  public:
    Wrapper(int limit, const TextWidth& width) : mLimit(limit), mWidth(width) {}

    void AddLine(std::wstring_view line) {
        while (!Fits(line)) {
            if (line.front() == L' ') {
                line.remove_prefix(1);
                continue;
            }
            const size_t blank = LastBreak(line);
            const bool atBlank = blank != std::wstring_view::npos;
            const size_t end = atBlank ? blank : LongestPiece(line);
            Append(line.substr(0, end));
            line.remove_prefix(atBlank ? end + 1 : end);
            if (line.empty()) {
                return;
            }
        }
        Append(line);
    }

    std::wstring Result() && { return std::move(mResult); }

  private:
    bool Fits(std::wstring_view text) const {
        // A long rest is measured again for every line that it gives: its start tells as well that it does not fit.
        constexpr size_t kEnough = 500;
        if (text.size() > kEnough && mWidth(text.substr(0, kEnough)) > mLimit) {
            return false;
        }
        return text.empty() || mWidth(text) <= mLimit;
    }

    // The last blank of `line` before which the text fits; npos when not even the first word does.
    size_t LastBreak(std::wstring_view line) const {
        size_t found = std::wstring_view::npos;
        for (size_t blank = line.find(L' '); blank != std::wstring_view::npos && Fits(line.substr(0, blank));
             blank = line.find(L' ', blank + 1)) {
            found = blank;
        }
        return found;
    }

    // How much of a line's first word fits, at least one character of it.
    size_t LongestPiece(std::wstring_view line) const {
        size_t piece = NextCharacter(line, 0);
        for (size_t next = NextCharacter(line, piece); piece < line.size() && Fits(line.substr(0, next));
             next = NextCharacter(line, piece)) {
            piece = next;
        }
        return piece;
    }

    void Append(std::wstring_view line) {
        if (!mFirst) {
            mResult.append(kLineEnd);
        }
        mFirst = false;
        mResult.append(line);
    }

    int mLimit;
    const TextWidth& mWidth;
    bool mFirst = true;
    std::wstring mResult;
};

}  // namespace

std::wstring WrapPrompt(std::wstring_view prompt, int limit, const TextWidth& width) {
    if (width(prompt) <= limit) {
        return std::wstring(prompt);
    }
    Wrapper wrapper(limit, width);
    size_t from = 0;
    for (size_t at = prompt.find(kLineEnd); at != std::wstring_view::npos; at = prompt.find(kLineEnd, from)) {
        wrapper.AddLine(prompt.substr(from, at - from));
        from = at + kLineEnd.size();
    }
    wrapper.AddLine(prompt.substr(from));
    return std::move(wrapper).Result();
}

}  // namespace v5
