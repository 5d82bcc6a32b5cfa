// What is typed into the password box.
#include "security/Scrambler.h"

#include "fuzz/Fuzz.h"

namespace {

// A double-byte code page, so that codes have every sign.
struct TwoBytes : v5::CodePage {
    std::int16_t CodeOf(wchar_t character) const override { return static_cast<std::int16_t>(character); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    using v5::fuzz::Require;
    v5::fuzz::Input input(data, size);
    std::wstring key;
    while (key.size() < v5::kScramblerKeyLength) {
        key += static_cast<wchar_t>(input.Take<std::uint16_t>());
    }
    const std::wstring typed = input.Text();

    const v5::SecretText digits = v5::Scramble(typed, key, TwoBytes());
    Require(!digits.View().empty(), "at least one digit");
    Require(digits.View().find_first_not_of(L"0123456789") == std::wstring_view::npos, "digits only");
    const std::wstring counted = typed.substr(0, v5::kScrambledCharacters);
    Require(v5::Scramble(counted + L"later", key, TwoBytes()).View() == digits.View() ||
                counted.size() < v5::kScrambledCharacters,
            "later characters do not count");
    return 0;
}
