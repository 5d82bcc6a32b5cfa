// Stored documents before they reach the XML parser.
#include "base/Utf8.h"
#include "fuzz/Fuzz.h"
#include "security/UtilityXMLDOMFunctions.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    using v5::fuzz::Require;
    const v5::fuzz::Input input(data, size);
    const std::string bytes = input.Bytes();
    const std::wstring text = input.Text();

    const std::wstring decoded = v5::FromUtf8(bytes);
    Require(v5::FromUtf8(v5::ToUtf8(decoded)) == decoded || decoded.starts_with(L'\uFEFF'), "text survives UTF-8");
    if (text.find(L"<!DOCTYPE") == 0) {
        Require(!v5::IsSafeToParse(text), "no document type reaches the parser");
    }
    v5::IsSafeToParse(decoded);
    return 0;
}
