// NimboSecurity while another program holds the lock on the site's database, and while there is no XML parser.
#include <windows.h>
#include <gtest/gtest.h>

#include <comutil.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "V5Strings.h"
#include "component/Client.h"
#include "component/DatabaseFile.h"
#include "component/EventRecorder.h"

namespace v5::test {

using namespace V5Strings;  // the published enumerations

namespace {

constexpr wchar_t kSite[] = L"S1";
constexpr size_t kDocuments = 4;

// Everything that the site has stored: the four documents, and the texts of the event log.
std::vector<std::wstring> Stored(const DatabaseFile& file) {
    return OtherProgram(file.Path()).Rows(R"(SELECT stored FROM (
        SELECT 1 AS part, column1 AS number, ifnull(value, '') AS stored FROM (VALUES
            (1, '{A71A2E97-80BE-E011-A198-0023AE02B5BD}'),  -- security switch
            (2, '{A7C1187A-ADA1-4D4A-ABCA-2804F5D8641F}'),  -- account lists
            (3, '{A73D8FC4-8038-4EC3-B926-28CEBC80C237}'),  -- manual alarm-reset password
            (4, '{A7EDAA89-A79C-4068-8B26-7B20523B4236}'))  -- minimum levels
            LEFT JOIN lookup ON key = column2 AND level = 1 AND name = 'V5LOOKUP'
        UNION ALL SELECT 2, number, text FROM event_log) ORDER BY part, number)");
}

struct Change {
    const wchar_t* member;
    std::vector<_variant_t> first;   // succeeds
    std::vector<_variant_t> second;  // would change what the first has stored
};

const Change kChanges[] = {
    {L"SetMinPrivilegeLevelForRID", {1000L, 51L}, {1000L, 52L}},
    {L"SetManualAlarmResetPwd", {L"123"}, {L"456"}},
    {L"SetSidsForAllPrivilegeLevels", {L"", L"", L"S-1-1-0", false}, {L"S-1-1-0", L"", L"", false}},
};

// What is answered when no document can be read. The lists would make the user, an administrator, a member of level 3.
struct Default {
    const wchar_t* member;
    std::vector<_variant_t> arguments;
    _variant_t stored, unreadable;
};

const Default kDefaults[] = {
    {L"GetUserPrivilegeLevel", {}, long{PrivLevel_3High}, long{PrivLevel_OSAdmin}},
    {L"GetMinPrivilegeLevelForRID", {1000L}, long{PrivLevel_1}, long{PrivLevel_3Low}},
    {L"GetMinPrivilegeLevelForPID", {1000L}, long{PrivLevel_1}, long{PrivLevel_3Low}},
    {L"CheckUserPrivilegeLevel", {1000L, false}, true, false},
    {L"GetSidsForPrivilegeLevels", {L"", L"", L""}, true, false},
};

// Stands for the system's XML parsers while it lives, and makes none: the first `count` versions, the newest first.
class NoParser final : public IClassFactory {
  public:
    explicit NoParser(HRESULT status, size_t count = 2) : mStatus(status) {
        constexpr const wchar_t* kVersions[] = {L"Msxml2.DOMDocument.6.0", L"Msxml2.DOMDocument.3.0"};
        for (size_t i = 0; i < count; ++i) {
            CLSID clsid;
            EXPECT_EQ(CLSIDFromProgID(kVersions[i], &clsid), S_OK);
            EXPECT_EQ(CoRegisterClassObject(clsid, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &mCookies[i]), S_OK);
        }
    }
    ~NoParser() {
        for (const DWORD cookie : mCookies) {
            CoRevokeClassObject(cookie);
        }
    }
    NoParser(const NoParser&) = delete;
    NoParser& operator=(const NoParser&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IClassFactory;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID, void** object) override {
        *object = nullptr;
        return mStatus;
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

  private:
    HRESULT mStatus;
    std::array<DWORD, 2> mCookies{};
};

class SecurityFault : public testing::Test {
  protected:
    SecurityFault() {
        mSecurity = CreateByName(L"V5Strings.NimboSecurity");
        const std::wstring login = mFile.WindowsLogin() + L";Connect Timeout=0";
        const CallResult setUp =
            Call(mSecurity.Get(), L"Setup", {kSite, L"EN", login.c_str(), L"", L"Component tests", true});
        EXPECT_TRUE(static_cast<bool>(setUp.value));
        Call(mSecurity.Get(), L"EnableSecurity");
        for (const Change& change : kChanges) {
            EXPECT_TRUE(static_cast<bool>(Call(mSecurity.Get(), change.member, change.first).value)) << change.member;
        }
    }

    // The answer of a member that must not raise.
    _variant_t Answer(const wchar_t* member, const std::vector<_variant_t>& arguments = {}) {
        const CallResult result = Call(mSecurity.Get(), member, arguments);
        EXPECT_EQ(result.status, S_OK) << std::wstring(member);
        return result.value;
    }

    void ExpectStoredAnswers() {
        EXPECT_EQ(static_cast<long>(Get(mSecurity.Get(), L"SecurityEnabledStatus")), Enabled_Configured);
        for (const Default& row : kDefaults) {
            EXPECT_EQ(Answer(row.member, row.arguments), row.stored) << std::wstring(row.member);
        }
    }

    // Each member answers its default and says why; `reason`, when not empty, is all that is said.
    void ExpectDefaults(EventRecorder& events, const std::wstring& reason = L"") {
        const auto expectMessage = [&](const wchar_t* member) {
            EXPECT_FALSE(events.messages.empty()) << std::wstring(member);
            for (const RecordedMessage& message : events.messages) {
                EXPECT_TRUE(reason.empty() || message == (RecordedMessage{4, reason}))
                    << member << L": " << message.text;
            }
            events.messages.clear();
        };
        EXPECT_EQ(static_cast<long>(Get(mSecurity.Get(), L"SecurityEnabledStatus")), Enabled_Other);
        expectMessage(L"SecurityEnabledStatus");
        for (const Default& row : kDefaults) {
            EXPECT_EQ(Answer(row.member, row.arguments), row.unreadable) << std::wstring(row.member);
            expectMessage(row.member);
        }
        for (const Change& change : kChanges) {
            EXPECT_FALSE(static_cast<bool>(Answer(change.member, change.second))) << std::wstring(change.member);
            expectMessage(change.member);
        }
        Answer(L"DisableSecurity");
        expectMessage(L"DisableSecurity");
        _variant_t list(L"an old list");
        Answer(L"GetSidsForPrivilegeLevels", {L"", L"", ByReference(list)});
        EXPECT_EQ(Text(list), L"");
        events.messages.clear();
    }

    DatabaseFile mFile;
    ComPtr<IDispatch> mSecurity;
};

TEST_F(SecurityFault, WhatCannotBeReadGivesTheDefaults) {
    ExpectStoredAnswers();
    OtherProgram other(mFile.Path());
    ASSERT_EQ(other.Execute("BEGIN EXCLUSIVE"), SQLITE_OK);
    EventRecorder events(mSecurity.Get(), DIID___NimboSecurity);
    ExpectDefaults(events);
    ASSERT_EQ(other.Execute("ROLLBACK"), SQLITE_OK);
    ExpectStoredAnswers();
}

TEST_F(SecurityFault, WithoutAnXmlParserTheDefaultsHoldAndNothingIsStored) {
    const std::vector<std::wstring> before = Stored(mFile);
    EventRecorder events(mSecurity.Get(), DIID___NimboSecurity);
    const std::pair<HRESULT, std::wstring> reasons[] = {
        {E_FAIL, std::to_wstring(E_FAIL) + L", " + _com_error(E_FAIL).ErrorMessage()},
        {E_OUTOFMEMORY, L"7, Out of memory"},
    };
    for (const auto& [status, reason] : reasons) {
        const NoParser none(status);
        ExpectDefaults(events, reason);
    }
    {
        const NoParser onlyTheOlder(E_FAIL, 1);
        ExpectStoredAnswers();
    }
    EXPECT_EQ(Stored(mFile), before);
    ExpectStoredAnswers();
    for (const Change& change : kChanges) {
        EXPECT_TRUE(static_cast<bool>(Answer(change.member, change.second))) << std::wstring(change.member);
    }
    EXPECT_TRUE(events.messages.empty());
}

// Each kind of record refused in turn, by the database itself.
TEST_F(SecurityFault, AChangeStandsExactlyWhenItsDetailedRecordDoes) {
    const struct {
        const wchar_t* member;
        size_t document;      // by its place in kDocuments
        std::wstring record;  // how the detailed one begins
        std::string tag;
        std::vector<_variant_t> arguments[2];  // taken in turn
    } changes[] = {
        {kChanges[0].member, 3, L"RID ", "STR-0139", {kChanges[0].second, kChanges[0].first}},
        {kChanges[1].member, 2, L"Manual alarm", "STR-0117", {kChanges[1].second, kChanges[1].first}},
        {kChanges[2].member, 1, L"Changed L", "STR-0128", {kChanges[2].second, kChanges[2].first}},
        {L"DisableSecurity", 0, L"Vantor security disabled", "STR-0105", {}},
    };
    OtherProgram other(mFile.Path());
    EventRecorder events(mSecurity.Get(), DIID___NimboSecurity);
    size_t turn[std::size(changes)] = {};
    for (const std::string refused : {"STR-0139", "STR-0117", "STR-0128", "STR-0144", "STR-0105"}) {
        const std::string trigger = "CREATE TRIGGER refuse BEFORE INSERT ON event_log WHEN NEW.tag = '" + refused +
                                    "' BEGIN SELECT RAISE(ABORT, 'refused'); END";
        ASSERT_EQ(other.Execute(trigger.c_str()), SQLITE_OK);
        for (size_t i = 0; i < std::size(changes); ++i) {
            const auto& change = changes[i];
            const std::vector<std::wstring> before = Stored(mFile);
            events.messages.clear();
            const _variant_t answer = Answer(change.member, change.arguments[turn[i] % 2]);
            const std::vector<std::wstring> after = Stored(mFile);
            const bool isChanged = after[change.document] != before[change.document];
            const auto records = [&](const std::vector<std::wstring>& stored) {
                return std::count_if(stored.begin() + kDocuments, stored.end(),
                                     [&](const std::wstring& text) { return text.starts_with(change.record); });
            };
            EXPECT_EQ(isChanged, records(after) != records(before)) << refused;
            EXPECT_EQ(isChanged, refused != change.tag) << change.tag;
            EXPECT_TRUE(V_VT(&answer) != VT_BOOL || static_cast<bool>(answer) == isChanged) << change.tag;
            const bool isMissing = refused == change.tag || (refused == "STR-0144" && change.tag == "STR-0128");
            EXPECT_EQ(events.messages.empty(), !isMissing) << refused << " " << change.tag;
            turn[i] += isChanged ? 1 : 0;
        }
        ASSERT_EQ(other.Execute("DROP TRIGGER refuse"), SQLITE_OK);
        Answer(L"EnableSecurity");
    }
}

TEST(SecurityFaultSql, NoFailureMakesASqlUserAnAdministrator) {
    const DatabaseFile file;
    for (const std::wstring& login : {file.SqlLogin(L"jsmith") + L";Connect Timeout=0",
                                      std::wstring(L"Data Source=Z:\\no\\such\\folder\\file;User ID=jsmith")}) {
        const auto security = CreateByName(L"V5Strings.NimboSecurity");
        Call(security.Get(), L"Setup", {kSite, L"EN", login.c_str(), L"", L"Component tests", true});
        OtherProgram other(file.Path());
        for (const char* lock : {"SELECT 1", "BEGIN EXCLUSIVE"}) {
            other.Execute(lock);
            EXPECT_EQ(static_cast<long>(Call(security.Get(), L"GetUserPrivilegeLevel").value), PrivLevel_None);
            for (const long restriction : {398L, 250L, 251L}) {
                const CallResult check = Call(security.Get(), L"CheckUserPrivilegeLevel", {restriction, false});
                EXPECT_FALSE(static_cast<bool>(check.value)) << restriction;
            }
        }
        Call(security.Get(), L"Teardown");
    }
}

}  // namespace

}  // namespace v5::test
