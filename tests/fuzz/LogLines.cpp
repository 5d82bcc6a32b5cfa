// Log lines of any text, tick and time.
#include "fuzz/Fuzz.h"
#include "log/LogLine.h"
#include "log/LogPorts.h"
#include "unit/Latin1.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    using v5::fuzz::Require;
    v5::fuzz::Input input(data, size);
    const auto tick = input.Take<std::uint32_t>();
    const std::wstring text = input.Text();
    const v5::Latin1 codePage;
    v5::LogLine line(codePage);
    const std::string_view bytes = line.Begin().Tick(tick).Stamp({}).Text(text).End();
    Require(bytes.size() == 13 + 22 + text.size() + 2, "a line has its columns and one byte for each character");
    Require(bytes.ends_with("\r\n"), "a line ends");
    return 0;
}
