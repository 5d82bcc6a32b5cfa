// The security rules that need no stored document. What the documents decide: windows/SecurityDocumentsTest.cpp.
#include "security/Security.h"

#include <gtest/gtest.h>

#include <fstream>

#include "FakeSecurityHost.h"
#include "ProductConstants.h"
#include "base/Text.h"
#include "security/AccountLists.h"

namespace v5 {

namespace {

using Messages = std::vector<SentMessage>;

struct SecurityTest : testing::Test {
    FakeSecurityHost host;
    SecurityMessages messages;
    Security security{host, messages};

    bool Connect() { return security.Setup(kTestConnection, L"Test"); }
};

// The development passwords in devkit/README.md: the lines "| <plain> | <number of digits> |", plain text in backticks.
std::vector<std::wstring> DocumentedMasterPasswords() {
    std::ifstream readme(V5_SOURCE_DIR "/devkit/README.md");
    std::vector<std::wstring> passwords;
    for (std::string line; std::getline(readme, line);) {
        const size_t end = line.find("` | ");
        if (line.starts_with("| `") && end != std::string::npos && line.find(" digits |") != std::string::npos) {
            passwords.emplace_back(line.begin() + 3, line.begin() + static_cast<std::ptrdiff_t>(end));
        }
    }
    return passwords;
}

}  // namespace

TEST_F(SecurityTest, SetupStopsAtTheStepThatFails) {
    const struct {
        const char* failing;
        const wchar_t* message;
        size_t calls;
    } cases[] = {{"NewDatabase", L"Can't setup DBIL [STR-0095]", 1},
                 {"SetApplicationName", L"Can't setup DBIL [STR-0095]", 2},
                 {"Initialise", L"Can't setup DBIL [STR-0096]", 3},
                 {"OpenSite", L"Can't setup DBIL [STR-0097]", 4}};
    for (const auto& c : cases) {
        host.machine.failing = c.failing;
        host.machine.calls.clear();
        EXPECT_FALSE(Connect()) << c.failing;
        EXPECT_EQ(messages.Take(), (Messages{{4, c.message}}));
        EXPECT_EQ(host.machine.calls.size(), c.calls) << c.failing;
    }
    host.machine.failing.clear();
    EXPECT_TRUE(Connect());
    EXPECT_TRUE(messages.Take().empty());
}

TEST_F(SecurityTest, WithoutSetupEveryOperationAnswersItsDefault) {
    const Messages noObject = {{4, L"91, Object variable or With block variable not set"}};
    host.machine.isAdministrator = true;
    EXPECT_EQ(security.Status(), SecurityStatus::EnabledOther);
    EXPECT_EQ(messages.Take(), (Messages{{4, L"DB not available [STR-0099]"}}));
    EXPECT_EQ(security.UserLevel(), level::kNone);
    EXPECT_TRUE(messages.Take().empty());
    EXPECT_EQ(security.MinimumLevel(301), level::k3Low);
    EXPECT_EQ(messages.Take(), (Messages{{4, L"DB not available [STR-0099]"}}));
    security.SetEnabled(true);
    EXPECT_EQ(messages.Take(),
              (Messages{{4, L"DB not available [STR-0099]"}, {12292, L"Insufficient privileges [STR-0102]"}}));
    EXPECT_FALSE(security.SetMinimumLevel(301, 51));
    EXPECT_EQ(messages.Take(), (Messages{{4, L"Insufficient privileges to change password level [STR-0133]"}}));
    EXPECT_FALSE(security.SetAlarmResetPassword(L"123"));
    EXPECT_EQ(messages.Take(), (Messages{{12292,
                                          L"Insufficient privileges to change 'manual alarm reset password' "
                                          L"[STR-015]"}}));
    EXPECT_FALSE(security.SetAccountLists({}, false));
    EXPECT_EQ(messages.Take(), (Messages{{4, L"Insufficient privileges to set privilege level [STR-0156]"}}));
    host.machine.typed = {DocumentedMasterPasswords().at(0)};
    EXPECT_FALSE(security.SetAccountLists({}, true));
    EXPECT_EQ(messages.Take(), (Messages{{4, L"User database not available [STR-0157]"}}));
    AccountListTexts lists = {L"a", L"b", L"c"};
    EXPECT_FALSE(security.GetAccountLists(lists));
    EXPECT_EQ(lists.level1 + lists.level2 + lists.level3, L"");
    EXPECT_EQ(messages.Take(), noObject);
    EXPECT_FALSE(security.User().IsSqlAuthenticationUsed());
    EXPECT_EQ(messages.Take(), noObject);
    EXPECT_EQ(security.User().NameNoncached(), L"Operator7");
    EXPECT_EQ(messages.Take(), (Messages{{4, L"STR-0150: 91, Object variable or With block variable not set"}}));
    security.Teardown();
    EXPECT_TRUE(messages.Take().empty());
}

TEST_F(SecurityTest, TeardownReleasesTheDatabaseEvenWhenClosingFails) {
    ASSERT_TRUE(Connect());
    host.machine.failing = "Close";
    security.Teardown();
    EXPECT_EQ(messages.Take(), (Messages{{4, L"-2147467259, it broke"}}));
    EXPECT_EQ(security.Status(), SecurityStatus::EnabledOther);
}

TEST_F(SecurityTest, AClientMayDisconnectWhileAFailureIsAnnounced) {
    host.machine.isAdministrator = true;
    host.machine.whenItFails = [this] { security.Teardown(); };
    for (const char* failing :
         {"SetApplicationName", "Initialise", "OpenSite", "ReadLookup", "ConnectionString", "UsesWindowsAuthentication",
          "CurrentUserName", "AllowsSqlLogins", "ForgetLogons", "IsCurrentUserAnAdministrator"}) {
        host.machine.failing = failing;
        Connect();
        security.Check(301, {});
        security.User().NameNoncached();
        security.User().IsSqlAuthenticationEnabled();
        security.ClearLogonMemory();
        EXPECT_FALSE(messages.Take().empty()) << failing;
        EXPECT_EQ(security.Status(), SecurityStatus::EnabledOther) << failing;
        messages.Take();
    }
}

TEST_F(SecurityTest, TheFirstNameStaysAndTheNoncachedNameFollows) {
    host.machine.sqlUser = L"jsmith";
    ASSERT_TRUE(Connect());
    EXPECT_EQ(security.User().Name(), L"jsmith");
    host.machine.sqlUser = L"akumar";
    EXPECT_EQ(security.User().Name(), L"jsmith");
    EXPECT_EQ(security.User().NameNoncached(), L"akumar");
    EXPECT_TRUE(security.User().IsSqlAuthenticationUsed());
    host.machine.sqlUser.clear();
    EXPECT_EQ(security.User().NameNoncached(), L"Operator7");
    host.machine.failing = "CurrentUserName";
    EXPECT_EQ(security.User().NameNoncached(), L"Operator7");
    EXPECT_EQ(messages.Take(), (Messages{{4, L"STR-0150: -2147467259, it broke"}}));
    host.machine.failing = "NewAccounts";
    host.machine.sqlUser.clear();
    EXPECT_EQ(security.User().WindowsName(), L"");
}

TEST_F(SecurityTest, AFreshSiteIsOpenExceptForFixedMinimums) {
    ASSERT_TRUE(Connect());
    EXPECT_EQ(security.Status(), SecurityStatus::EnabledByDefault);
    const struct {
        RestrictionID restriction;
        PrivilegeLevel minimum;
    } cases[] = {{250, 56}, {251, 54}, {398, 55}, {312, 54}, {403, 56}, {405, 54}, {231, 33},
                 {233, 33}, {399, 50}, {301, 50}, {0, 50},   {-7, 50},  {53, 50}};
    for (const auto& c : cases) {
        EXPECT_EQ(security.MinimumLevel(c.restriction), c.minimum) << c.restriction;
    }
    EXPECT_TRUE(messages.Take().empty());
}

TEST_F(SecurityTest, WrongPasswordsAreAnsweredAndAskedForAgain) {
    ASSERT_TRUE(Connect());
    ASSERT_EQ(DocumentedMasterPasswords().size(), 2u);
    const std::wstring box = L"48|Vantor Security|The password you entered doesn't have privileges for this operation.";
    for (const std::wstring& master : DocumentedMasterPasswords()) {
        host.machine.boxes.clear();
        host.machine.pauses.clear();
        host.machine.typed = {L"", L"wrong", master, L"not asked for"};
        const CheckResult result =
            security.Check(restriction::kEnterDebugMode, {.allowed = true, .texts = {L"Why", L"Where"}});
        EXPECT_TRUE(result.isAllowed && result.enteredMasterPassword);
        EXPECT_EQ(host.machine.boxes, (std::vector{box, box}));
        EXPECT_EQ(host.machine.pauses, (std::vector<std::uint32_t>{300, 300}));
        EXPECT_EQ(host.machine.typed.size(), 1u);
    }
    host.machine.pauses.clear();
    host.machine.typed = {L"wrong"};
    EXPECT_FALSE(security.Check(restriction::kEnterDebugMode, {.allowed = true}).isAllowed);
    EXPECT_EQ(host.machine.pauses, (std::vector<std::uint32_t>{300, 300})) << "once more after the cancel";
    EXPECT_EQ(host.machine.asked, (std::vector<std::wstring>{L"Why/Where", L"Why/Where", L"/"}))
        << "one dialog a check";
    host.machine.pauses.clear();
    EXPECT_FALSE(security.Check(restriction::kEnterDebugMode, {.allowed = true}).isAllowed);
    EXPECT_TRUE(host.machine.pauses.empty()) << "cancelled at once";
    EXPECT_TRUE(messages.Take().empty());
}

TEST_F(SecurityTest, NoPromptWithoutNeedOrPermission) {
    ASSERT_TRUE(Connect());
    host.machine.failing = "AskForPassword";
    EXPECT_TRUE(security.Check(301, {.allowed = true}).isAllowed);
    EXPECT_FALSE(security.Check(250, {}).isAllowed);
    EXPECT_TRUE(messages.Take().empty());
    EXPECT_FALSE(security.Check(250, {.allowed = true}).isAllowed);
    EXPECT_EQ(messages.Take(), (Messages{{4, L"-2147467259, it broke"}}));
}

TEST_F(SecurityTest, AFailureInTheLevelLeavesTheLevelFoundSoFar) {
    ASSERT_TRUE(Connect());
    host.machine.isAdministrator = true;
    const struct {
        const char* failing;
        PrivilegeLevel level;
    } cases[] = {{"NewAccounts", 50},       // before anything is known
                 {"ReadLookup", 53},        // no lists can be read, but the account can
                 {"ConnectionString", 50},  // unknown is not Windows authentication
                 {"IsCurrentUserAnAdministrator", 50}};
    for (const auto& c : cases) {
        host.machine.failing = c.failing;
        EXPECT_EQ(security.UserLevel(), c.level) << c.failing;
        EXPECT_EQ(messages.Take(), (Messages{{4, L"-2147467259, it broke"}})) << c.failing;
    }
    host.machine.failing.clear();
    host.machine.sqlUser = L"sa";
    EXPECT_EQ(security.UserLevel(), 50) << "no administrators under SQL authentication";
}

TEST(Levels, SufficiencyAndItsExceptions) {
    const struct {
        PrivilegeLevel held;
        RestrictionID restriction;
        PrivilegeLevel minimum;
        bool allowed;
    } cases[] = {{54, 301, 54, true}, {53, 301, 54, false}, {53, 398, 55, true},  {54, 398, 55, false},
                 {55, 398, 55, true}, {55, 231, 33, false}, {50, 233, 33, false}, {33, 233, 33, true},
                 {56, 231, 33, true}, {33, 301, 50, false}, {53, 301, 53, true}};
    for (const auto& c : cases) {
        EXPECT_EQ(IsSufficient(c.held, c.restriction, c.minimum), c.allowed) << c.held << " " << c.restriction;
    }
    std::vector<std::int32_t> valid;
    for (std::int32_t value = -1; value < 100; ++value) {
        if (IsValidLevel(value)) {
            valid.push_back(value);
        }
    }
    EXPECT_EQ(valid, (std::vector<std::int32_t>{33, 50, 51, 52, 54, 55, 56}));
}

TEST(AccountListsTest, OtherLevelsHaveNoList) {
    FakeSecurityHost host;
    SecurityMessages messages;
    SecuritySite site(host, messages);
    UserIdentity user(site);
    try {
        AccountLists(site, user).Replace(level::k3Low, L"jsmith");
        ADD_FAILURE() << "no problem";
    } catch (const SecurityProblem& problem) {
        EXPECT_EQ(problem.Message(), L"Invalid privilege level [STR-0124]");
    }
}

}  // namespace v5
