#include "log/LogWriter.h"

#include <gtest/gtest.h>

#include "FakeLog.h"

namespace v5 {
namespace {

struct LogWriterTest : testing::Test, LogBench {};

constexpr char kStart[] = "** START Vantor log file  2014-03-05 02:07:09 PM **\r\n";
constexpr char kEnd[] = "** END Vantor log file 2014-03-05 02:07:09 PM **\r\n";

TEST_F(LogWriterTest, FramesARunAndKeepsItsName) {
    log.Write(L"early", true);
    log.Flush();
    log.Stop();
    EXPECT_EQ(Written(), "");
    EXPECT_TRUE(log.Start(L"app.log", L"", {}));
    EXPECT_EQ(log.Filename(), L"D:\\Lib\\app.log");
    EXPECT_EQ(fake.path, log.Filename());
    EXPECT_EQ(Written(), kStart);
    log.Write(L"");
    log.Write(L"a\r\nb");
    log.Write(L"flushed", true);
    EXPECT_EQ(Written(), "\r\na\r\nb\r\nflushed\r\n");
    EXPECT_EQ(fake.writes, 4) << "one call to the system for each line";
    EXPECT_EQ(fake.flushes, 1);
    log.Stop();
    EXPECT_EQ(Written(), kEnd);
    EXPECT_FALSE(log.IsActive());
    EXPECT_EQ(log.Filename(), L"D:\\Lib\\app.log");
    log.Stop();
    log.Write(L"late", true);
    log.Flush();
    EXPECT_EQ(Written(), "");
    EXPECT_EQ(fake.flushes, 1);
}

TEST_F(LogWriterTest, RestartEndsTheOldRunFirst) {
    log.Start(L"C:\\a.log", L"", {});
    EXPECT_TRUE(log.Start(L"C:\\a.log", L"", {}));
    EXPECT_EQ(Written(), std::string(kStart) + kEnd + kStart);
    EXPECT_EQ(fake.path, L"C:\\a.log");
}

TEST_F(LogWriterTest, FailedOpenKeepsTheSystemsText) {
    fake.openError = 32;
    EXPECT_FALSE(log.Start(L"C:\\a.log", L"Title", {}));
    EXPECT_EQ(log.Error(), L"In use.\r\n");
    EXPECT_EQ(log.Filename(), L"C:\\a.log");
    fake.openError = 99999;
    EXPECT_FALSE(log.Start(L"C:\\a.log", L"Title", {}));
    EXPECT_EQ(log.Error(), L"Error not found (code 99999).");
    log.Write(L"ignored");
    EXPECT_EQ(Written(), "");
    fake.openError = 0;
    EXPECT_TRUE(log.Start(L"C:\\a.log", L"", {}));
    EXPECT_EQ(log.Error(), L"");
}

TEST_F(LogWriterTest, PrefixesComeTickFirst) {
    log.Start(L"C:\\a.log", L"", {.showMilliseconds = true, .showTimestamp = true});
    Written();
    log.Write(L"\u00B5g \u65E5");
    EXPECT_EQ(Written(), "123456       2014-03-05 02:07:09 PM  \xB5g ?\r\n");
    const struct {
        std::uint32_t tick;
        const char* field;
    } ticks[] = {{0, "0            "},
                 {(1u << 30) - 1, "1073741823   "},
                 {(1u << 30) + 1, "1073741825   "},
                 {1u << 31, "0            "},
                 {0xFFFFFFFF, "2147483647   "}};
    for (const auto& row : ticks) {
        fake.tick = row.tick;
        log.Write(L"x");
        EXPECT_EQ(Written(), std::string(row.field) + "2014-03-05 02:07:09 PM  x\r\n");
    }
    const struct {
        int hour, minute, second;
        const char* time;
    } times[] = {{0, 0, 0, "12:00:00 AM"},
                 {12, 0, 0, "12:00:00 PM"},
                 {12, 59, 59, "12:59:59 PM"},
                 {13, 0, 0, "01:00:00 PM"},
                 {23, 59, 59, "11:59:59 PM"}};
    for (const auto& row : times) {
        fake.tick = fake.tick == 7 ? 8 : 7;  // time does not stand still
        fake.now = {2024, 12, 31, row.hour, row.minute, row.second};
        log.Write(L"x");
        EXPECT_EQ(Written(), std::to_string(fake.tick) + "            2024-12-31 " + row.time + "  x\r\n");
    }
}

TEST_F(LogWriterTest, LinesOfOneMillisecondShareTheirPrefixesAndNothingElse) {
    log.Start(L"app.log", L"", {.showMilliseconds = true, .showTimestamp = true});
    const std::string prefix = "123456       2014-03-05 02:07:09 PM  ";
    Written();
    log.Write(L"a long first line");
    log.Write(L"b");
    EXPECT_EQ(Written(), prefix + "a long first line\r\n" + prefix + "b\r\n");
    log.Start(L"app.log", L"", {.showMilliseconds = true});
    log.Write(L"c");
    EXPECT_EQ(Written(), std::string(kEnd) + kStart + "123456       c\r\n");
    log.Start(L"app.log", L"", {});
    Written();
    log.Write(L"d");
    log.Write(L"e");
    EXPECT_EQ(Written(), "d\r\ne\r\n");
}

TEST_F(LogWriterTest, OneMegabyteIsOneLine) {
    log.Start(L"C:\\a.log", L"", {.showMilliseconds = true});
    Written();
    log.Write(std::wstring(1 << 20, L'\u00E9'));
    const std::string line = Written();
    EXPECT_EQ(line.size(), 13u + (1u << 20) + 2u);
    EXPECT_TRUE(line.ends_with("\xE9\r\n"));
    EXPECT_EQ(fake.writes, 2);
}

TEST_F(LogWriterTest, HeaderIsATenLineBox) {
    log.Start(L"app_1.log", L"Title", {});
    const std::string frame(36, '*');  // the line with the name has 30 columns
    EXPECT_EQ(Written(), kStart + frame + "\r\n" +
                             "** Title                          **\r\n"
                             "** Long date, long time           **\r\n"
                             "**                                **\r\n"
                             "** Installed Vantor Releases:     **\r\n"
                             "**     Release 5.3                **\r\n"
                             "**                                **\r\n"
                             "**                                **\r\n"
                             "** Log Filename: D:\\Lib\\app_1.log **\r\n"
                             "** Machine Name: STACK7           **\r\n"
                             "** O/S: Windows                   **\r\n" +
                             frame + "\r\n\r\n");
}

TEST_F(LogWriterTest, HeaderLinesCarryThePrefixes) {
    log.Start(L"app.log", L"A title that is the longest line", {.showMilliseconds = true, .showTimestamp = true});
    const std::string prefix = "123456       2014-03-05 02:07:09 PM  ";
    const std::string text = Written();
    EXPECT_TRUE(text.starts_with(kStart + prefix + std::string(38, '*') + "\r\n" + prefix +
                                 "** A title that is the longest line **\r\n"));
    EXPECT_TRUE(text.ends_with(prefix + std::string(38, '*') + "\r\n" + prefix + "\r\n"));
}

TEST_F(LogWriterTest, HeaderErrorReachesTheCallerWithTheFileOpen) {
    fake.machine.failing = "ReleaseNumber";
    EXPECT_THROW(log.Start(L"app.log", L"Title", {}), AutomationError);
    EXPECT_TRUE(log.IsActive());
    EXPECT_EQ(Written(), kStart);
    EXPECT_EQ(log.Error(), L"");
    log.Write(L"goes on");
    EXPECT_EQ(Written(), "goes on\r\n");
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
    const struct {
        std::uint32_t from, to;
        std::string report;
    } rows[] = {
        {5000, 15999, ""},  // 10.999 s
        {5000, 16000, gap11},
        {0, 900000, ""},  // a tick of 0 is no previous write
        {(1u << 30) - 1000, (1u << 30) + 10000, gap11},
        {0xFFFFFFFF - 999, 10000, gap11},
        {1, 1u << 30, "---- 1073741 seconds since previous write\r\n"},
        {1, (1u << 30) + 1, ""},  // a whole turn looks like no gap
    };
    for (const auto& row : rows) {
        fake.tick = row.from;
        log.Write(L"");
        Written();
        fake.tick = row.to;
        log.Write(L"");
        EXPECT_EQ(Written().substr(0, row.report.size() + 1), row.report + std::to_string(row.to)[0]);
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
