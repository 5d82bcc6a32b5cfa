// Reading a site file: parsing and all rules, against a general-purpose INI library that loads the same file and looks
// the same values up; and the cost of sections that are none of ours.
#define SI_NO_CONVERSION  // bytes as they are
#include <SimpleIni.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "bench/Bench.h"
#include "bench/SiteFile.h"
#include "config/SiteFile.h"
#include "unit/FakeSiteHost.h"
#include "v5site/SiteDiff.h"

namespace v5::bench {
namespace {

void ReadSite(const std::string& bytes) {
    const IniFile file(std::wstring(bytes.begin(), bytes.end()), SiteSections());
    DahsEntryList entries;
    std::vector<std::wstring> problems;
    ReadDahsEntries(file, L"Vantor5.INI", BlankConnections::IgnoreEntry, entries, problems);
    if (entries.Count() != 99 || !problems.empty()) {
        throw std::runtime_error("the site file is not sound");
    }
    Keep(entries);
}

// Every value that the peer looks up.
template <class Visit>
void ForEachValue(const Visit& visit) {
    static const std::vector<std::string> keys = SiteKeys();
    for (int number = 1; number <= 99; ++number) {
        const std::string section = "Dahs" + std::to_string(number);
        for (const std::string& key : keys) {
            visit(section.c_str(), key.c_str());
        }
    }
}

void ReadingASite(Table& table) {
    const std::string bytes = SiteFile("C:\\Vantor5");
    const auto peers = [&] {
        CSimpleIniA ini;
        ini.LoadData(bytes);
        ForEachValue([&](const char* section, const char* key) { Keep(ini.GetValue(section, key)); });
    };
    table.Compare(
        {.name = "site: 99 entries, all rules / SimpleIni", .goal = 0.5, .runs = 15}, [&] { ReadSite(bytes); }, peers);
}

void PassingForeignSections(Table& table) {
    const std::string bytes = SiteFile("C:\\Vantor5");
    std::string padded = bytes;
    for (int section = 0; padded.size() < 10 * bytes.size(); ++section) {
        padded += "[Printer" + std::to_string(section) + "]\r\nPort=LPT1\r\nSiteID=none of ours\r\nPaper=A4\r\n";
    }
    table.Compare(
        {.name = "site: padded tenfold / as it is", .goal = 11, .runs = 15}, [&] { ReadSite(padded); },
        [&] { ReadSite(bytes); });
}

void Diffing(Table& table) {
    const std::string bytes = SiteFile("C:\\Vantor5");
    FakeSiteHost host;
    host.files[L"C:\\Site\\Vantor5.INI"] = bytes;
    const auto ours = [&] {
        Site first(host), second(host);
        for (Site* site : {&first, &second}) {
            site->Read(AppCategory::NotApplicable, false, false, BlankConnections::IgnoreEntry);
        }
        if (first.Entries()->Count() != 99 || !v5site::Differences(first, second).empty()) {
            throw std::runtime_error("the sites differ from themselves");
        }
    };
    const auto peers = [&] {
        CSimpleIniA first, second;
        first.LoadData(bytes);
        second.LoadData(bytes);
        ForEachValue([&](const char* section, const char* key) {
            Keep(std::string_view(first.GetValue(section, key, "")) == second.GetValue(section, key, ""));
        });
    };
    // It compares what follows from the file, four forms of each connection string among it.
    table.Compare({.name = "v5site diff: two sites of 99 entries / SimpleIni, value by value", .goal = 2, .runs = 10},
                  ours, peers);
}

const Benchmark diffing("v5site diff", Diffing);
const Benchmark reading("site file", ReadingASite);
const Benchmark padding("site file, padded", PassingForeignSections);

}  // namespace
}  // namespace v5::bench
