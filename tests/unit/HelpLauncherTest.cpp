#include "productinfo/HelpLauncher.h"

#include <gtest/gtest.h>

#include "ProductConstants.h"
#include "unit/FakeInstaller.h"

namespace v5 {
namespace {

class FakeViewer : public HelpViewer {
  public:
    std::wstring existing;
    std::wstring opened;
    bool missing = false;

    bool FileExists(std::wstring_view path) const override { return path == existing; }
    void Open(std::wstring_view path) override {
        if (missing) {
            throw AutomationError(0x8007007Eu, L"Module not found.");
        }
        opened = path;
    }
};

const std::wstring kPath = L"D:\\Vantor\\Help\\VantorManual.chm";
const std::wstring kNotInstalled =
    L"Cannot find path for Vantor help file 'VantorManual.chm'. Vantor help may not be installed. [STR-0168]";
const std::wstring kNoComponent =
    L"Cannot find component path for Vantor help file. Vantor help may not be installed. [STR-0167]";
const std::wstring kNoProduct =
    L"STR-0165: Cannot find installed product code for upgrade code '" + std::wstring(product::kUpgradeCodeMain) + L"'";

TEST(HelpLauncher, OpensTheInstalledFile) {
    FakeInstaller installer;
    installer[product::kUpgradeCodeMain].componentPath = kPath;
    FakeViewer viewer;
    viewer.existing = kPath;
    RecordingSink sink;
    EXPECT_EQ(OpenHelp(installer, viewer, &sink), L"");
    EXPECT_EQ(viewer.opened, kPath);
    EXPECT_TRUE(sink.texts.empty());
}

TEST(HelpLauncher, ExplainsWhatIsMissingToTheUserAndToTheSink) {
    FakeInstaller bare;
    FakeInstaller withoutHelp;
    withoutHelp[product::kUpgradeCodeMain];
    FakeInstaller deleted;
    deleted[product::kUpgradeCodeMain].componentPath = kPath;
    FakeInstaller noComponentPath;
    noComponentPath[product::kUpgradeCodeMain];
    noComponentPath.hasComponentPath = false;
    FakeInstaller noInstaller;
    noInstaller.broken = true;

    const struct {
        FakeInstaller* installer;
        std::wstring user;
        std::vector<std::wstring> sink;
    } cases[] = {{&bare, kNotInstalled, {kNoProduct, kNoComponent}},
                 {&withoutHelp, kNotInstalled, {kNoComponent}},
                 {&deleted,
                  L"Cannot find file '" + kPath + L"'. [STR-0170]",
                  {L"Cannot find '" + kPath + L"'. Vantor help may not be installed. [STR-0169]"}},
                 {&noComponentPath, L"[STR-0171] -2147352573, Member not found.", {}},
                 {&noInstaller, L"[STR-0171] -2147352573, Member not found.", {}}};
    for (const auto& test : cases) {
        FakeViewer viewer;
        RecordingSink sink;
        EXPECT_EQ(OpenHelp(*test.installer, viewer, &sink), test.user);
        EXPECT_EQ(sink.texts, test.sink);
        EXPECT_EQ(OpenHelp(*test.installer, viewer, nullptr), test.user);
        EXPECT_EQ(viewer.opened, L"");
    }
}

TEST(HelpLauncher, MissingViewerIsAnUnexpectedFailure) {
    FakeInstaller installer;
    installer[product::kUpgradeCodeMain].componentPath = kPath;
    FakeViewer viewer;
    viewer.existing = kPath;
    viewer.missing = true;
    EXPECT_EQ(OpenHelp(installer, viewer, nullptr), L"[STR-0171] -2147024770, Module not found.");
}

}  // namespace
}  // namespace v5
