// The devkit's V5DBIL through its registration, early-bound, on real database files.
#include <windows.h>
#include <gtest/gtest.h>

#include <comutil.h>

#include <string>

#include "V5DBIL.h"
#include "component/Client.h"
#include "component/DatabaseFile.h"
#include "component/EventRecorder.h"

namespace v5::test {

namespace {

constexpr wchar_t kSite[] = L"S1";

_bstr_t Bstr(std::wstring_view text) {
    return {SysAllocStringLen(text.data(), static_cast<UINT>(text.size())), false};
}

class DevkitDatabase : public testing::Test {
  protected:
    static ComPtr<IDatabaseInterface> Create() {
        ComPtr<IDatabaseInterface> db;
        EXPECT_EQ(CoCreateInstance(CLSID_DatabaseInterface, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&db)), S_OK);
        return db;
    }

    // Initialises and opens a site; whether both succeeded.
    static bool Open(IDatabaseInterface* db, const std::wstring& config, const std::wstring& alarms = L"",
                     const wchar_t* site = kSite) {
        VARIANT_BOOL done = VARIANT_FALSE;
        const _bstr_t none(L"");
        EXPECT_EQ(db->Initialise(_bstr_t(site), _bstr_t(L"EN"), Bstr(config), Bstr(alarms), none, none, none,
                                 VARIANT_TRUE, 0, &done),
                  S_OK);
        if (done == VARIANT_TRUE) {
            EXPECT_EQ(db->OpenSite(_bstr_t(site), -1, -1, -1, 0, 0, 0, &done), S_OK);
        }
        return done == VARIANT_TRUE;
    }

    static bool Write(IDatabaseInterface* db, std::wstring_view key, std::wstring_view value, long level = 1,
                      const wchar_t* table = L"V5LOOKUP", const wchar_t* site = kSite) {
        VARIANT_BOOL done = VARIANT_FALSE;
        EXPECT_EQ(db->WriteLookup(_bstr_t(site), level, _bstr_t(table), Bstr(key), Bstr(value), &done), S_OK);
        return done == VARIANT_TRUE;
    }

    static std::wstring Read(IDatabaseInterface* db, std::wstring_view key, long level = 1,
                             const wchar_t* table = L"V5LOOKUP", const wchar_t* site = kSite) {
        BSTR value = nullptr;
        EXPECT_EQ(db->ReadLookup(_bstr_t(site), level, _bstr_t(table), Bstr(key), &value), S_OK);
        return Taken(value);
    }

    static bool Log(IDatabaseInterface* db, std::wstring_view text, double time = 41703.5) {
        VARIANT_BOOL done = VARIANT_FALSE;
        EXPECT_EQ(db->WriteEventLog(_bstr_t(kSite), time, Bstr(text), _bstr_t(L"SECURITY"), 2, _bstr_t(L""),
                                    _bstr_t(L"STR-0105"), &done),
                  S_OK);
        return done == VARIANT_TRUE;
    }

    static _variant_t ReadLog(IDatabaseInterface* db, long newest = 0) {
        _variant_t records;
        EXPECT_EQ(db->ReadEventLog(_bstr_t(kSite), newest, &records), S_OK);
        return records;
    }

    static _variant_t Field(const _variant_t& records, LONG row, LONG column) {
        LONG position[] = {row, column};
        _variant_t field;
        EXPECT_EQ(SafeArrayGetElement(V_ARRAY(&records), position, &field), S_OK) << row << "," << column;
        return field;
    }

    DatabaseFile mFile;
    DatabaseFile mAlarms;
};

TEST_F(DevkitDatabase, RowsKeepEveryTextForTheNextProgram) {
    using namespace std::string_literals;
    const std::wstring texts[] = {
        L"",
        L"PHJvb3Q+PC9yb290Pg==",
        L"it's \"quoted\"; DROP TABLE lookup; -- ?1 :a",
        L"\u00c4\u00df\u0436\u6f22\U0001F512 \xD800 lone",
        L"before\0after"s,
        L"line\r\nbreak\t",
        std::wstring(1 << 20, L'x'),
    };
    const auto writer = Create();
    ASSERT_TRUE(Open(writer.Get(), mFile.WindowsLogin()));
    for (const auto& text : texts) {
        EXPECT_TRUE(Write(writer.Get(), L"key of " + text, L"replaced"));
        EXPECT_TRUE(Write(writer.Get(), L"key of " + text, text));
    }
    const auto reader = Create();
    ASSERT_TRUE(Open(reader.Get(), mFile.WindowsLogin()));
    for (const auto& text : texts) {
        EXPECT_EQ(Read(reader.Get(), L"key of " + text), text);
    }
    EXPECT_EQ(Read(reader.Get(), L"no such key"), L"");
}

TEST_F(DevkitDatabase, EventLogKeepsWritersInOrder) {
    const auto first = Create(), second = Create();
    ASSERT_TRUE(Open(first.Get(), mFile.WindowsLogin(), mAlarms.WindowsLogin()));
    ASSERT_TRUE(Open(second.Get(), mFile.WindowsLogin(), mAlarms.WindowsLogin()));
    EXPECT_EQ(V_VT(&ReadLog(first.Get()).GetVARIANT()), VT_EMPTY);
    const double time = 41703.588298611111;
    EXPECT_TRUE(Log(first.Get(), L"one", time));
    EXPECT_TRUE(Log(second.Get(), L"two 'quoted' \"text\""));
    EXPECT_TRUE(Log(first.Get(), L"three"));

    const _variant_t all = ReadLog(second.Get());
    ASSERT_EQ(V_VT(&all), VT_ARRAY | VT_VARIANT);
    LONG last = -1;
    EXPECT_EQ(SafeArrayGetUBound(V_ARRAY(&all), 1, &last), S_OK);
    EXPECT_EQ(last, 2);
    EXPECT_EQ(static_cast<double>(Field(all, 0, EventLogColumn_Time)), time);
    EXPECT_EQ(V_VT(&Field(all, 0, EventLogColumn_Time).GetVARIANT()), VT_DATE);
    EXPECT_EQ(Text(Field(all, 0, EventLogColumn_Text)), L"one");
    EXPECT_EQ(Text(Field(all, 1, EventLogColumn_Text)), L"two 'quoted' \"text\"");
    EXPECT_EQ(Text(Field(all, 2, EventLogColumn_Text)), L"three");
    EXPECT_EQ(Text(Field(all, 2, EventLogColumn_Category)), L"SECURITY");
    EXPECT_EQ(static_cast<long>(Field(all, 2, EventLogColumn_Kind)), 2);
    EXPECT_EQ(Text(Field(all, 2, EventLogColumn_Source)), L"");
    EXPECT_EQ(Text(Field(all, 2, EventLogColumn_Tag)), L"STR-0105");
    EXPECT_LT(static_cast<long>(Field(all, 1, EventLogColumn_Number)),
              static_cast<long>(Field(all, 2, EventLogColumn_Number)));

    const _variant_t newest = ReadLog(first.Get(), 2);
    EXPECT_EQ(Text(Field(newest, 0, EventLogColumn_Text)), L"two 'quoted' \"text\"");
    EXPECT_EQ(Text(Field(newest, 1, EventLogColumn_Text)), L"three");
}

TEST_F(DevkitDatabase, ConnectionStringsDecideWhoIsLoggedOn) {
    const struct {
        const wchar_t* settings;  // after the data source
        bool windows;
        bool opens;
        const wchar_t* user;
    } cases[] = {
        {L"Integrated Security=SSPI", true, true, L""},
        {L" integrated security = true ; Provider=SQLOLEDB", true, true, L""},
        {L"Trusted_Connection=yes;User ID=ignored", true, true, L""},
        {L"User ID=jsmith;Password=p", false, true, L"jsmith"},
        {L"UID='O''Neil", false, true, L"O"},
        {L"UID=\"a;b=c\";Integrated Security=false", false, true, L"a;b=c"},
        {L"User ID=;Password=p", false, false, L""},
        {L"", false, false, L""},
    };
    for (const auto& c : cases) {
        const std::wstring text = L"Data Source=" + mFile.Path() + L";" + c.settings;
        const auto db = Create();
        VARIANT_BOOL windows = VARIANT_FALSE;
        EXPECT_EQ(db->UsesWindowsAuthentication(Bstr(text), &windows), S_OK);
        EXPECT_EQ(windows == VARIANT_TRUE, c.windows) << std::wstring(c.settings);
        ASSERT_EQ(Open(db.Get(), text), c.opens) << std::wstring(c.settings);
        if (c.opens) {
            ComPtr<ISiteInfo> info;
            BSTR user = nullptr, connection = nullptr;
            ASSERT_EQ(db->get_SiteInfo(_bstr_t(kSite), &info), S_OK);
            EXPECT_EQ(info->get_CurrentUserName(&user), S_OK);
            EXPECT_EQ(info->get_ConnectionString(&connection), S_OK);
            EXPECT_EQ(Taken(user), c.user);
            EXPECT_EQ(Taken(connection), text);
        }
    }
}

TEST_F(DevkitDatabase, ServerCanRefuseSqlLogins) {
    const auto db = Create();
    ASSERT_TRUE(Open(db.Get(), mFile.WindowsLogin()));
    const auto allows = [&] {
        ComPtr<ISiteInfo> info;
        VARIANT_BOOL allowed = VARIANT_FALSE;
        EXPECT_EQ(db->get_SiteInfo(_bstr_t(kSite), &info), S_OK);
        EXPECT_EQ(info->get_AllowsSqlLogins(&allowed), S_OK);
        return allowed == VARIANT_TRUE;
    };
    EXPECT_TRUE(allows());
    ASSERT_TRUE(Write(db.Get(), L"AllowSqlLogins", L"False", 0, L"SERVER"));
    EXPECT_FALSE(allows());
    EXPECT_FALSE(Open(Create().Get(), mFile.SqlLogin(L"jsmith")));
    EXPECT_TRUE(Open(Create().Get(), mFile.WindowsLogin()));
}

TEST_F(DevkitDatabase, FailuresAreToldByEventAndByResult) {
    const std::wstring missing = mFile.Path() + L".missing\\site.db";
    const auto db = Create();
    EventRecorder events(db.Get(), __uuidof(_DatabaseInterfaceEvents));
    const auto told = [&] {
        std::wstring text = events.messages.empty() ? L"nothing" : events.messages.back().text;
        events.messages.clear();
        return text;
    };
    EXPECT_FALSE(Open(db.Get(), L"Data Source=" + missing + L";Integrated Security=SSPI"));
    EXPECT_EQ(told(), L"DBIL: cannot open the site: cannot log on to '" + missing + L"': unable to open database file");

    BSTR value = nullptr;
    const wchar_t closed[] = L"DBIL: cannot read a lookup row: the site is not open";
    EXPECT_EQ(db->ReadLookup(_bstr_t(kSite), 1, _bstr_t(L"T"), _bstr_t(L"k"), &value), E_FAIL);
    EXPECT_EQ(told(), closed);
    EXPECT_FALSE(Log(db.Get(), L"lost"));
    EXPECT_EQ(told(), L"DBIL: cannot write an event-log record: the site is not open");
    ComPtr<ISiteInfo> info;
    EXPECT_EQ(db->get_SiteInfo(_bstr_t(L"S9"), &info), E_FAIL);
    EXPECT_EQ(told(), L"DBIL: cannot tell about the site: site 'S9' is not initialised");
}

}  // namespace

}  // namespace v5::test
