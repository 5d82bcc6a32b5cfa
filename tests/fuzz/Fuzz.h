// What the fuzz targets share: bytes as the kinds of values that the rules take, and a check that ends the run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace v5::fuzz {

// Takes values off the front of the input; past its end everything is zero or empty.
class Input {
  public:
    Input(const std::uint8_t* data, size_t size) : mRest(reinterpret_cast<const char*>(data), size) {}

    template <class Number>
    Number Take() {
        Number value{};
        const size_t size = mRest.size() < sizeof(value) ? mRest.size() : sizeof(value);
        std::memcpy(&value, mRest.data(), size);
        mRest.remove_prefix(size);
        return value;
    }

    // The rest: as bytes, or as text, one unit of UTF-16 for each byte below 0x80 and for each pair of bytes above,
    // so that seeds are readable and surrogates and NULs occur.
    std::string Bytes() const { return std::string(mRest); }
    std::wstring Text() const {
        std::wstring text;
        for (size_t i = 0; i < mRest.size(); ++i) {
            const auto first = static_cast<unsigned char>(mRest[i]);
            const auto second = i + 1 < mRest.size() ? static_cast<unsigned char>(mRest[i + 1]) : 0u;
            const bool isPair = first >= 0x80;
            text += static_cast<wchar_t>(isPair ? first << 8 | second : first);
            i += isPair ? 1 : 0;
        }
        return text;
    }

  private:
    std::string_view mRest;
};

// Ends the run when a rule breaks a promise of its header.
inline void Require(bool promise, const char* what) {
    if (!promise) {
        std::fprintf(stderr, "broken promise: %s\n", what);
        std::abort();
    }
}

}  // namespace v5::fuzz
