// A log line with both prefixes, against a bare WriteFile of the same bytes on a handle opened the same way.
#include "V5Strings.h"
#include "bench/Bench.h"
#include "bench/windows/Com.h"

namespace v5::bench {
namespace {

constexpr int kLines = 2'000;

void WritingALine(Table& table) {
    const auto log = Create<_LogFileClass>(L"V5Strings.LogFileClass");
    const TemporaryFile ours, peers;
    VARIANT_BOOL started = VARIANT_FALSE;
    Check(log->StartLog(_bstr_t(ours.Path().c_str()), _bstr_t(L""), VARIANT_TRUE, VARIANT_TRUE, &started), "StartLog");
    const HANDLE file = CreateFileW(peers.Path().c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                    FILE_FLAG_WRITE_THROUGH, nullptr);
    Check(started == VARIANT_TRUE && file != INVALID_HANDLE_VALUE, "opening the files");

    const std::string words = "Analyzer 3: NOx range check passed, span drift 0.42 % of range";
    const _bstr_t text = std::wstring(words.begin(), words.end()).c_str();
    const std::string line = "1234567      2014-03-05 02:07:09 PM  " + words + "\r\n";
    table.Compare(
        {.name = "log: WriteToLog / bare WriteFile", .goal = 1.3, .runs = 60, .operations = kLines},
        [&] {
            for (int i = 0; i < kLines; ++i) {
                log->WriteToLog(text);
            }
        },
        [&] {
            for (int i = 0; i < kLines; ++i) {
                DWORD written = 0;
                WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
            }
        });
    log->StopLog();
    CloseHandle(file);
}

const Benchmark registered("log file", WritingALine);

}  // namespace
}  // namespace v5::bench
