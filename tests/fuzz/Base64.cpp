// Stored documents as Base64: whatever the row of the configuration database holds.
#include "security/UtilityBase64Functions.h"

#include "fuzz/Fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    using v5::fuzz::Require;
    const v5::fuzz::Input input(data, size);
    const std::string bytes = input.Bytes();
    const std::wstring text = input.Text();

    const std::wstring encoded = v5::EncodeBase64(bytes);
    Require(encoded.size() == (bytes.size() + 2) / 3 * 4, "four characters for each three bytes begun");
    Require(v5::DecodeBase64(encoded) == bytes, "every byte comes back");
    try {
        const std::string decoded = v5::DecodeBase64(text);
        // The unused bits of the last character may be anything, so that other text can stand for the same bytes.
        Require(v5::EncodeBase64(decoded).size() == text.size(), "the padding says how many bytes there are");
        Require(v5::DecodeBase64(v5::EncodeBase64(decoded)) == decoded, "what was decoded can be stored again");
    } catch (const v5::Base64Error&) {
        Require(text.size() % 4 != 0 || text.find_first_not_of(L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                                               L"0123456789+/") != std::wstring::npos,
                "plain Base64 is accepted");
    }
    return 0;
}
