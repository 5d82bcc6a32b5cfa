// Text that must not stay in memory: typed passwords and what is made of them on the way to a comparison.
#pragma once

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace v5 {

// Overwrites characters so that the compiler cannot leave the writes out as unused.
inline void Wipe(wchar_t* text, size_t length) {
    volatile wchar_t* p = text;
    for (size_t i = 0; i < length; ++i)
        p[i] = 0;
}

// Holds its characters in one buffer that is overwritten before it is given back: on destruction, on assignment and
// on growth. Can be moved (the source is then empty) but not copied.
class SecretText {
  public:
    SecretText() = default;
    explicit SecretText(std::wstring_view text) : mCharacters(text.begin(), text.end()) {}
    SecretText(SecretText&& other) noexcept : mCharacters(std::exchange(other.mCharacters, {})) {}
    SecretText& operator=(SecretText&& other) noexcept {
        Clear();
        mCharacters.swap(other.mCharacters);
        return *this;
    }
    ~SecretText() { Clear(); }

    std::wstring_view View() const { return {mCharacters.data(), mCharacters.size()}; }
    size_t Size() const { return mCharacters.size(); }

    // Inserts `text` so that its first character gets index `position`, 0 to Size().
    void Insert(size_t position, std::wstring_view text) {
        std::vector<wchar_t> grown;
        grown.reserve(mCharacters.size() + text.size());
        const auto split = mCharacters.begin() + static_cast<std::ptrdiff_t>(position);
        grown.insert(grown.end(), mCharacters.begin(), split);
        grown.insert(grown.end(), text.begin(), text.end());
        grown.insert(grown.end(), split, mCharacters.end());
        Clear();
        mCharacters.swap(grown);
    }
    void Append(std::wstring_view text) { Insert(Size(), text); }

    // Overwrites the characters and leaves the text empty.
    void Clear() noexcept {
        Wipe(mCharacters.data(), mCharacters.size());
        mCharacters.clear();
    }

  private:
    std::vector<wchar_t> mCharacters;
};

}  // namespace v5
