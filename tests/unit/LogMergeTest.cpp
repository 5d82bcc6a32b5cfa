#include "v5site/LogMerge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "base/Dates.h"

namespace v5site {

namespace {

// A file in memory that gives its bytes in small pieces.
struct Pieces : LogSource {
    std::string text;
    size_t at = 0;
    explicit Pieces(std::string whole) : text(std::move(whole)) {}
    size_t Read(char* buffer, size_t size) override {
        const size_t got = text.copy(buffer, std::min<size_t>(size, 1000), at);
        at += got;
        return got;
    }
};

std::string Merged(const std::vector<std::string>& files, const LogOptions& options = {}) {
    std::vector<LogInput> inputs;
    for (const std::string& file : files) {
        inputs.push_back({std::string(1, static_cast<char>('a' + inputs.size())), std::make_unique<Pieces>(file)});
    }
    std::string output;
    MergeLogs(
        std::move(inputs), options, [](std::string_view text) { return "<" + std::to_string(text.size()) + ">"; },
        [&](std::string_view text) {
            output += text;
            return true;
        });
    return output;
}

std::string Stamp(int second) {
    const std::wstring text = v5::FormatTimestamp12({2014, 3, 5, 14, 7 + second / 60, second % 60});
    return {text.begin(), text.end()};
}
std::string Frame(const char* word, int second) {
    return std::string("** ") + word + " Vantor log file  " + Stamp(second) + " **\r\n";
}

}  // namespace

// Programs with ticks, stamps or both: their lines come in the order in which they were written.
TEST(LogMerge, LinesComeInTheOrderOfTime) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        std::mt19937 random(seed);
        std::vector<std::string> files(2 + random() % 4), written;
        std::vector<bool> hasTicks;
        const std::uint32_t boot = static_cast<std::uint32_t>(random() % 1'000'000);
        for (std::string& file : files) {
            file = Frame("START", 0);
            hasTicks.push_back(random() % 4 != 0);
        }
        int ms = 0;
        for (int i = 0; i < 300; ++i) {
            // Without a tick, a line is known to the second only.
            ms = std::all_of(hasTicks.begin(), hasTicks.end(), [](bool has) { return has; })
                     ? ms + 1 + static_cast<int>(random() % 700)
                     : ms + 1000;
            const size_t file = random() % files.size();
            std::string tick = std::to_string(boot + static_cast<std::uint32_t>(ms));
            tick.resize(13, ' ');
            const std::string line = (hasTicks[file] ? tick : "") + Stamp(ms / 1000) + "  line " + std::to_string(i);
            files[file] += line + "\r\n" + (i % 7 == 0 ? "more of it\r\n" : "");
            written.push_back(std::string(1, static_cast<char>('a' + file)) + "  " + line);
        }
        const std::string merged = Merged(files);
        size_t at = 0;
        for (const std::string& line : written) {
            const size_t found = merged.find(line + "\n", at);
            ASSERT_NE(found, std::string::npos) << seed << ": " << line << " is missing or too early";
            at = found;
        }
    }
}

TEST(LogMerge, RemarksOnWhatLinesDoNotSay) {
    const std::string file = Frame("START", 0) + Stamp(10) + "  x\r\n" + Frame("START", 20) +
                             "5000         tick\r\n16000        ---- 11 seconds since previous write\r\n" +
                             Frame("END", 40) + Frame("START", 50) +
                             "2014-03-05 02:59:59 PM  last\r\n2014-03-05 02:00:00 PM  again \xE9\r\n";
    const std::string other = Frame("START", 25) + "100          before\r\n" + Frame("END", 30);
    EXPECT_EQ(Merged({file, other}),
              "a  ** START Vantor log file  " + Stamp(0) + " **\na  " + Stamp(10) +
                  "  x\na  !! restart; the run before has no END line\na  ** START Vantor log file  " + Stamp(20) +
                  " **\na  5000         tick\nb  ** START Vantor log file  " + Stamp(25) +
                  " **\nb  100          before\nb  ** END Vantor log file  " + Stamp(30) +
                  " **\na  16000        ---- 11 seconds since previous write\na  ** END Vantor log file  " + Stamp(40) +
                  " **\na  !! restart\na  ** START Vantor log file  " + Stamp(50) +
                  " **\na  2014-03-05 02:59:59 PM  last\na  !! the end of summer time: this hour comes a second "
                  "time\na  <31>\n"
                  "a  !! no END line: the program still writes, or ended without one\n");
}

TEST(LogMerge, Filters) {
    const std::string file =
        Frame("START", 0) + Stamp(10) + "  ten \"1\"\r\n" + Stamp(20) + "  Twenty\r\n" + Frame("END", 30);
    LogOptions options;
    options.from = LogTime("2014-03-05 14:07:10");
    options.to = LogTime("2014-03-05 14:07:20");
    EXPECT_EQ(Merged({file}, options), "a  " + Stamp(10) + "  ten \"1\"\na  " + Stamp(20) + "  Twenty\n");
    options.grep = "TEN";
    options.json = true;
    EXPECT_EQ(Merged({file}, options), "{\n  \"schema\": 1,\n  \"lines\": [\n    {\"file\": \"a\", \"text\": \"" +
                                           Stamp(10) + "  ten \\\"1\\\"\"}\n  ]\n}\n");
    LogOptions any;
    any.grep = "log";
    EXPECT_EQ(Merged({"", "no log"}, any), "b  no log\n");
}

}  // namespace v5site
