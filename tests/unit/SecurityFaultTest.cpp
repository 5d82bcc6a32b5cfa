// Security over generated sites, with each call on a neighbour failing in turn: no answer grants more than it does
// without the failure, and a change stands exactly when its record does.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <random>
#include <set>
#include <string_view>

#include "FailCall.h"
#include "FakeSecurityHost.h"
#include "ProductConstants.h"
#include "security/Security.h"
#include "security/TextConversionFunctions.h"

namespace v5 {

namespace {

constexpr const wchar_t* kAccounts[] = {L"S-1-5-21-7", L"S-1-5-32-1", L"S-1-9-9", L"jsmith", L"operator7", L"akumar"};
constexpr const wchar_t* kSwitches[] = {L"<Enabled>1</Enabled>", L"<Enabled>0</Enabled>", L"<Enabled>maybe</Enabled>",
                                        L""};
constexpr const wchar_t* kMinimums[] = {L"50", L"51", L"52", L"54", L"55", L"56", L"33", L"53", L"50.4", L" 51 ", L"x"};
constexpr std::array kRestrictions = {301, 301, 301, 398, 399, 231, 250, 403, -5};

// A site with something stored and somebody who asks; the same seed always gives the same.
struct SecuredSite : SecurityBench {
    RestrictionID restriction;
    PrivilegeLevel newMinimum;
    bool enables;
    std::map<std::wstring, std::wstring> before;

    explicit SecuredSite(unsigned seed) {
        std::mt19937 random(seed);
        const auto oneOf = [&](const auto& choices) { return choices[random() % std::size(choices)]; };
        FakeMachine& machine = host.machine;
        machine.sqlUser = oneOf(std::array{L"", L"jsmith"});
        machine.isAdministrator = random() % 2 != 0;
        if (random() % 2 != 0) {
            machine.groups = {L"S-1-5-32-1"};
        }
        Connect();
        std::wstring lists;
        for (const std::wstring name : {L"L1", L"L2", L"L3"}) {
            for (const wchar_t* account : kAccounts) {
                lists += random() % 5 == 0 ? L"<" + name + L">" + account + L"</" + name + L">" : L"";
            }
        }
        Put(kAccountsDocument, lists);
        Put(kSwitchDocument, oneOf(kSwitches));
        Put(kAlarmResetDocument, L"<ManualAlarmResetPwd>123</ManualAlarmResetPwd>");
        restriction = oneOf(kRestrictions);
        if (random() % 3 != 0) {
            Put(kMinimumsDocument,
                L"<MinPrivLevel|rid=" + std::to_wstring(restriction) + L">" + oneOf(kMinimums) + L"</MinPrivLevel>");
        }
        newMinimum = static_cast<PrivilegeLevel>(50 + random() % 7);
        enables = random() % 2 != 0;
        before = machine.rows;
    }
    bool Changed(const DocumentFormat& format) {
        return host.machine.rows[std::wstring(format.key)] != before[std::wstring(format.key)];
    }
    bool Logged(std::wstring_view start) const { return host.machine.log.find(start) != std::wstring::npos; }
};

// A member's answer as a number of which more is more granted.
struct Deed {
    const char* name;
    std::function<int(SecuredSite&)> act;
};
const std::wstring kNewList = L"newcomer";
const Deed kDeeds[] = {
    {"UserLevel", [](SecuredSite& s) { return s.security.UserLevel(); }},
    {"Status", [](SecuredSite& s) { return IsOpen(s.security.Status()) ? 1 : 0; }},
    // A minimum that cannot be read counts as 54 for those who ask for it, whatever is stored; every user has 50.
    {"MinimumLevel",
     [](SecuredSite& s) { return -std::clamp(s.security.MinimumLevel(s.restriction), level::kNone, level::k3Low); }},
    {"Check", [](SecuredSite& s) { return s.security.Check(s.restriction, {}).isAllowed ? 1 : 0; }},
    {"Check with a password",
     [](SecuredSite& s) {
         s.host.machine.typed = {L"wrong", L"123"};
         return s.security.Check(s.restriction, {.allowed = true}).isAllowed ? 1 : 0;
     }},
    {"SetEnabled",
     [](SecuredSite& s) {
         s.security.SetEnabled(s.enables);
         return s.Changed(kSwitchDocument) ? 1 : 0;
     }},
    {"SetMinimumLevel", [](SecuredSite& s) { return s.security.SetMinimumLevel(s.restriction, s.newMinimum) ? 1 : 0; }},
    {"SetAlarmResetPassword", [](SecuredSite& s) { return s.security.SetAlarmResetPassword(L"456") ? 1 : 0; }},
    {"SetAccountLists",
     [](SecuredSite& s) {
         const AccountListTexts lists = {kNewList, kNewList, kNewList};
         return s.security.SetAccountLists(lists, false) ? 1 : 0;
     }},
    {"GetAccountLists",
     [](SecuredSite& s) {
         AccountListTexts lists;
         return s.security.GetAccountLists(lists) ? 1 : 0;
     }},
    {"Users",
     [](SecuredSite& s) {
         s.security.ClearLogonMemory();
         s.security.User().NameNoncached();
         return s.security.User().IsSqlAuthenticationEnabled() ? 1 : 0;
     }},
    {"SqlLogin", [](SecuredSite& s) { return s.security.User().SqlLogin().empty() ? 0 : 1; }}};

// Whether what is stored and what is recorded tell the same story.
void ExpectTrueTrail(SecuredSite& site) {
    EXPECT_EQ(site.Changed(kSwitchDocument), site.Logged(L"STR-0105"));
    EXPECT_EQ(site.Changed(kAlarmResetDocument), site.Logged(L"STR-0117"));
    EXPECT_EQ(site.Changed(kMinimumsDocument), site.Logged(L"STR-0139"));
    AccountListTexts lists;
    EXPECT_TRUE(site.security.GetAccountLists(lists));
    const std::wstring* texts[] = {&lists.level1, &lists.level2, &lists.level3};
    for (size_t i = 0; i < std::size(texts); ++i) {
        const std::wstring start = L"STR-0128 SECURITY 1 Changed L" + std::to_wstring(i + 1);
        EXPECT_EQ(*texts[i] == kNewList, site.Logged(start)) << *texts[i];
    }
}

// And one more way to fail. An empty row is what the database says of a site without the document, and null what the
// parser says of a text that is none, no element or an empty one what is in it: no failures.
const Failure kQuietly = {
    "answers false or nothing", [](Operations& operations, const char* operation) {
        const std::string_view name = operation;
        operations.failsQuietly =
            !std::set<std::string_view>{"ReadLookup", "ParseXml", "Select", "Text"}.contains(name);
        operations.failing = operations.failsQuietly ? operation : "";
    }};

}  // namespace

TEST(SecurityFaults, NoFailureGrantsAndTheTrailIsTrue) {
    constexpr unsigned kStates = 1656;
    size_t faults = 0;
    std::map<std::string, int> granted;
    for (unsigned seed = 0; seed < kStates; ++seed) {
        const Deed& deed = kDeeds[seed % std::size(kDeeds)];
        const size_t way = seed / std::size(kDeeds) % (std::size(kFailures) + 1);
        const Failure& failure = way < std::size(kFailures) ? kFailures[way] : kQuietly;
        SecuredSite clean(seed);
        const int expected = deed.act(clean);
        granted[deed.name] += expected > 0 ? 1 : 0;
        bool reached = true;
        for (int n = 0; reached && !HasFailure(); ++n) {
            SecuredSite site(seed);
            site.messages.Take();
            int answer = 0;
            const std::string failed = FailCall(site.host.machine, failure, n, [&] { answer = deed.act(site); });
            SCOPED_TRACE(std::string(deed.name) + ", site " + std::to_string(seed) + ": " + failed + " " +
                         failure.name);
            reached = !failed.empty();
            EXPECT_LE(answer, expected);
            // A neighbour's quiet "no" is an answer like any other.
            EXPECT_TRUE(answer == expected || &failure == &kQuietly || !site.messages.Take().empty())
                << "the client is not told";
            ExpectTrueTrail(site);
            EXPECT_TRUE(site.Connect()) << "leaves a wreck";
            ++faults;
        }
    }
    for (const char* deed : {"Check", "SetEnabled", "SetMinimumLevel", "SetAlarmResetPassword", "SetAccountLists"}) {
        EXPECT_GT(granted[deed], 20) << deed << " is hardly ever granted, even without a failure";
    }
    RecordProperty("faults", static_cast<int>(faults));
    EXPECT_GT(faults, 15'000u);
}

TEST(SecurityFaults, AChangeThatCannotBeTakenBackIsTold) {
    SecuredSite site(0);
    site.host.machine.sqlUser.clear();
    site.host.machine.isAdministrator = true;
    site.Put(kSwitchDocument, kSwitches[0]);
    site.before = site.host.machine.rows;
    site.host.machine.onCall = [&site, writes = 0](const char* name) mutable {
        const std::string_view operation = name;
        writes += operation == "WriteLookup" ? 1 : 0;
        site.host.machine.failing = operation == "WriteEvent" || writes == 2 ? name : "";
    };
    site.messages.Take();
    site.security.SetEnabled(false);
    EXPECT_TRUE(site.Changed(kSwitchDocument));
    EXPECT_EQ(
        site.messages.Take(),
        L"4 Can't write audit record [STR-0105]\n4 The change is stored without its audit record, and could not be "
        L"taken back [STR-0105]\n");
}

// Whoever listens to a message may tear down or set up again in the middle of any operation; what Setup answers is
// then what has become of its own connection.
TEST(SecurityFaults, AListenerMayTearDownOrSetUpAtAnyCall) {
    const std::function<void(Security&)> deeds[] = {
        [](Security& security) { security.Teardown(); },
        [](Security& security) { security.Setup(kTestConnection, L"Again"); }};
    for (unsigned seed = 0; seed < 3 * std::size(kDeeds); ++seed) {
        for (const auto& interruption : deeds) {
            bool reached = true;
            for (int n = 0; reached; ++n) {
                SecuredSite site(seed);
                int left = n;
                reached = false;
                site.host.machine.onCall = [&](const char*) {
                    if (left-- == 0) {
                        reached = true;
                        interruption(site.security);
                    }
                };
                if (seed == 0) {
                    site.messages.Take();
                    const bool isReady = site.Connect();
                    EXPECT_EQ(isReady, !reached || n == 0) << "call " << n;
                    EXPECT_EQ(site.messages.Take(),
                              isReady ? L"" : L"4 Setup was interrupted by another Setup or by Teardown\n");
                } else {
                    kDeeds[seed % std::size(kDeeds)].act(site);  // whatever it answers: it must come back
                }
            }
        }
    }
}

}  // namespace v5
