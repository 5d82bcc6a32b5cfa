#include "productinfo/SupportInfo.h"

#include <gtest/gtest.h>

#include "ProductConstants.h"
#include "productinfo/FactoryFlag.h"
#include "unit/FakeInstaller.h"
#include "unit/FakeRegistry.h"

namespace v5 {
namespace {

TEST(SupportInfo, OnlyTheMainProductInstalled) {
    FakeInstaller installer;
    installer.Install(product::kUpgradeCodeMain, L"Vantor 5.3.12", L"20140305");
    RecordingSink sink;
    const SupportInfo info = ReadSupportInfo(installer, FakeRegistry{}, &sink);

    EXPECT_EQ(info.main.release, L"Vantor 5.3.12");
    EXPECT_EQ(info.main.installed, L"Installed 2014-03-05");
    for (const SupportPackage* missing : {&info.supportFiles, &info.web, &info.ostra}) {
        EXPECT_EQ(missing->release + missing->installed, L"");
    }
    EXPECT_EQ(sink.texts,
              (std::vector<std::wstring>{
                  NotFound146(product::kUpgradeCodeSupportFiles), NotFound146(product::kUpgradeCodeSupportFiles),
                  NotFound146(product::kUpgradeCodeWeb), NotFound146(product::kUpgradeCodeWeb),
                  NotFound146(product::kUpgradeCodeOstra), NotFound146(product::kUpgradeCodeOstraOlder),
                  NotFound146(product::kUpgradeCodeOstraOlder)}));
    EXPECT_FALSE(info.emailIsLink);
}

TEST(SupportInfo, OstraPrefersItsPresentCode) {
    FakeInstaller installer;
    installer.Install(product::kUpgradeCodeOstraOlder, L"Ostra 1.9", L"20090101");
    EXPECT_EQ(ReadSupportInfo(installer, FakeRegistry{}, nullptr).ostra.release, L"Ostra 1.9");
    EXPECT_EQ(ReadSupportInfo(installer, FakeRegistry{}, nullptr).ostra.installed, L"Installed 2009-01-01");

    installer.Install(product::kUpgradeCodeOstra, L"Ostra 2.0", L"no date");
    EXPECT_EQ(ReadSupportInfo(installer, FakeRegistry{}, nullptr).ostra.release, L"Ostra 2.0");
    EXPECT_EQ(ReadSupportInfo(installer, FakeRegistry{}, nullptr).ostra.installed, L"");
}

TEST(SupportInfo, FailingQueriesLeaveTheInitialTexts) {
    FakeInstaller broken;
    broken.broken = true;
    RecordingSink sink;
    const SupportInfo info = ReadSupportInfo(broken, FakeRegistry{}, &sink);
    EXPECT_EQ(info.supportFiles.release, L"Common Files");
    EXPECT_EQ(info.main.release, L"Vantor");
    EXPECT_EQ(info.web.release + info.ostra.release + info.main.installed, L"");
    EXPECT_EQ(info.email, product::kSupportEmail);
    EXPECT_TRUE(sink.texts.empty());

    FakeInstaller nameless;  // one query of a package fails, the next one answers
    nameless[product::kUpgradeCodeMain].attributes = {{L"InstallDate", L"20140305"}};
    EXPECT_EQ(ReadSupportInfo(nameless, FakeRegistry{}, &sink).main.release, L"Vantor");
    EXPECT_EQ(ReadSupportInfo(nameless, FakeRegistry{}, &sink).main.installed, L"Installed 2014-03-05");
}

TEST(SupportInfo, LinkNeedsAMailProgram) {
    FakeInstaller installer;
    FakeRegistry registry;
    auto& command = registry.values[{RegistryRoot::ClassesRoot, L"mailto\\shell\\open\\command", L""}];
    EXPECT_FALSE(ReadSupportInfo(installer, registry, nullptr).emailIsLink);
    command = L"mail.exe %1";
    EXPECT_TRUE(ReadSupportInfo(installer, registry, nullptr).emailIsLink);
}

TEST(SupportInfo, DisplayDate) {
    const std::pair<std::wstring, std::wstring> cases[] = {{L"20140305", L"2014-03-05"},
                                                           {L"20120229", L"2012-02-29"},
                                                           {L"20130229", L""},
                                                           {L"20141305", L""},
                                                           {L"1", L""},
                                                           {L"-20140305", L""},
                                                           {L"140305", L""},
                                                           {L"120140305", L""},
                                                           {L"1e300", L""},
                                                           {L"2014-03-05", L"2014-03-05"},
                                                           {L"12/31/2014", L"12/31/2014"},
                                                           {L"31.12.2014", L"31.12.2014"},
                                                           {L"31.12/2014", L""},
                                                           {L"99999-1-1", L""},
                                                           {L"", L""},
                                                           {L"today", L""},
                                                           {L"2014-03-05-06", L""}};
    for (const auto& [date, shown] : cases) {
        EXPECT_EQ(DisplayDate(date), shown);
    }
}

TEST(SupportInfo, MailAddressEscapesBlanksAndDotsOfTheSubjectOnly) {
    EXPECT_EQ(SupportMailAddress(L"support@nimbo.example", L"Vantor 5.3.12"),
              L"mailto:support@nimbo.example?subject=support%20request%20(Vantor%205%2E3%2E12)");
}

TEST(FactoryFlag, ExactlyOneForTheMachineOrTheUser) {
    const struct {
        std::optional<std::wstring> machine, user;
        bool expected;
    } cases[] = {{{}, {}, false},       {L"1", {}, true},      {{}, L"1", true},  {L"0", L"1", true},
                 {L"01", L" 1", false}, {L"true", L"", false}, {L"1", L"0", true}};
    for (const auto& test : cases) {
        FakeRegistry registry;
        if (test.machine) {
            registry.values[{RegistryRoot::LocalMachine, L"Software\\Nimbo", L"Factory"}] = *test.machine;
        }
        if (test.user) {
            registry.values[{RegistryRoot::CurrentUser, L"Software\\Nimbo", L"Factory"}] = *test.user;
        }
        EXPECT_EQ(IsFactoryComputer(registry), test.expected);
    }
}

}  // namespace
}  // namespace v5
