// A site file of any bytes: read, judged, every entry chosen, everything rendered.
#include <array>

#include "base/Utf8.h"
#include "config/Site.h"
#include "fuzz/Fuzz.h"

namespace v5::fuzz {

namespace {

// A machine on which the file lies in the first folder that is asked for.
class OneFileHost final : public SiteHost {
  public:
    explicit OneFileHost(std::string bytes) : mBytes(std::move(bytes)) {}

    std::wstring ExpandEnvironment(const std::wstring&) const override { return L"C:\\Vantor"; }
    std::wstring FullPath(const std::wstring& path) const override { return path; }
    bool FolderExists(const std::wstring&) const override { return true; }
    bool FileExists(const std::wstring&) const override { return true; }
    std::wstring ReadFile(const std::wstring&, std::wstring& text) const override {
        const auto marked = DecodeMarked(mBytes);
        const std::u8string_view ansi(reinterpret_cast<const char8_t*>(mBytes.data()), mBytes.size());
        text = marked ? *marked : std::wstring(ansi.begin(), ansi.end());
        return {};
    }
    std::wstring CreateFolder(const std::wstring&) override { return L"refused"; }
    std::wstring LibraryFolder() const override { return L"C:\\Library"; }
    std::wstring TemporaryFolder() const override { return L"C:\\Temp"; }
    std::wstring LocalComputerName() const override { return L"HERE"; }
    bool IsLocalComputer(const std::wstring& name) const override { return name == L"HERE"; }
    std::optional<std::uint64_t> SystemAffinityMask() const override { return 3; }
    bool SetProcessAffinityMask(std::uint64_t) override { return true; }

  private:
    std::string mBytes;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    Input input(data, size);
    const auto options = input.Take<std::uint8_t>();
    OneFileHost host(input.Bytes());
    Site site(host);
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
