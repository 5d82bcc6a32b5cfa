#include "productinfo/ReleaseNumber.h"

#include <gtest/gtest.h>

#include "ProductConstants.h"
#include "unit/FakeInstaller.h"

namespace v5 {
namespace {

constexpr auto kUnassigned = static_cast<ReleaseKind>(3);

TEST(ReleaseNumber, TextByKindAndInstalledName) {
    const struct {
        ReleaseKind kind;
        std::wstring name;
        std::wstring expected;
    } cases[] = {{ReleaseKind::Full, L"Vantor 5.3.12", L"Release 5.3.12"},
                 {ReleaseKind::Short, L"Vantor 5.3.12", L"Release 5.3"},
                 {ReleaseKind::FullNoPrefix, L"Vantor 5.3.12", L"5.3.12"},
                 {ReleaseKind::Short, L"Vantor5", L"Release 5"},
                 {ReleaseKind::Short, L"Vantor 5.3 SP1.", L"Release 5.3 SP1"},
                 {ReleaseKind::Full, L"Vantor\u0665 beta", L"Release Release ??"},  // an Arabic digit is none
                 {ReleaseKind::Short, L"Vantor.beta", L"Release Release ??"},
                 {ReleaseKind::FullNoPrefix, L"Vantor", L"??"},
                 {ReleaseKind::SupportFiles, L"Common Files S12", L"Common Files S12"},
                 {ReleaseKind::Web, L"VantorWeb 2.1", L"VantorWeb ??"},
                 {kUnassigned, L"Vantor 5.3.12", L""},
                 {static_cast<ReleaseKind>(-1), L"Vantor 5.3.12", L""}};
    for (const auto& test : cases) {
        FakeInstaller installer;
        for (const auto code :
             {product::kUpgradeCodeMain, product::kUpgradeCodeSupportFiles, product::kUpgradeCodeWeb}) {
            installer.Install(code, test.name);
        }
        RecordingSink sink;
        EXPECT_EQ(ReleaseNumber(installer, &sink, test.kind), test.expected) << static_cast<int>(test.kind);
        EXPECT_TRUE(sink.texts.empty());
    }
}

TEST(ReleaseNumber, MissingPackageIsReportedOnceWithItsOwnCode) {
    const struct {
        ReleaseKind kind;
        std::vector<std::wstring> messages;
    } cases[] = {{ReleaseKind::Short, {NotFound146(product::kUpgradeCodeMain)}},
                 {ReleaseKind::Full, {NotFound146(product::kUpgradeCodeMain)}},
                 {ReleaseKind::FullNoPrefix, {NotFound146(product::kUpgradeCodeMain)}},
                 {ReleaseKind::SupportFiles, {NotFound146(product::kUpgradeCodeSupportFiles)}},
                 {ReleaseKind::Web, {NotFound146(product::kUpgradeCodeWeb)}},
                 {kUnassigned, {}}};
    FakeInstaller bare;
    for (const auto& test : cases) {
        RecordingSink sink;
        EXPECT_EQ(ReleaseNumber(bare, &sink, test.kind), L"");
        EXPECT_EQ(sink.texts, test.messages);
        EXPECT_EQ(ReleaseNumber(bare, nullptr, test.kind), L"");
    }
}

TEST(ReleaseNumber, FailingInstallerGivesTheEmptyTextAndNoMessage) {
    FakeInstaller broken;
    broken.broken = true;
    FakeInstaller halfInstalled;
    halfInstalled[product::kUpgradeCodeMain];  // listed, but without a name
    for (FakeInstaller* installer : {&broken, &halfInstalled}) {
        RecordingSink sink;
        EXPECT_EQ(ReleaseNumber(*installer, &sink, ReleaseKind::Full), L"");
        EXPECT_TRUE(sink.texts.empty());
    }
}

}  // namespace
}  // namespace v5
