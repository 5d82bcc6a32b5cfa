// Reading a site through the registered class, every text of every entry included, against the same values read one by
// one with the system's profile function. Both find the file freshly written, as after an edit; the system does not
// trust what it keeps of such a file and parses it again for every value.
#include <windows.h>
// after windows.h, which it needs:
#include <comutil.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "V5Strings.h"
#include "bench/Bench.h"
#include "bench/SiteFile.h"
#include "bench/windows/Com.h"
#include "component/SiteFolder.h"

namespace v5::bench {
namespace {

constexpr UINT kTextProperties = 33;  // of an entry: texts, among them 24 connection strings
constexpr int kEntries = 99;

// The getters of an entry's text properties.
using TextGetter = HRESULT (STDMETHODCALLTYPE _DahsIniEntry::*)(BSTR*);
#define V5_FORMS(database)                                                  \
    &_DahsIniEntry::get_SqlConnectionString_##database,                     \
        &_DahsIniEntry::get_SqlConnectionString_##database##Noninteractive, \
        &_DahsIniEntry::get_SqlConnectionString_##database##_DotNet,        \
        &_DahsIniEntry::get_SqlConnectionString_##database##Noninteractive_DotNet
constexpr TextGetter kTexts[] = {&_DahsIniEntry::get_SiteID,
                                 &_DahsIniEntry::get_LanguageID,
                                 &_DahsIniEntry::get_DahsComputerName,
                                 &_DahsIniEntry::get_DahsDescription,
                                 &_DahsIniEntry::get_ReportsURL,
                                 &_DahsIniEntry::get_VantorDir,
                                 &_DahsIniEntry::get_VantorLogsDir,
                                 &_DahsIniEntry::get_PrimaryBackupDir,
                                 &_DahsIniEntry::get_DRCurrentHealthTimeouts,
                                 V5_FORMS(Alarms),
                                 V5_FORMS(Config),
                                 V5_FORMS(Data),
                                 V5_FORMS(DataShortTerm),
                                 V5_FORMS(Realtime),
                                 V5_FORMS(Ostra)};
#undef V5_FORMS
static_assert(std::size(kTexts) == kTextProperties);

void ReadThroughTheClass() {
    const auto main = Create<_DahsIniMain>(L"V5Strings.DahsIniMain");
    VARIANT_BOOL done = VARIANT_FALSE;
    Check(main->ReadVantorINI(V5Strings::NotApplicable, &done), "ReadVantorINI");
    ComPtr<_DahsIniEntries> entries;
    Check(main->get_DahsEntries(&entries), "DahsEntries");
    long count = 0;
    Check(entries->get_Count(&count), "Count");
    if (count != kEntries) {
        throw std::runtime_error("the site file is not sound");
    }
    for (long i = 0; i < count; ++i) {
        ComPtr<_DahsIniEntry> entry;
        Check(entries->Item0(i, &entry), "Item0");
        for (const TextGetter get : kTexts) {
            _bstr_t text;
            Check((entry.Get()->*get)(text.GetAddress()), "a text property");
            Keep(text);
        }
    }
}

void ReadOneByOne(const std::wstring& path, const std::vector<std::wstring>& keys) {
    for (int number = 1; number <= kEntries; ++number) {
        const std::wstring section = L"Dahs" + std::to_wstring(number);
        for (const std::wstring& key : keys) {
            wchar_t value[512];
            GetPrivateProfileStringW(section.c_str(), key.c_str(), L"", value, 512, path.c_str());
            Keep(value);
        }
    }
}

void ReadingASite(Table& table) {
    const std::string file = SiteFile("$folder$\\V");
    const test::SiteFolder site(file);
    std::vector<std::wstring> keys;
    for (const std::string& key : SiteKeys()) {
        keys.emplace_back(key.begin(), key.end());
    }
    double ours = 1e9;
    double peers = 1e9;
    for (int run = 0; run < 150; ++run) {  // of 2 to 3 ms each, as other work on the machine comes in between
        site.Write(file);
        ours = std::min(ours, Seconds(ReadThroughTheClass));
    }
    for (int run = 0; run < 2; ++run) {
        site.Write(file);
        peers = std::min(peers, Seconds([&] { ReadOneByOne(site.File(), keys); }));
    }
    table.Add({.name = "site: just written, read and ask all / one INI value a call", .goal = 0.001}, ours, peers);
}

const Benchmark registered("site", ReadingASite);

}  // namespace
}  // namespace v5::bench
