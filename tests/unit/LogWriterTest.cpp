#include "log/LogWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <tuple>

#include "FakeLog.h"
#include "base/Dates.h"

namespace v5 {
namespace {

struct LogWriterTest : testing::Test, LogBench {};

constexpr char kStart[] = "** START Vantor log file  2014-03-05 02:07:09 PM **\r\n";
constexpr char kEnd[] = "** END Vantor log file 2014-03-05 02:07:09 PM **\r\n";
constexpr char kPrefix[] = "123456       2014-03-05 02:07:09 PM  ";

TEST_F(LogWriterTest, FramesARunAndKeepsItsName) {
    log.Write(L"early", true);
    log.Flush();
    log.Stop();
    EXPECT_TRUE(log.Start(L"app.log", L"", {}));
    EXPECT_EQ(fake.path, L"D:\\Lib\\app.log");
    log.Write(L"");
    log.Write(L"a\r\nb");
    log.Write(L"flushed", true);
    EXPECT_EQ(fake.writes, 4) << "one call to the system for each line";
    log.Stop();
    EXPECT_FALSE(log.IsActive());
    log.Stop();
    log.Write(L"late", true);
    log.Flush();
    EXPECT_EQ(Written(), std::string(kStart) + "\r\na\r\nb\r\nflushed\r\n" + kEnd);
    EXPECT_EQ(fake.flushes, 1);
    EXPECT_EQ(log.Filename(), L"D:\\Lib\\app.log");
    log.Start(L"C:\\a.log", L"", {});
    EXPECT_TRUE(log.Start(L"C:\\a.log", L"", {}));
    EXPECT_EQ(Written(), std::string(kStart) + kEnd + kStart) << "a restart ends the old run first";
    EXPECT_EQ(fake.path, L"C:\\a.log");
}

TEST_F(LogWriterTest, FailedOpenKeepsTheSystemsText) {
    const std::pair<std::uint32_t, const wchar_t*> errors[] = {
        {32, L"In use.\r\n"}, {99999, L"Error not found (code 99999)."}, {0, L""}};
    for (const auto& [code, text] : errors) {
        fake.openError = code;
        EXPECT_EQ(log.Start(L"C:\\a.log", L"", {}), code == 0);
        EXPECT_EQ(log.Error(), text);
        EXPECT_EQ(log.Filename(), L"C:\\a.log");
        log.Write(L"x");
        EXPECT_EQ(Written(), code == 0 ? std::string(kStart) + "x\r\n" : "");
    }
}

// Lines of one millisecond share their prefixes, and others nothing.
TEST_F(LogWriterTest, LinesAreTickStampAndText) {
    const std::pair<std::uint32_t, std::string> ticks[] = {{0, "0            "},
                                                           {(1u << 30) - 1, "1073741823   "},
                                                           {(1u << 30) + 1, "1073741825   "},
                                                           {1u << 31, "0            "},
                                                           {0xFFFFFFFF, "2147483647   "},
                                                           {0, "0            "}};  // as the next run begins
    const std::pair<std::wstring, std::string> texts[] = {
        {L"a long \u00B5g \u65E5", "a long \xB5g ?"}, {L"", ""}, {std::wstring(9000, L'x'), std::string(9000, 'x')}};
    std::mt19937 random(1);
    for (unsigned run = 0; run < 200; ++run) {
        const bool hasTick = (run & 2) != 0, hasStamp = (run & 1) != 0;
        log.Start(L"app.log", L"", {.showMilliseconds = hasTick, .showTimestamp = hasStamp});
        Written();
        for (const auto& [tick, field] : ticks) {
            fake.tick = tick;
            fake.now = {2024, 12, 31, static_cast<int>(random() % 24), 59, static_cast<int>(random() % 60)};
            const std::wstring stamp = FormatTimestamp12(fake.now);
            const std::string start =
                (hasTick ? field : "") + (hasStamp ? std::string(stamp.begin(), stamp.end()) + "  " : "");
            for (const auto& [text, bytes] : texts) {
                log.Write(text);
                ASSERT_EQ(Written(), start + bytes + "\r\n");
            }
        }
    }
}

TEST_F(LogWriterTest, HeaderIsATenLineBox) {
    for (const std::string title : {"Title", "A title that is the longest line"}) {
        for (const std::string prefix : {"", kPrefix}) {
            log.Start(L"app_1.log", std::wstring(title.begin(), title.end()),
                      {.showMilliseconds = !prefix.empty(), .showTimestamp = !prefix.empty()});
            const size_t width = std::max<size_t>(title.size(), 30);  // as the line with the name
            const std::string frame = prefix + std::string(width + 6, '*') + "\r\n";
            std::string box = kStart + frame;
            for (std::string line :
                 {title.c_str(), "Long date, long time", "", "Installed Vantor Releases:", "    Release 5.3", "", "",
                  "Log Filename: D:\\Lib\\app_1.log", "Machine Name: STACK7", "O/S: Windows"}) {
                line.resize(width, ' ');
                box += prefix + "** " + line + " **\r\n";
            }
            EXPECT_EQ(Written(), box + frame + prefix + "\r\n");
            log.Stop();
            Written();
        }
    }
}

TEST_F(LogWriterTest, FailingWriteEndsTheRun) {
    log.Start(L"app.log", L"", {});
    Written();
    fake.writesUntilFailure = 0;
    log.Write(L"lost");
    EXPECT_EQ(Written(), kEnd) << "the end line is attempted";
    EXPECT_FALSE(log.IsActive());
    EXPECT_EQ(log.Error(), L"7, Out of memory");
    log.Start(L"app.log", L"", {});
    EXPECT_EQ(log.Error(), L"");
    fake.writesUntilFailure = 0;
    log.Stop();  // the end line cannot be written
    EXPECT_FALSE(log.IsActive());
    EXPECT_EQ(log.Error(), L"");
    fake.writesUntilFailure = 4;  // in the middle of the header
    EXPECT_TRUE(log.Start(L"app.log", L"Title", {}));
    EXPECT_FALSE(log.IsActive());
    EXPECT_EQ(log.Error(), L"7, Out of memory");
}

TEST_F(LogWriterTest, TimeGaps) {
    const std::string gap11 = "---- 11 seconds since previous write\r\n";
    fake.tick = 5000;
    log.Start(L"app.log", L"", {.showMilliseconds = true, .maxTimeGapSeconds = 10});
    Written();
    log.Write(L"first");
    EXPECT_EQ(Written(), "5000         first\r\n");
    const std::tuple<std::uint32_t, std::uint32_t, std::string> rows[] = {
        {5000, 15999, ""},  // 10.999 s
        {5000, 16000, gap11},
        {0, 900000, ""},  // a tick of 0 is no previous write
        {(1u << 30) - 1000, (1u << 30) + 10000, gap11},
        {0xFFFFFFFF - 999, 10000, gap11},
        {1, 1u << 30, "---- 1073741 seconds since previous write\r\n"},
        {1, (1u << 30) + 1, ""},  // a whole turn looks like no gap
    };
    for (const auto& [from, to, report] : rows) {
        fake.tick = from;
        log.Write(L"");
        Written();
        fake.tick = to;
        log.Write(L"");
        EXPECT_EQ(Written().substr(0, report.size() + 1), report + std::to_string(to)[0]);
    }
}

TEST_F(LogWriterTest, LastTickSurvivesARestartAndUnwatchedRuns) {
    log.Start(L"app.log", L"", {.maxTimeGapSeconds = 10});
    log.Write(L"x");
    fake.tick += 20000;
    log.Start(L"app.log", L"", {.maxTimeGapSeconds = -1});
    log.Write(L"nothing is noted");
    fake.tick += 1000;
    log.Start(L"app.log", L"Title", {.maxTimeGapSeconds = 10});
    const std::string text = Written();
    const std::string expected = std::string(kStart) + "---- 21 seconds since previous write\r\n***";
    EXPECT_NE(text.find(expected), std::string::npos) << text;
}

TEST(LogWriter, ReleaseOfAnActiveLogSaysSo) {
    FakeLog fake;
    LogWriter(fake, fake, fake.codePage, fake);
    EXPECT_EQ(fake.content, "");
    {
        LogWriter log(fake, fake, fake.codePage, fake);
        log.Start(L"app.log", L"", {.showMilliseconds = true});
    }
    EXPECT_EQ(fake.content, std::string(kStart) +
                                "123456       **Log file closing because LogFile instance is terminating**\r\n" + kEnd);
    EXPECT_FALSE(fake.open);
}

}  // namespace
}  // namespace v5
