// Every call on a port and every allocation fails in turn, in each way in which it can: the rules must answer what they
// promise, never grant what they should not, store all or nothing, and work again afterwards.
#include <gtest/gtest.h>

#include <functional>
#include <new>

#include "FailCall.h"
#include "FailingAllocations.h"
#include "FakeLog.h"
#include "FakeProduct.h"
#include "FakeSiteHost.h"
#include "ProductConstants.h"
#include "footnotes/FootnoteBook.h"
#include "productinfo/HelpLauncher.h"
#include "productinfo/ReleaseNumber.h"
#include "productinfo/SupportInfo.h"

namespace v5 {

namespace {

const std::wstring kHelpPath = L"D:\\Help\\VantorManual.chm";

// One product with its help file, and a mail program.
FakeProduct Installed() {
    FakeProduct product;
    for (const auto code : {product::kUpgradeCodeMain, product::kUpgradeCodeSupportFiles, product::kUpgradeCodeWeb,
                            product::kUpgradeCodeOstra, product::kUpgradeCodeOstraOlder}) {
        product.packages[std::wstring(code)] = {L"Vantor 5.3.12", L"20140305", kHelpPath};
    }
    product.values[{RegistryRoot::ClassesRoot, L"mailto\\shell\\open\\command", L""}] = L"1";
    product.files = {kHelpPath};
    return product;
}

// Two sections, with a dash in a computer's name so that the file has to be decoded.
const std::string kSiteText = Section(1, "DahsComputerName=das\x96\nAffinityMask_IOS=3") + Section(2, "SiteID=SITE2");

// Runs `test` with each call failing in each way, until it no longer comes so far; it gives the name of the call.
void ForEachFailure(const std::function<std::string(const Failure&, int)>& test) {
    int faults = 0;
    for (const Failure& failure : kFailures) {
        for (int n = 0; !test(failure, n).empty(); ++n) {
            ++faults;
        }
    }
    EXPECT_GT(faults, 40);
}

}  // namespace

TEST(Faults, ProductInformation) {
    ForEachFailure([](const Failure& failure, int n) {
        FakeProduct product = Installed();
        std::wstring release, help;
        SupportInfo info;
        const std::string failed = FailCall(product.machine, failure, n, [&] {
            release = ReleaseNumber(product, nullptr, ReleaseKind::Full);
            info = ReadSupportInfo(product, product, nullptr);
            help = OpenHelp(product, product, nullptr);
        });
        int lost = (release.empty() ? 1 : 0) + (info.emailIsLink ? 0 : 1) + (help.empty() ? 0 : 1);
        EXPECT_TRUE(release.empty() || release == L"Release 5.3.12");
        const std::wstring initial[] = {L"Common Files", L"Vantor", L"", L""};
        const SupportPackage* packages[] = {&info.supportFiles, &info.main, &info.web, &info.ostra};
        for (size_t i = 0; i < std::size(packages); ++i) {
            EXPECT_TRUE(packages[i]->release == L"Vantor 5.3.12" || packages[i]->release == initial[i]);
            lost += (packages[i]->release == initial[i] ? 1 : 0) + (packages[i]->installed.empty() ? 1 : 0);
        }
        EXPECT_LE(lost, failed.empty() ? 0 : 1) << failed;  // a failed name of Ostra is looked up under its older code
        const bool isAnswer = failed == "FileExists" && failure.description == kFailures[0].description;
        EXPECT_TRUE(help.empty() || help == (isAnswer ? L"Cannot find file '" + kHelpPath + L"'. [STR-0170]"
                                                      : std::wstring(L"[STR-0171] ") + failure.description));
        EXPECT_EQ(product.opened, help.empty() ? kHelpPath : L"");
        return failed;
    });
}

TEST(Faults, ReadingASite) {
    ForEachFailure([](const Failure& failure, int n) {
        SiteBench bench(kSiteText);
        bool done = false;
        const std::string failed =
            FailCall(bench.host.machine, failure, n, [&] { done = bench.Read(AppCategory::Ios); });
        SCOPED_TRACE(std::string(failure.name) + " in " + failed);
        const std::wstring problems = Lines(bench.site.Problems());
        const auto says = [&](const wchar_t* words) { return problems.find(words) != problems.npos; };
        EXPECT_EQ(done, bench.site.Current().entry->dahsID == 1) << "whether there is a current DAHS";
        const bool isExplained = &failure == &kFailures[0] || failed == "ReadFile" || says(failure.description);
        EXPECT_TRUE(done || (says(L"Could not ") && isExplained));
        const bool affinityFailed = failed.ends_with("AffinityMask");
        EXPECT_EQ(says(L"STR-083"), affinityFailed);
        EXPECT_TRUE(done || !affinityFailed);
        EXPECT_TRUE(failed != "CreateFolder" || says(L"Could not create folder '"));
        bench.site.InfoTexts(3);
        return failed;
    });
}

TEST(Faults, TheLogsHost) {
    bool reached = true;
    for (int n = 0; reached; ++n) {
        LogBench bench;
        bool told = false;
        const std::string failed = FailCall(bench.fake.machine, kFailures[0], n, [&] {
            try {
                EXPECT_TRUE(bench.log.Start(L"a.log", L"Title", {}));
            } catch (const AutomationError&) {
                told = true;
            }
        });
        reached = !failed.empty();
        EXPECT_EQ(told, reached) << failed;
        EXPECT_EQ(bench.log.IsActive(), failed != "LibraryFolder") << failed;
        EXPECT_EQ(bench.fake.content.empty(), failed == "LibraryFolder") << "the start line is written first";
        bench.log.Stop();
        EXPECT_TRUE(bench.log.Start(L"a.log", L"Title", {})) << failed;
    }
}

namespace {

// A piece of the rules that must end well, or with std::bad_alloc, wherever memory runs out. It answers whether what it
// leaves behind is right.
struct Work {
    const char* name;
    std::function<bool(size_t n, bool& reached)> run;
};

// Does `work` with the n-th allocation failing; whether it came so far.
template <class Rules>
bool RunOutOfMemory(size_t n, Rules&& work) {
    const FailingAllocation failing(n);
    try {
        work();
    } catch (const std::bad_alloc&) {
    }
    return failing.HasFailed();
}

const Work kWork[] = {{"reading a site",
                       [](size_t n, bool& reached) {
                           SiteBench bench(kSiteText);
                           bool done = false;
                           reached = RunOutOfMemory(n, [&] { done = bench.Read(); });
                           // Whatever was lost, the object can be asked for everything.
                           bench.site.InfoTexts(3);
                           bench.site.Choose(2, false, false);
                           return done || (reached && bench.site.Current().entry != nullptr);
                       }},
                      {"choosing another DAHS",
                       [](size_t n, bool& reached) {
                           SiteBench bench(kSiteText);
                           bench.Read();
                           bool done = false;
                           reached = RunOutOfMemory(n, [&] { done = bench.site.ChooseSite(L"site2", false, false); });
                           return (done || reached) && bench.site.Current().entry->dahsID == (done ? 2 : 1);
                       }},
                      {"numbering a footnote",
                       [](size_t n, bool& reached) {
                           FootnoteBook book;
                           for (int i = 0; i < 13; ++i) {
                               book.NumberOf(std::wstring(20, static_cast<wchar_t>(L'a' + i)));
                           }
                           const std::wstring text(4000, L'z');
                           std::int32_t number = 0;
                           reached = RunOutOfMemory(n, [&] { number = book.NumberOf(text); });
                           return book.Count() == (number == 14 ? 14 : 13) &&
                                  book.NumberOf(std::wstring(20, L'c')) == 3 && book.NumberOf(text) == 14;
                       }},
                      {"starting and writing a log",
                       [](size_t n, bool& reached) {
                           LogBench bench;
                           reached = RunOutOfMemory(n, [&] {
                               bench.log.Start(L"a.log", L"Title", {true, true, 1});
                               bench.log.Write(
                                   std::wstring_view(L"a line that needs some room of its own, more than usual"), true);
                               bench.log.Stop();
                           });
                           bench.log.Stop();
                           return !bench.log.IsActive() && bench.log.Start(L"b.log", L"", {});
                       }},
                      {"product information", [](size_t n, bool& reached) {
                           FakeProduct product = Installed();
                           reached = RunOutOfMemory(n, [&] {
                               ReadSupportInfo(product, product, nullptr);
                               ReleaseNumber(product, nullptr, ReleaseKind::Full);
                           });
                           return true;
                       }}};

}  // namespace

TEST(Faults, EachAllocationOfTheOtherRules) {
    for (const Work& work : kWork) {
        bool reached = false;
        work.run(1000000, reached);  // what is made once and kept is made now
        const long live = LiveAllocations();
        const size_t faults = FailEachAllocation([&](size_t n) {
            EXPECT_TRUE(work.run(n, reached)) << work.name << ": allocation " << n;
            return reached;
        });
        EXPECT_GE(faults, 1u) << work.name;
        EXPECT_EQ(LiveAllocations(), live) << work.name << " leaks";
        RecordProperty(work.name, static_cast<int>(faults));
    }
}

}  // namespace v5
