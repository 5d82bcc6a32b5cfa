// The devkit's V5DBIL through its registration, on real database files.
#include <windows.h>
#include <gtest/gtest.h>

#include <string>

#include "V5DBIL.h"
#include "component/Client.h"
#include "component/DatabaseFile.h"
#include "component/EventRecorder.h"

namespace v5::test {

namespace {

constexpr wchar_t kSite[] = L"S1";

// The database as a program has it open.
struct Database {
    ComPtr<IDispatch> object = CreateByName(L"V5DBIL.DatabaseInterface");

    _variant_t Do(const wchar_t* member, const std::vector<_variant_t>& arguments) const {
        const CallResult result = Call(object.Get(), member, arguments);
        EXPECT_EQ(result.status, S_OK) << member;
        return result.value;
    }
    bool Open(const std::wstring& config, const std::wstring& alarms = L"") const {
        return Do(L"Initialise", {kSite, L"EN", config.c_str(), alarms.c_str(), L"", L"", L"", true, 0L}) &&
               Do(L"OpenSite", {kSite, -1L, -1L, -1L, 0L, 0L, 0L});
    }
    bool Write(const _variant_t& key, const _variant_t& value, long level = 1,
               const wchar_t* table = L"V5LOOKUP") const {
        return Do(L"WriteLookup", {kSite, level, table, key, value});
    }
    _variant_t Read(const _variant_t& key) const { return Do(L"ReadLookup", {kSite, 1L, L"V5LOOKUP", key}); }
    bool Log(const wchar_t* text, double time = 41703.5) const {
        return Do(L"WriteEventLog", {kSite, _variant_t(time, VT_DATE), text, L"SECURITY", 2L, L"", L"STR-0105"});
    }
    // The records, the fields of each behind one another.
    std::wstring Records(long newest = 0) const {
        const _variant_t records = Do(L"ReadEventLog", {kSite, newest});
        std::wstring all;
        LONG last = -1;
        if (V_VT(&records) == (VT_ARRAY | VT_VARIANT)) {
            SafeArrayGetUBound(V_ARRAY(&records), 1, &last);
        }
        for (LONG position[] = {0, 0}; position[0] <= last; ++position[0]) {
            for (const LONG column :
                 {EventLogColumn_Number, EventLogColumn_Time, EventLogColumn_Text, EventLogColumn_Category,
                  EventLogColumn_Kind, EventLogColumn_Source, EventLogColumn_Tag}) {
                _variant_t field;
                position[1] = column;
                EXPECT_EQ(SafeArrayGetElement(V_ARRAY(&records), position, &field), S_OK) << column;
                EXPECT_EQ(V_VT(&field) == VT_DATE, column == EventLogColumn_Time);
                all += Text(V_VT(&field) == VT_DATE ? _variant_t(std::to_wstring(V_DATE(&field)).c_str())
                                                    : _variant_t(_bstr_t(field))) +
                       L"|";
            }
            all += L"\n";
        }
        return all;
    }
    ComPtr<IDispatch> SiteInfo() const {
        const CallResult info = Invoke(object.Get(), IdOf(object.Get(), L"SiteInfo"), DISPATCH_PROPERTYGET, {kSite});
        return V_DISPATCH(&info.value);
    }
};

class DevkitDatabase : public testing::Test {
  protected:
    DatabaseFile mFile, mAlarms;
};

TEST_F(DevkitDatabase, RowsKeepEveryTextForTheNextProgram) {
    const std::wstring texts[] = {L"",
                                  L"it's \"quoted\"; DROP TABLE lookup; -- ?1 :a",
                                  L"\u00c4\u00df\u0436\u6f22\U0001F512 \xD800 lone",
                                  std::wstring(L"before\0after", 12),
                                  L"line\r\nbreak\t",
                                  std::wstring(1 << 20, L'x')};
    const auto variant = [](const std::wstring& text) {
        return _variant_t(_bstr_t(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())), false));
    };
    const Database writer, reader;
    ASSERT_TRUE(writer.Open(mFile.WindowsLogin()) && reader.Open(mFile.WindowsLogin()));
    for (const std::wstring& text : texts) {
        EXPECT_TRUE(writer.Write(variant(L"key of " + text), L"replaced"));
        EXPECT_TRUE(writer.Write(variant(L"key of " + text), variant(text)));
        EXPECT_EQ(Text(reader.Read(variant(L"key of " + text))), text);
    }
    EXPECT_EQ(Text(reader.Read(L"no such key")), L"");
}

TEST_F(DevkitDatabase, EventLogKeepsWritersInOrder) {
    const Database first, second;
    ASSERT_TRUE(first.Open(mFile.WindowsLogin(), mAlarms.WindowsLogin()));
    ASSERT_TRUE(second.Open(mFile.WindowsLogin(), mAlarms.WindowsLogin()));
    EXPECT_EQ(first.Records(), L"");
    EXPECT_TRUE(first.Log(L"one", 41703.25));
    EXPECT_TRUE(second.Log(L"two 'quoted' \"text\""));
    EXPECT_TRUE(first.Log(L"three"));
    const std::wstring others =
        L"2|41703.500000|two 'quoted' \"text\"|SECURITY|2||STR-0105|\n"
        L"3|41703.500000|three|SECURITY|2||STR-0105|\n";
    EXPECT_EQ(second.Records(), L"1|41703.250000|one|SECURITY|2||STR-0105|\n" + others);
    EXPECT_EQ(first.Records(2), others);
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
        SCOPED_TRACE(testing::PrintToString(c.settings));
        const std::wstring text = L"Data Source=" + mFile.Path() + L";" + c.settings;
        const Database db;
        EXPECT_EQ(static_cast<bool>(db.Do(L"UsesWindowsAuthentication", {text.c_str()})), c.windows);
        ASSERT_EQ(db.Open(text), c.opens);
        if (c.opens) {
            EXPECT_EQ(Text(Get(db.SiteInfo().Get(), L"CurrentUserName")), c.user);
            EXPECT_EQ(Text(Get(db.SiteInfo().Get(), L"ConnectionString")), text);
        }
    }
}

TEST_F(DevkitDatabase, ServerCanRefuseSqlLogins) {
    const Database db;
    ASSERT_TRUE(db.Open(mFile.WindowsLogin()));
    EXPECT_TRUE(static_cast<bool>(Get(db.SiteInfo().Get(), L"AllowsSqlLogins")));
    ASSERT_TRUE(db.Write(L"AllowSqlLogins", L"False", 0, L"SERVER"));
    EXPECT_FALSE(static_cast<bool>(Get(db.SiteInfo().Get(), L"AllowsSqlLogins")));
    EXPECT_FALSE(Database().Open(mFile.SqlLogin(L"jsmith")));
    EXPECT_TRUE(Database().Open(mFile.WindowsLogin()));
}

TEST_F(DevkitDatabase, FailuresAreToldByEventAndByResult) {
    const std::wstring missing = mFile.Path() + L".missing\\site.db";
    const Database db;
    const EventRecorder events(db.object.Get(), __uuidof(_DatabaseInterfaceEvents));
    EXPECT_FALSE(db.Open(L"Data Source=" + missing + L";Integrated Security=SSPI"));
    EXPECT_EQ(Call(db.object.Get(), L"ReadLookup", {kSite, 1L, L"T", L"k"}).errorNumber, E_FAIL);
    EXPECT_FALSE(db.Log(L"lost"));
    std::wstring told;
    for (const RecordedMessage& message : events.messages) {
        told += message.text + L"\n";
    }
    EXPECT_EQ(told, L"DBIL: cannot open the site: cannot log on to '" + missing +
                        L"': unable to open database file\nDBIL: cannot read a lookup row: the site is not open\n"
                        L"DBIL: cannot write an event-log record: the site is not open\n");
}

}  // namespace

}  // namespace v5::test
