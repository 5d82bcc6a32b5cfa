// What a log needs from the machine, in memory. Any operation can be made to fail, by its name.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "FailCall.h"
#include "Latin1.h"
#include "log/LogWriter.h"

namespace v5 {

struct FakeLog : LogFile, LogHost, Clock {
    mutable Operations machine;
    std::uint32_t openError = 0;
    int writesUntilFailure = -1;  // negative: never
    bool open = false;
    bool atEnd = false;
    int writes = 0, flushes = 0;
    std::wstring path;
    std::string content;
    CivilDateTime now{2014, 3, 5, 14, 7, 9};
    std::uint32_t tick = 123456;
    Latin1 codePage;

    std::uint32_t Open(const std::wstring& name) override {
        EXPECT_FALSE(open);
        path = name;
        open = openError == 0;
        atEnd = false;
        return openError;
    }
    bool IsOpen() const override { return open; }
    void SeekToEnd() override { atEnd = true; }
    void Write(std::string_view bytes) override {
        EXPECT_TRUE(open && atEnd);
        if (writesUntilFailure-- == 0) {
            throw std::bad_alloc();
        }
        ++writes;
        content += bytes;
    }
    void FlushToDisk() override {
        EXPECT_TRUE(open);
        ++flushes;
    }
    void Close() override { open = false; }

    std::wstring LibraryFolder() const override { return machine.Answer<std::wstring>("LibraryFolder", L"D:\\Lib"); }
    std::wstring SystemErrorText(std::uint32_t code) const override { return code == 32 ? L"In use.\r\n" : L""; }
    std::wstring LongDateAndTime(const CivilDateTime&) const override {
        return machine.Answer<std::wstring>("LongDateAndTime", L"Long date, long time");
    }
    std::wstring ReleaseNumber(ReleaseKind kind) const override {
        return machine.Answer<std::wstring>("ReleaseNumber", kind == ReleaseKind::Full ? L"Release 5.3" : L"");
    }
    std::wstring ComputerName() const override { return machine.Answer<std::wstring>("ComputerName", L"STACK7"); }
    std::wstring OperatingSystem() const override {
        return machine.Answer<std::wstring>("OperatingSystem", L"Windows");
    }

    CivilDateTime LocalNow() const override { return now; }
    std::uint32_t TickMilliseconds() const override { return tick; }
};

// A log on a machine of its own.
struct LogBench {
    FakeLog fake;
    LogWriter log{fake, fake, fake.codePage, fake};

    // What was written since the last call.
    std::string Written() { return std::exchange(fake.content, {}); }
};

}  // namespace v5
