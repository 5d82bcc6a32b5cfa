// Every call on a port fails in turn, in each way in which it can: the rules must answer what they promise, store all
// or nothing, and work again afterwards. Failing allocations: tests/allocations.
#include <gtest/gtest.h>

#include <functional>

#include "FailCall.h"
#include "FakeLog.h"
#include "FakeProduct.h"
#include "FakeSiteHost.h"
#include "ProductConstants.h"
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

}  // namespace v5
