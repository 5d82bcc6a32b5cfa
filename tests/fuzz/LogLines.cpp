// Log lines of any text, tick and time.
#include "fuzz/Fuzz.h"
#include "log/LogLine.h"
#include "log/LogPorts.h"

namespace {

// One byte for each unit, as the writer promises its readers.
class Latin1 final : public v5::AnsiEncoder {
  public:
    void Encode(std::wstring_view text, char* bytes) const override {
        for (const wchar_t c : text) {
            *bytes++ = static_cast<unsigned>(c) < 0x100 ? static_cast<char>(c) : '?';
        }
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    using v5::fuzz::Require;
    v5::fuzz::Input input(data, size);
    const auto tick = input.Take<std::uint32_t>();
    const std::wstring text = input.Text();
    const Latin1 encoder;
    v5::LogLine line(encoder);
    const std::string_view bytes = line.Begin().Tick(tick).Stamp({}).Text(text).End();
    Require(bytes.size() == 13 + 22 + text.size() + 2, "a line has its columns and one byte for each character");
    Require(bytes.ends_with("\r\n"), "a line ends");
    return 0;
}
