// NimboSecurity while another program holds the lock on the site's database, and while there is no XML parser.
#include <windows.h>
#include <gtest/gtest.h>

#include <comutil.h>

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

// Everything that the site has stored: its documents, and the texts of the event log.
std::vector<std::wstring> Stored(const DatabaseFile& file) {
    return OtherProgram(file.Path())
        .Rows("SELECT key || value FROM lookup UNION ALL SELECT text FROM event_log ORDER BY 1");
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

// Without its record, which the database itself refuses, no change stands.
TEST_F(SecurityFault, WithoutRecordsNothingIsChanged) {
    OtherProgram other(mFile.Path());
    ASSERT_EQ(other.Execute("CREATE TRIGGER refuse BEFORE INSERT ON event_log BEGIN SELECT RAISE(ABORT, 'no'); END"),
              SQLITE_OK);
    const std::vector<std::wstring> before = Stored(mFile);
    EventRecorder events(mSecurity.Get(), DIID___NimboSecurity);
    for (const Change& change : kChanges) {
        EXPECT_FALSE(static_cast<bool>(Answer(change.member, change.second))) << std::wstring(change.member);
    }
    Answer(L"DisableSecurity");
    EXPECT_GE(events.messages.size(), std::size(kChanges) + 1);
    EXPECT_EQ(Stored(mFile), before);
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
