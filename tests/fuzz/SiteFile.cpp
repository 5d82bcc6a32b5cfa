// A site file of any bytes: read, judged, every entry chosen, everything rendered.
#include "fuzz/Fuzz.h"
#include "unit/FakeSiteHost.h"

namespace v5::fuzz {

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    Input input(data, size);
    const auto options = input.Take<std::uint8_t>();
    SiteBench bench(input.Bytes());
    Site& site = bench.site;
    const bool read = site.Read(static_cast<AppCategory>(options & 7), (options & 8) != 0, (options & 16) != 0,
                                (options & 32) != 0 ? BlankConnections::AllowEntry : BlankConnections::IgnoreEntry);
    Require(read == (site.Entries()->Count() > 0), "reading succeeds exactly when there is an entry");
    std::int32_t last = 0;
    for (const DahsEntryPtr& entry : *site.Entries()) {
        Require(entry->dahsID > last && entry->dahsID <= 99, "entries come in ascending order, 1 to 99");
        last = entry->dahsID;
        Require(!entry->siteID.empty() && !entry->computerName.empty() && !entry->vantorDir.empty(),
                "a usable entry has a site, a computer and a folder");
        Require(entry->autoOutputTimeout >= 0, "the time-out is not negative");
        Require(site.Choose(entry->dahsID, false, true), "every entry can be chosen");
        site.FindRedundantDasIds(entry->siteID, entry->dahsID);
        Require(site.InfoTexts(2).size() >= 36, "the information array has all its items");
    }
    return 0;
}

}  // namespace v5::fuzz
