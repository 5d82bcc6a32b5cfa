// Security over generated sites, with each call on a neighbour and each allocation failing in turn: no answer grants
// more than it does without the failure, and a change stands exactly when its record does.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <new>
#include <random>

#include "FailCall.h"
#include "FailingAllocations.h"
#include "FakeSecurityHost.h"
#include "ProductConstants.h"
#include "security/Security.h"
#include "security/TextConversionFunctions.h"

namespace v5 {

namespace {

constexpr const wchar_t* kAccounts[] = {L"S-1-5-21-7", L"S-1-5-32-1", L"S-1-9-9", L"jsmith", L"operator7", L"akumar"};
constexpr const wchar_t* kSwitches[] = {L"", L"<root><Enabled>1</Enabled></root>", L"<root><Enabled>0</Enabled></root>",
                                        L"<root><Enabled>maybe</Enabled></root>", L"<root></root>"};
constexpr const wchar_t* kMinimums[] = {L"50", L"51", L"52", L"54", L"55", L"56", L"33", L"53", L"50.4", L" 51 ", L"x"};
constexpr std::array kRestrictions = {301, 301, 301, 398, 399, 231, 250, 403, -5};

// What one site has stored and who asks; the same seed always gives the same.
struct State {
    bool isSql, isAdministrator, isInGroup, isStoredMinimum;
    std::array<std::vector<std::wstring>, 3> lists;
    std::wstring switchText, minimum;
    RestrictionID restriction;
    PrivilegeLevel newMinimum;

    explicit State(unsigned seed) {
        std::mt19937 random(seed);
        const auto below = [&](size_t count) { return static_cast<size_t>(random() % count); };
        isSql = below(2) != 0;
        isAdministrator = below(2) != 0;
        isInGroup = below(2) != 0;
        for (auto& list : lists) {
            for (const wchar_t* account : kAccounts) {
                if (below(5) == 0) {
                    list.emplace_back(account);
                }
            }
        }
        switchText = kSwitches[below(std::size(kSwitches))];
        isStoredMinimum = below(3) != 0;
        minimum = kMinimums[below(std::size(kMinimums))];
        restriction = kRestrictions[below(kRestrictions.size())];
        newMinimum = static_cast<PrivilegeLevel>(50 + below(7));
    }
};

struct SecuredSite {
    FakeSecurityHost host;
    SecurityMessages messages;
    Security security{host, messages};
    std::map<std::wstring, std::wstring> before;

    explicit SecuredSite(const State& state) {
        FakeMachine& machine = host.machine;
        machine.sqlUser = state.isSql ? L"jsmith" : L"";
        machine.isAdministrator = state.isAdministrator;
        if (state.isInGroup) {
            machine.groups = {L"S-1-5-32-1"};
        }
        security.Setup(kTestConnection, L"Test");
        std::wstring lists = L"<root>";
        for (size_t i = 0; i < state.lists.size(); ++i) {
            const std::wstring name = L"L" + std::to_wstring(i + 1);
            for (const std::wstring& account : state.lists[i]) {
                lists += L"<" + name + L">" + account + L"</" + name + L">";
            }
        }
        Put(kAccountsDocument, lists + L"</root>");
        Put(kSwitchDocument, state.switchText);
        Put(kAlarmResetDocument, L"<root><ManualAlarmResetPwd>123</ManualAlarmResetPwd></root>");
        if (state.isStoredMinimum) {
            Put(kMinimumsDocument, L"<root><MinPrivLevel|rid=" + std::to_wstring(state.restriction) + L">" +
                                       state.minimum + L"</MinPrivLevel></root>");
        }
        before = machine.rows;
    }
    void Put(const DocumentFormat& format, std::wstring_view text) {
        host.machine.rows[std::wstring(format.key)] = text.empty() ? L"" : StoredForm(text);
    }
    bool Changed(const DocumentFormat& format) {
        return host.machine.rows[std::wstring(format.key)] != before[std::wstring(format.key)];
    }
    bool Logged(std::wstring_view start) const { return host.machine.log.find(start) != std::wstring::npos; }
};

// A member's answer as a number of which more is more granted.
struct Deed {
    const char* name;
    std::function<int(SecuredSite&, const State&)> act;
};
const std::wstring kNewList = L"newcomer";
const Deed kDeeds[] = {
    {"UserLevel", [](SecuredSite& s, const State&) { return s.security.UserLevel(); }},
    {"Status", [](SecuredSite& s, const State&) { return IsOpen(s.security.Status()) ? 1 : 0; }},
    // A minimum that cannot be read counts as 54 for those who ask for it, whatever is stored; every user has 50.
    {"MinimumLevel",
     [](SecuredSite& s, const State& state) {
         return -std::clamp(s.security.MinimumLevel(state.restriction), level::kNone, level::k3Low);
     }},
    {"Check",
     [](SecuredSite& s, const State& state) { return s.security.Check(state.restriction, {}).isAllowed ? 1 : 0; }},
    {"Check with a password",
     [](SecuredSite& s, const State& state) {
         s.host.machine.typed = {L"wrong", L"123"};
         return s.security.Check(state.restriction, {.allowed = true}).isAllowed ? 1 : 0;
     }},
    {"SetEnabled",
     [](SecuredSite& s, const State& state) {
         s.security.SetEnabled(state.isInGroup);
         return s.Changed(kSwitchDocument) ? 1 : 0;
     }},
    {"SetMinimumLevel",
     [](SecuredSite& s, const State& state) {
         return s.security.SetMinimumLevel(state.restriction, state.newMinimum) ? 1 : 0;
     }},
    {"SetAlarmResetPassword",
     [](SecuredSite& s, const State&) { return s.security.SetAlarmResetPassword(L"456") ? 1 : 0; }},
    {"SetAccountLists",
     [](SecuredSite& s, const State&) {
         return s.security.SetAccountLists({kNewList, kNewList, kNewList}, false) ? 1 : 0;
     }},
    {"GetAccountLists",
     [](SecuredSite& s, const State&) {
         AccountListTexts lists;
         return s.security.GetAccountLists(lists) ? 1 : 0;
     }},
    {"SqlLogin", [](SecuredSite& s, const State&) { return s.security.User().SqlLogin().empty() ? 0 : 1; }}};

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
// parser says of a text that is none: no failures.
const Failure kQuietly = {"answers false or nothing", [](Operations& operations, const char* operation) {
                              const std::string_view name = operation;
                              operations.failsQuietly = name != "ReadLookup" && name != "ParseXml" && name != "Select";
                              operations.failing = operations.failsQuietly ? operation : "";
                          }};

}  // namespace

TEST(SecurityFaults, NoFailureGrantsAndTheTrailIsTrue) {
    constexpr unsigned kStates = 1650;
    size_t faults = 0;
    std::map<std::string, int> granted;
    for (unsigned seed = 0; seed < kStates; ++seed) {
        const State state(seed);
        const Deed& deed = kDeeds[seed % std::size(kDeeds)];
        const size_t way = seed / std::size(kDeeds) % (std::size(kFailures) + 1);
        const Failure& failure = way < std::size(kFailures) ? kFailures[way] : kQuietly;
        SecuredSite clean(state);
        const int expected = deed.act(clean, state);
        granted[deed.name] += expected > 0 ? 1 : 0;
        bool reached = true;
        for (int n = 0; reached && !HasFailure(); ++n) {
            SecuredSite site(state);
            site.messages.Take();
            int answer = 0;
            const std::string failed = FailCall(site.host.machine, failure, n, [&] { answer = deed.act(site, state); });
            SCOPED_TRACE(std::string(deed.name) + ", site " + std::to_string(seed) + ": " + failed + " " +
                         failure.name);
            reached = !failed.empty();
            EXPECT_LE(answer, expected);
            // A neighbour's quiet "no" is an answer like any other.
            EXPECT_TRUE(answer == expected || &failure == &kQuietly || !site.messages.Take().empty())
                << "the client is not told";
            ExpectTrueTrail(site);
            EXPECT_TRUE(site.security.Setup(kTestConnection, L"Test")) << "leaves a wreck";
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
    State state(0);
    state.isSql = false;
    state.isAdministrator = true;
    state.switchText = kSwitches[1];
    SecuredSite site(state);
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

TEST(SecurityFaults, EachAllocation) {
    size_t faults = 0;
    for (unsigned seed = 0; seed < 2 * std::size(kDeeds); ++seed) {
        const State state(seed);
        const Deed& deed = kDeeds[seed % std::size(kDeeds)];
        SecuredSite clean(state);
        const int expected = deed.act(clean, state);
        faults += FailEachAllocation([&](size_t n) {
            SecuredSite site(state);
            int answer = expected;
            bool reached = false;
            {
                const FailingAllocation failing(n);
                try {
                    answer = deed.act(site, state);
                } catch (const std::bad_alloc&) {
                    // the test's own texts, or an answer that found no room
                }
                reached = failing.HasFailed();
            }
            EXPECT_LE(answer, expected) << deed.name << ": allocation " << n;
            ExpectTrueTrail(site);
            return reached;
        });
    }
    RecordProperty("faults", static_cast<int>(faults));
    EXPECT_GT(faults, 500u);
}

// Whoever listens to a message may tear down or set up again in the middle of any operation; what Setup answers is
// then what has become of its own connection.
TEST(SecurityFaults, AListenerMayTearDownOrSetUpAtAnyCall) {
    const std::function<void(Security&)> deeds[] = {
        [](Security& security) { security.Teardown(); },
        [](Security& security) { security.Setup(kTestConnection, L"Again"); }};
    for (unsigned seed = 0; seed < 3 * std::size(kDeeds); ++seed) {
        const State state(seed);
        for (const auto& interruption : deeds) {
            bool reached = true;
            for (int n = 0; reached; ++n) {
                SecuredSite site(state);
                int left = n;
                reached = false;
                site.host.machine.onCall = [&](const char*) {
                    if (left-- == 0) {
                        reached = true;
                        interruption(site.security);
                    }
                };
                if (seed == 0) {
                    const bool isReady = site.security.Setup(kTestConnection, L"Test");
                    EXPECT_EQ(isReady, !reached || n == 0) << "call " << n;
                } else {
                    kDeeds[seed % std::size(kDeeds)].act(site, state);  // whatever it answers: it must come back
                }
            }
        }
    }
}

}  // namespace v5
