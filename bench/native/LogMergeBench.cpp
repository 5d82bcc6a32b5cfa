// v5site log: ten logs of a million lines in one order of time, against the system's merge of the same files.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include "base/Dates.h"
#include "bench/Bench.h"
#include "v5site/LogMerge.h"

namespace v5::bench {
namespace {

constexpr int kFiles = 10;
constexpr int kLines = 1'000'000;  // of each file
constexpr int kLinesASecond = 50;

// The logs in a folder of their own, as long as this object lives.
class Logs {
  public:
    Logs() {
        std::filesystem::create_directories(mFolder);
        for (int number = 0; number < kFiles; ++number) {
            std::ofstream file(Path(number));
            for (int i = 0; i < kLines; ++i) {
                const int second = i / kLinesASecond;
                const std::wstring stamp =
                    FormatTimestamp24({2014, 3, 5, second / 3600, second / 60 % 60, second % 60}) + L" PM";
                // The peer knows but the order of whole lines, so every line has a sortable stamp first.
                file << std::string(stamp.begin(), stamp.end()) << "  Analyzer " << number << ": value " << i << "\r\n";
            }
        }
    }
    ~Logs() { std::filesystem::remove_all(mFolder); }
    Logs(const Logs&) = delete;
    Logs& operator=(const Logs&) = delete;

    std::filesystem::path Path(int number) const { return mFolder / (std::to_string(number) + ".log"); }

  private:
    const std::filesystem::path mFolder = std::filesystem::temp_directory_path() / "v5logs";
};

struct FileSource : v5site::LogSource {
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file;
    explicit FileSource(const std::filesystem::path& path) : file(std::fopen(path.c_str(), "rb"), &std::fclose) {}
    size_t Read(char* buffer, size_t size) override { return std::fread(buffer, 1, size, file.get()); }
};

void MergingLogs(Table& table) {
    const Logs logs;
    const auto ours = [&] {
        std::vector<v5site::LogInput> inputs;
        for (int number = 0; number < kFiles; ++number) {
            inputs.push_back({std::to_string(number), std::make_unique<FileSource>(logs.Path(number))});
        }
        std::ofstream output("/dev/null", std::ios::binary);
        const v5site::LogSummary summary = v5site::MergeLogs(
            std::move(inputs), {}, [](std::string_view text) { return std::string(text); },
            [&](std::string_view text) {
                return output.write(text.data(), static_cast<std::streamsize>(text.size())).good();
            });
        if (summary.lines != std::uint64_t{kFiles} * kLines) {
            throw std::runtime_error("lines are missing");
        }
    };
    std::string command = "LC_ALL=C sort -m";
    for (int number = 0; number < kFiles; ++number) {
        command += " " + logs.Path(number).string();
    }
    const auto peers = [&] {
        if (std::system((command + " >/dev/null").c_str()) != 0) {
            throw std::runtime_error("sort failed");
        }
    };
    table.Compare({.name = "v5site log: ten files of a million lines / sort -m", .goal = 1, .runs = 2}, ours, peers);
}

const Benchmark registered("v5site log", MergingLogs);

}  // namespace
}  // namespace v5::bench
