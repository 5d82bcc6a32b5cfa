// What comes out of the configuration database and the password box.
#include "fuzz/Fuzz.h"
#include "security/Base64.h"
#include "security/Scrambler.h"
#include "security/TextConversion.h"
#include "security/XmlDocument.h"

namespace {

struct LowBytes : v5::AnsiCodes {
    std::int16_t AnsiCode(wchar_t character) const override { return static_cast<std::int16_t>(character); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    using v5::fuzz::Require;
    const v5::fuzz::Input input(data, size);
    const std::string bytes = input.Bytes();
    const std::wstring text = input.Text();

    Require(v5::DecodeBase64(v5::EncodeBase64(bytes)) == bytes, "Base64 gives every byte back");
    try {
        Require(v5::DecodeBase64(text).size() <= text.size() / 4 * 3, "three bytes a group at most");
    } catch (const v5::Base64Error&) {
    }
    const std::wstring decoded = v5::FromUtf8(bytes);
    Require(v5::FromUtf8(v5::ToUtf8(decoded)) == decoded || decoded.starts_with(L'\uFEFF'), "text survives UTF-8");
    if (text.find(L"<!DOCTYPE") == 0) {
        Require(!v5::IsSafeToParse(text), "no document type reaches the parser");
    }
    v5::IsSafeToParse(decoded);

    const v5::SecretText digits = v5::Scramble(text, L"7Q%-k#", LowBytes());
    const v5::SecretText again = v5::Scramble(text, L"7Q%-k#", LowBytes());
    Require(digits.View() == again.View(), "the same text gives the same digits");
    Require(digits.View().find_first_not_of(L"0123456789") == std::wstring_view::npos, "digits only");
    return 0;
}
