// Reading a site through the registered class, every text of every entry included, against the same values read one by
// one with the system's profile function. Both find the file freshly written, as after an edit; the system does not
// trust what it keeps of such a file and parses it again for every value.
#include <algorithm>
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

// The slots of an entry's text properties in its table of members, as its description has them.
std::vector<size_t> TextSlots(IDispatch* entry) {
    ComPtr<ITypeInfo> info;
    Check(entry->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), "GetTypeInfo");
    std::vector<size_t> slots;
    FUNCDESC* member = nullptr;
    for (UINT i = 0; info->GetFuncDesc(i, &member) == S_OK; ++i) {
        if (member->invkind == INVOKE_PROPERTYGET && member->elemdescFunc.tdesc.vt == VT_BSTR) {
            slots.push_back(static_cast<size_t>(member->oVft) / sizeof(void*));
        }
        info->ReleaseFuncDesc(member);
    }
    return slots;
}

void ReadThroughTheClass() {
    const auto main = Create<_DahsIniMain>(L"V5Strings.DahsIniMain");
    VARIANT_BOOL done = VARIANT_FALSE;
    Check(main->ReadVantorINI(V5Strings::NotApplicable, &done), "ReadVantorINI");
    ComPtr<_DahsIniEntries> entries;
    Check(main->get_DahsEntries(&entries), "DahsEntries");
    long count = 0;
    Check(entries->get_Count(&count), "Count");
    Check(count == kEntries, "reading the site");
    for (long i = 0; i < count; ++i) {
        ComPtr<_DahsIniEntry> entry;
        Check(entries->Item0(i, &entry), "Item0");
        static const std::vector<size_t> slots = TextSlots(entry.Get());
        Check(slots.size() == kTextProperties, "finding the text properties");
        for (const size_t slot : slots) {
            using Getter = HRESULT(STDMETHODCALLTYPE*)(_DahsIniEntry*, BSTR*);
            _bstr_t text;
            Check((*reinterpret_cast<Getter**>(entry.Get()))[slot](entry.Get(), text.GetAddress()), "a text property");
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
