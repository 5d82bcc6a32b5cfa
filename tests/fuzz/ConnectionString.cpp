// Connection strings of any text.
#include "config/ConnectionString.h"
#include "base/Text.h"
#include "fuzz/Fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    using v5::fuzz::Require;
    const std::wstring text = v5::fuzz::Input(data, size).Text();
    const std::wstring dotNet = v5::DotNetConnection(text);
    Require(dotNet.size() <= text.size(), "settings are removed, nothing is added");
    Require(v5::Trim(dotNet) == dotNet, "the result is trimmed");
    Require(v5::OstraConnection(text).find(L"Vantor5Data") == std::wstring::npos, "every catalog is replaced");
    return 0;
}
