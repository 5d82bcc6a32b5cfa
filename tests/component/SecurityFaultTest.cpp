// NimboSecurity where the machine lets it down: another program holds the lock on the site's database, the database
// takes no records, or there is no XML parser. What each failure may change is tested in unit/.
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
    virtual ~NoParser() {
        for (const DWORD cookie : mCookies) {
            CoRevokeClassObject(cookie);
        }
    }
    STDMETHODIMP QueryInterface(REFIID, void** object) override {
        *object = this;
        return S_OK;
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

ComPtr<IDispatch> Connected(const std::wstring& login) {
    ComPtr<IDispatch> security = CreateByName(L"V5Strings.NimboSecurity");
    Call(security.Get(), L"Setup",
         {L"S1", L"EN", (login + L";Connect Timeout=0").c_str(), L"", L"Component tests", true});
    return security;
}

class SecurityFault : public testing::Test {
  protected:
    SecurityFault() {
        Call(mSecurity.Get(), L"EnableSecurity");
        EXPECT_EQ(Changes(L"51", L"123", L"S-1-1-0"), L"111");
        mBefore = Stored();
    }

    // Everything that the site has stored: its documents, and the texts of the event log.
    std::vector<std::wstring> Stored() const {
        return OtherProgram(mFile.Path())
            .Rows("SELECT key || value FROM lookup UNION ALL SELECT text FROM event_log ORDER BY 1");
    }
    // What a member answers, none may raise, and "!" when the client is told something. The lists make the user, an
    // administrator, a member of level 3.
    std::wstring Answer(const wchar_t* member, const std::vector<_variant_t>& arguments = {}) {
        const size_t told = mEvents.messages.size();
        const CallResult result = Call(mSecurity.Get(), member, arguments);
        EXPECT_EQ(result.status, S_OK) << member;
        const wchar_t* const mark = mEvents.messages.size() > told ? L"!" : L"";
        const bool isBoolean = V_VT(&result.value) == VT_BOOL;
        return (V_VT(&result.value) == VT_EMPTY ? L""
                : isBoolean                     ? std::to_wstring(static_cast<bool>(result.value))
                                                : std::to_wstring(static_cast<long>(result.value))) +
               mark;
    }
    std::wstring Changes(const wchar_t* level, const wchar_t* password, const wchar_t* list) {
        return Answer(L"SetMinPrivilegeLevelForRID", {1000L, level}) + Answer(L"SetManualAlarmResetPwd", {password}) +
               Answer(L"SetSidsForAllPrivilegeLevels", {L"", L"", list, false});
    }
    std::wstring Answers() {
        _variant_t list(L"an old list");
        const std::wstring read = Answer(L"GetSidsForPrivilegeLevels", {L"", L"", ByReference(list)});
        const size_t told = mEvents.messages.size();
        const std::wstring status = std::to_wstring(static_cast<long>(Get(mSecurity.Get(), L"SecurityEnabledStatus")));
        return status + (mEvents.messages.size() > told ? L"! " : L" ") + Answer(L"GetUserPrivilegeLevel") + L" " +
               Answer(L"GetMinPrivilegeLevelForRID", {1000L}) + L" " + Answer(L"GetMinPrivilegeLevelForPID", {1000L}) +
               L" " + Answer(L"CheckUserPrivilegeLevel", {1000L, false}) + L" " + read +
               (Text(list).empty() ? L"" : L" list");
    }
    void ExpectDefaults() {
        EXPECT_EQ(Answers(), L"0! 53! 54! 54! 0! 0!");
        EXPECT_EQ(Changes(L"52", L"456", L"S-1-5-18") + Answer(L"DisableSecurity"), L"0!0!0!!");
    }
    void ExpectStored() {
        EXPECT_EQ(Answers(), L"2 55 51 51 1 1 list");
        EXPECT_EQ(Stored(), mBefore);
    }

    DatabaseFile mFile;
    ComPtr<IDispatch> mSecurity = Connected(mFile.WindowsLogin());
    EventRecorder mEvents{mSecurity.Get(), DIID___NimboSecurity};
    std::vector<std::wstring> mBefore;
};

}  // namespace

TEST_F(SecurityFault, WhatCannotBeReadGivesTheDefaults) {
    ExpectStored();
    OtherProgram other(mFile.Path());
    ASSERT_EQ(other.Execute("BEGIN EXCLUSIVE"), SQLITE_OK);
    ExpectDefaults();
    ASSERT_EQ(other.Execute("ROLLBACK"), SQLITE_OK);
    ExpectStored();
}

TEST_F(SecurityFault, WithoutAnXmlParserTheDefaultsHoldAndNothingIsStored) {
    const std::pair<HRESULT, std::wstring> reasons[] = {
        {E_FAIL, std::to_wstring(E_FAIL) + L", " + _com_error(E_FAIL).ErrorMessage()},
        {E_OUTOFMEMORY, L"7, Out of memory"},
    };
    for (const auto& [status, reason] : reasons) {
        const NoParser none(status);
        mEvents.messages.clear();
        ExpectDefaults();
        for (const RecordedMessage& message : mEvents.messages) {
            EXPECT_EQ(message, (RecordedMessage{4, reason}));
        }
    }
    {
        const NoParser onlyTheOlder(E_FAIL, 1);
        ExpectStored();
    }
    EXPECT_EQ(Changes(L"52", L"456", L"S-1-5-18"), L"111");
}

// Without its record, which the database itself refuses, no change stands.
TEST_F(SecurityFault, WithoutRecordsNothingIsChanged) {
    ASSERT_EQ(OtherProgram(mFile.Path())
                  .Execute("CREATE TRIGGER refuse BEFORE INSERT ON event_log BEGIN SELECT RAISE(ABORT, 'no'); END"),
              SQLITE_OK);
    EXPECT_EQ(Changes(L"52", L"456", L"S-1-5-18") + Answer(L"DisableSecurity"), L"0!0!0!!");
    ExpectStored();
}

TEST(SecurityFaultSql, NoFailureMakesASqlUserAnAdministrator) {
    const DatabaseFile file;
    for (const std::wstring& login :
         {file.SqlLogin(L"jsmith"), std::wstring(L"Data Source=Z:\\no\\such\\folder\\file;User ID=jsmith")}) {
        const ComPtr<IDispatch> security = Connected(login);
        OtherProgram other(file.Path());
        for (const char* lock : {"SELECT 1", "BEGIN EXCLUSIVE"}) {
            other.Execute(lock);
            EXPECT_EQ(Call(security.Get(), L"GetUserPrivilegeLevel").value, _variant_t(long{PrivLevel_None}));
            for (const long restriction : {398L, 250L, 251L}) {
                EXPECT_EQ(Call(security.Get(), L"CheckUserPrivilegeLevel", {restriction, false}).value,
                          _variant_t(false));
            }
        }
        Call(security.Get(), L"Teardown");
    }
}

}  // namespace v5::test
