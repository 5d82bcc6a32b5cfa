// Building a log line with both prefixes, against a general-purpose logger's formatter with the same pattern.
#include <spdlog/pattern_formatter.h>

#include <chrono>
#include <string>

#include "bench/Bench.h"
#include "log/LogLine.h"
#include "log/LogPorts.h"

namespace v5::bench {
namespace {

struct NoEncoder : CodePage {
    std::int16_t CodeOf(wchar_t character) const override { return static_cast<std::int16_t>(character); }
    void Encode(std::wstring_view, char*) const override {}
};

constexpr int kLines = 200'000;
constexpr int kLinesASecond = 1000;  // of the time that the lines carry

void BuildingALine(Table& table) {
    const NoEncoder codePage;
    LogLine line(codePage);
    const std::wstring text = L"Analyzer 3: NOx range check passed, span drift 0.42 % of range";
    const auto ours = [&] {
        for (int i = 0; i < kLines; ++i) {
            const int second = i / kLinesASecond;
            const CivilDateTime now{2014, 3, 5, 14, second / 60, second % 60};
            line.Begin().Tick(static_cast<std::uint32_t>(1'000'000 + i)).Stamp(now).Text(L"  ").Text(text);
            Keep(line.End());
        }
    };

    spdlog::pattern_formatter formatter("%-13o%Y-%m-%d %I:%M:%S %p  %v", spdlog::pattern_time_type::local, "\r\n");
    const std::string peersText(text.begin(), text.end());
    const auto start = std::chrono::system_clock::from_time_t(1394028429);
    spdlog::memory_buf_t buffer;
    const auto peers = [&] {
        for (int i = 0; i < kLines; ++i) {
            const auto now = start + std::chrono::milliseconds(i * (1000 / kLinesASecond));
            const spdlog::details::log_msg message(now, {}, "log", spdlog::level::info, peersText);
            buffer.clear();
            formatter.format(message, buffer);
            Keep(buffer);
        }
    };
    table.Compare({.name = "log: build a line / spdlog's formatter", .goal = 1.0, .runs = 7, .operations = kLines},
                  ours, peers);
}

const Benchmark registered("log line", BuildingALine);

}  // namespace
}  // namespace v5::bench
