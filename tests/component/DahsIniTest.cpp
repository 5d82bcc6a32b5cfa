// The site configuration through the registered DLL, as late-bound and early-bound clients use it.
#include <string>
#include <vector>

#include "V5Strings.h"
#include "component/Client.h"
#include "component/SiteFolder.h"

namespace v5::test {

using namespace V5Strings;  // the published enumerations

namespace {

constexpr wchar_t kMain[] = L"V5Strings.DahsIniMain";

std::wstring LocalName(COMPUTER_NAME_FORMAT format) {
    wchar_t name[256] = L"";
    DWORD size = 256;
    GetComputerNameExW(format, name, &size);
    return name;
}

std::string Section(int number, const std::string& site, const std::string& lines = "") {
    return "[Dahs" + std::to_string(number) + "]\r\n" + lines + "\r\nSiteID=" + site +
           "\r\nDahsComputerName=" + Narrow(LocalName(ComputerNameNetBIOS)) +
           "\r\nVantorDir=$folder$\\V\r\nBackupDir=B\r\nSQLAlarms=Provider=p;a\r\nSQLConfig=c\r\n"
           "SQLData=Vantor5Data\r\nSQLDataShortTerm=s\r\nSQLRealtime=r\r\n";
}

std::vector<std::wstring> Texts(const _variant_t& value) {
    std::vector<std::wstring> texts;
    EXPECT_EQ(V_VT(&value), VT_ARRAY | VT_BSTR);
    LONG low = 0, high = -1;
    SafeArrayGetLBound(V_ARRAY(&value), 1, &low);
    SafeArrayGetUBound(V_ARRAY(&value), 1, &high);
    EXPECT_EQ(low, 0);
    for (LONG i = low; i <= high; ++i) {
        BSTR text = nullptr;
        SafeArrayGetElement(V_ARRAY(&value), &i, &text);
        texts.push_back(Taken(text));
    }
    return texts;
}

// Whether a member that never raises answers True.
bool Truth(const CallResult& result) {
    EXPECT_EQ(result.status, S_OK);
    return result.value == _variant_t(true);
}

ComPtr<IDispatch> Object(const _variant_t& value) {
    EXPECT_EQ(V_VT(&value), VT_DISPATCH);
    return V_VT(&value) == VT_DISPATCH ? ComPtr<IDispatch>(V_DISPATCH(&value)) : nullptr;
}

// Compares properties of an object with what they are to be.
void Expect(IDispatch* object, const std::vector<std::pair<std::wstring, _variant_t>>& properties) {
    for (const auto& [name, value] : properties) {
        const _variant_t is = Get(object, name.c_str());
        EXPECT_TRUE(is == value) << Narrow(name + L" is " + Text(is));
    }
}

// A new object that has read the site file.
ComPtr<IDispatch> ReadSite() {
    ComPtr<IDispatch> main = CreateByName(kMain);
    EXPECT_TRUE(Truth(Call(main.Get(), L"ReadVantorINI", {0L})));
    return main;
}

}  // namespace

TEST(DahsIni, NothingIsKnownBeforeReading) {
    const ComPtr<IDispatch> main = CreateByName(kMain);
    EXPECT_EQ(Get(main.Get(), L"Problems").vt, VT_EMPTY);
    EXPECT_FALSE(Truth(Call(main.Get(), L"ChooseDahs", {0L})));
    EXPECT_EQ(Texts(Get(main.Get(), L"Problems")), std::vector<std::wstring>{L"STR-029: no DAHS is defined"});
    Expect(CreateByName(L"V5Strings.DahsIniEntries").Get(), {{L"Count", 0L}});
    Expect(CreateByName(L"V5Strings.DahsIniEntry").Get(),
           {{L"DahsID", 0L}, {L"SqlConnectionString_OstraNoninteractive_DotNet", L""}});
}

TEST(DahsIni, LateBoundClientsReadAndChoose) {
    const SiteFolder folder(Section(2, "ab", "RedundantDasRole=primary\r\nReportsURL=u") +
                            Section(7, "ab", "RedundantDasRole=secondary\r\nDahsComputerName=elsewhere") +
                            Section(8, "77") + Section(9, "cd", "RedundantDasRole=primary\r\nDahsComputerName=far"));
    const ComPtr<IDispatch> main = CreateByName(kMain);
    ASSERT_TRUE(Truth(Call(main.Get(), L"ReadVantorINI2", {0L, true})));
    EXPECT_EQ(
        Texts(Get(main.Get(), L"Problems")),
        (std::vector<std::wstring>{
            L"STR-0183: found INI file '" + folder.File() + L"'",
            L"STR-084: '" + folder.File() + L"', DAHS 8: missing or invalid value for 'SiteID'; may not be a number",
            L"STR-031: DAHS8 in '" + folder.File() + L"' cannot be used because one or more entries are invalid"}));
    Expect(main.Get(), {{L"DahsID", 2L},
                        {L"RedundantDasRole", 1L},
                        {L"RedundantDasRoleText", L"Primary"},
                        {L"ActualVantorINI", folder.File().c_str()},
                        {L"AreMultipleDahsDefined", true},
                        {L"MustUseReportsURL", false}});
    EXPECT_TRUE(Truth(Call(main.Get(), L"ChooseDahs3", {7L, false, true})));
    Expect(main.Get(), {{L"SelectedDahsIsRemote", true},
                        {L"SqlConnectionString_Alarms", L"a"},
                        {L"SqlConnectionString_Ostra", L"Vantor5Ostra"}});
    EXPECT_TRUE(Truth(Call(main.Get(), L"ChooseDahs4", {L"cd", false, false})));
    Expect(main.Get(), {{L"DahsID", 9L}, {L"SqlConnectionString_Alarms", L"Provider=p;a"}});
    EXPECT_FALSE(Truth(Call(main.Get(), L"ReadVantorINI", {0L})));

    _variant_t primary(9L), secondary(9L);
    EXPECT_EQ(
        Call(main.Get(), L"FindRedundantDasIDs", {L"AB", 0L, ByReference(primary), ByReference(secondary)}).status,
        S_OK);
    EXPECT_EQ(V_I4(&primary), 2);
    EXPECT_EQ(V_I4(&secondary), 7);
    EXPECT_EQ(Call(main.Get(), L"GetDahsIDForComputerName", {L"ignored", true}).value, _variant_t(2L));
    EXPECT_EQ(Call(main.Get(), L"GetDahsIDForSiteID", {L"Cd"}).value, _variant_t(9L));
}

// Each property of an entry, and of the object that has chosen it, gives the value of its own key.
TEST(DahsIni, EveryPropertyHasItsOwnKey) {
    std::string lines =
        "LanguageID=de\r\nDahsDescription=Stack\r\nReportsURL=u\r\nAutoOutputEnabled=auto_secondary,7\r\n"
        "DRCurrentHealthTimeouts=1,2\r\nLogsDir=$folder$\\V\\L\r\n";
    std::vector<std::pair<std::wstring, _variant_t>> ofEntry, ofMain;
    for (const std::wstring database : {L"Alarms", L"Config", L"Data", L"DataShortTerm", L"Realtime", L"Ostra"}) {
        for (const auto& [key, property] : {std::pair(L"", L""),
                                            {L"Noninteractive", L"Noninteractive"},
                                            {L".NET", L"_DotNet"},
                                            {L"Noninteractive.NET", L"Noninteractive_DotNet"}}) {
            const std::wstring name = L"SQL" + database + key;
            lines += Narrow(name + L"=<" + name + L">\r\n");
            ofEntry.emplace_back(L"SqlConnectionString_" + database + property, (L"<" + name + L">").c_str());
        }
        ofMain.emplace_back(L"SqlConnectionString_" + database, (L"<SQL" + database + L">").c_str());
    }
    const SiteFolder folder(Section(5, "ab", lines) + "[AffinityMasks]\r\nIOS=1\r\nDR=2\r\nDM=3\r\nRG=4\r\nDBE=5\r\n");
    const std::wstring own = folder.Path() + L"\\V", system = folder.Path();
    wchar_t temporary[MAX_PATH + 1];
    GetTempPathW(MAX_PATH + 1, temporary);
    for (auto* properties : {&ofEntry, &ofMain}) {
        properties->insert(properties->end(), {{L"DahsID", 5L},
                                               {L"SiteID", L"AB"},
                                               {L"LanguageID", L"de"},
                                               {L"DahsComputerName", LocalName(ComputerNameNetBIOS).c_str()},
                                               {L"DahsDescription", L"Stack"},
                                               {L"ReportsURL", L"u"},
                                               {L"AutoOutputEnabled", true},
                                               {L"AutoOutputEnabledEx", 3L},
                                               {L"AutoOutputEnabledExRedundantDasTimeout", 7L},
                                               {L"DRCurrentHealthTimeouts", L"1,2"},
                                               {L"VantorDir", own.c_str()},
                                               {L"VantorLogsDir", (own + L"\\L").c_str()},
                                               {L"PrimaryBackupDir", L"B"}});
    }
    ofEntry.insert(ofEntry.end(), {{L"IsRemote", false},
                                   {L"AffinityMask_IOS", 1L},
                                   {L"AffinityMask_DR", 2L},
                                   {L"AffinityMask_DM", 3L},
                                   {L"AffinityMask_RG", 4L},
                                   {L"AffinityMask_DBE", 5L}});
    ofMain.insert(ofMain.end(), {{L"VantorSystemDir", system.c_str()},
                                 {L"VantorMailLogsDir", (own + L"\\L\\MailLogs").c_str()},
                                 {L"VantorCustomReportTemplatesDir", (system + L"\\CustomReportTemplates").c_str()},
                                 {L"SecondaryBackupDir", (own + L"\\SecondaryBackup").c_str()},
                                 {L"PadepReportDir", (own + L"\\PADEP Reports").c_str()}});
    const ComPtr<IDispatch> main = ReadSite();
    const ComPtr<IDispatch> entries = Object(Get(main.Get(), L"DahsEntries"));
    Expect(Object(Call(entries.Get(), L"Item", {5L}).value).Get(), ofEntry);
    Expect(main.Get(), ofMain);
    EXPECT_TRUE(std::wstring(temporary).starts_with(Text(Get(main.Get(), L"TempDir"))));
}

// The same for the switches: each of the sections has a single one that is not at its default.
TEST(DahsIni, EverySwitchHasItsOwnKey) {
    const struct {
        const wchar_t* property;
        const char* key;
        bool isDefault;
    } switches[] = {{L"HDREnabled", "HDR", true},
                    {L"ExtraTraceMsgsEnabled", "TraceEnabled", true},
                    {L"LogFlushEnabled", "LogFlushEnabled", true},
                    {L"RedundantDasSyncStagingEnabled", "RedundantDasSyncStagingEnabled", false},
                    {L"RedundantDasSyncCompareEnabled", "RedundantDasSyncCompareEnabled", false},
                    {L"RedundantDASSyncMergeEnabled", "RedundantDASSyncMergeEnabled", false}};
    std::string file;
    for (int i = 0; i < 6; ++i) {
        file += Section(i + 1, "ab", std::string(switches[i].key) + (switches[i].isDefault ? "=no" : "=yes"));
    }
    const SiteFolder folder(file);
    const ComPtr<IDispatch> main = ReadSite();
    const ComPtr<IDispatch> entries = Object(Get(main.Get(), L"DahsEntries"));
    for (long id = 1; id <= 6; ++id) {
        EXPECT_TRUE(Truth(Call(main.Get(), L"ChooseDahs", {id})));
        for (long other = 1; other <= 6; ++other) {
            const auto& each = switches[other - 1];
            const _variant_t expected(each.isDefault != (other == id));
            Expect(main.Get(), {{each.property, expected}});
            Expect(Object(Call(entries.Get(), L"Item", {id}).value).Get(), {{each.property, expected}});
        }
    }
}

TEST(DahsIni, EntriesAreACollection) {
    const SiteFolder folder(Section(2, "ab") + Section(7, "cd", "RedundantDasRole=secondary"));
    const ComPtr<IDispatch> main = CreateByName(kMain);
    const ComPtr<IDispatch> entries = Object(Get(main.Get(), L"DahsEntries"));
    ASSERT_TRUE(Truth(Call(main.Get(), L"ReadVantorINI", {0L})));
    EXPECT_EQ(Object(Get(main.Get(), L"DahsEntries")).Get(), entries.Get()) << "one collection for the object's life";
    Expect(entries.Get(), {{L"Count", 2L}, {L"CountOfNonSecondaryDahsEntries", 1L}});
    constexpr long kNoSuchKey = static_cast<long>(0x800A0005);
    constexpr long kOutOfRange = static_cast<long>(0x800A0009);
    const struct {
        const wchar_t* member;
        std::vector<_variant_t> arguments;
        long dahsID;  // or the number of the error
    } cases[] = {
        {L"Item", {2L, false}, 7},
        {L"Item", {2L, true}, 2},
        {L"Item", {7L}, 7},
        {L"Item0", {0L}, 2},
        {L"Item", {1L}, kNoSuchKey},
        {L"Item", {0L, false}, kOutOfRange},
        {L"Item", {3L, false}, kOutOfRange},
        {L"Item", {LONG_MIN, false}, kOutOfRange},
        {L"Item0", {-1L}, kOutOfRange},
        {L"Item0", {2L}, kOutOfRange},
    };
    std::map<long, ComPtr<IDispatch>> objects;  // one for each entry, however it is asked for
    for (const auto& c : cases) {
        const CallResult result = Call(entries.Get(), c.member, c.arguments);
        if (c.dahsID > 0) {
            Expect(Object(result.value).Get(), {{L"DahsID", c.dahsID}});
            ComPtr<IDispatch>& object = objects.emplace(c.dahsID, Object(result.value)).first->second;
            EXPECT_EQ(Object(result.value).Get(), object.Get()) << c.member;
            continue;
        }
        EXPECT_EQ(result.status, DISP_E_EXCEPTION) << c.member;
        EXPECT_EQ(result.errorNumber, c.dahsID) << c.member;
        EXPECT_EQ(result.errorDescription,
                  c.dahsID == kNoSuchKey ? L"Invalid procedure call or argument" : L"Subscript out of range");
        EXPECT_EQ(result.errorSource, L"V5Strings.DahsIniEntries");
    }
    _variant_t next;
    ComPtr<IEnumVARIANT> walk;
    ASSERT_EQ(Call(entries.Get(), L"NewEnum").value.punkVal->QueryInterface(IID_PPV_ARGS(&walk)), S_OK);
    ASSERT_EQ(walk->Next(1, &next, nullptr), S_OK);
    EXPECT_EQ(Object(next).Get(), objects.at(2).Get());
}

// Entries outlive the object that read them, and so does what they know about the machine.
TEST(DahsIni, EarlyBoundClientsMayKeepAnEntry) {
    ComPtr<_DahsIniEntry> entry;
    {
        const SiteFolder folder("\xEF\xBB\xBF" + Section(3, "ab", "DahsDescription=St\xC3\xB6rfall \xE2\x82\xAC"));
        ComPtr<_DahsIniMain> main;
        ComPtr<_DahsIniEntries> entries;
        VARIANT_BOOL read = VARIANT_FALSE;
        ASSERT_EQ(CoCreateInstance(__uuidof(DahsIniMain), nullptr, CLSCTX_INPROC_SERVER, __uuidof(_DahsIniMain), &main),
                  S_OK);
        ASSERT_EQ(
            main->ReadVantorINI4(NotApplicable, VARIANT_FALSE, VARIANT_FALSE, AllowEntriesWithBlankConnStrings, &read),
            S_OK);
        ASSERT_EQ(read, VARIANT_TRUE);
        ASSERT_EQ(main->get_DahsEntries(&entries), S_OK);
        ASSERT_EQ(entries->Item0(0, &entry), S_OK);
    }
    BSTR description = nullptr;
    ASSERT_EQ(entry->get_DahsDescription(&description), S_OK);
    EXPECT_EQ(Taken(description), L"St\u00F6rfall \u20AC");
    VARIANT_BOOL remote = VARIANT_TRUE;
    ASSERT_EQ(entry->get_IsRemote(&remote), S_OK);
    EXPECT_EQ(remote, VARIANT_FALSE);
}

TEST(DahsIni, TheMachineIsKnownByItsShortAndItsFullName) {
    std::wstring lower = LocalName(ComputerNameNetBIOS);
    CharLowerW(lower.data());
    for (const std::wstring& name :
         {lower, LocalName(ComputerNameDnsHostname), LocalName(ComputerNameDnsFullyQualified)}) {
        const SiteFolder folder(Section(1, "ab", "DahsComputerName=" + Narrow(name)));
        Expect(ReadSite().Get(), {{L"SelectedDahsIsRemote", false}});
    }
}

TEST(DahsIni, FoldersAreMade) {
    const SiteFolder folder(Section(1, "ab"));
    EXPECT_EQ(Texts(Get(ReadSite().Get(), L"Problems")).size(), 1u);
    for (const wchar_t* name :
         {L"V", L"V\\Logs", L"V\\Logs\\MailLogs", L"V\\SecondaryBackup", L"CustomReportTemplates"}) {
        EXPECT_TRUE(folder.HasFolder(name)) << Narrow(name);
    }
}

TEST(DahsIni, WhatCannotBeMadeOrReadIsReportedWithTheReason) {
    const auto expectProblem = [](IDispatch* main, const std::wstring& start) {
        const std::wstring problem = Texts(Get(main, L"Problems")).back();
        EXPECT_EQ(problem.substr(0, start.size()), start);
        EXPECT_GT(problem.size(), start.size()) << "the reason is missing";
    };
    const SiteFolder folder(Section(1, "ab", "VantorDir=$folder$\\none\\V"));
    expectProblem(ReadSite().Get(), L"Could not create folder '" + folder.Path() + L"\\none\\V': ");
    const HANDLE lock = CreateFileW(folder.File().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    const ComPtr<IDispatch> main = CreateByName(kMain);
    EXPECT_FALSE(Truth(Call(main.Get(), L"ReadVantorINI", {0L})));
    CloseHandle(lock);
    expectProblem(main.Get(), L"Could not read INI file '" + folder.File() + L"': ");
}

TEST(DahsIni, TheProcessIsPinnedToTheProcessorsOfItsKind) {
    DWORD_PTR before = 0;
    DWORD_PTR system = 0;
    ASSERT_TRUE(GetProcessAffinityMask(GetCurrentProcess(), &before, &system));
    const SiteFolder folder(Section(1, "ab") + "[AffinityMasks]\r\nDM=0x1\r\nRG=0\r\n");
    ComPtr<IDispatch> main = CreateByName(kMain);
    EXPECT_TRUE(Truth(Call(main.Get(), L"ReadVantorINI", {static_cast<long>(RG)})));
    EXPECT_EQ(Texts(Get(main.Get(), L"Problems")).size(), 1u);
    main = CreateByName(kMain);
    EXPECT_TRUE(Truth(Call(main.Get(), L"ReadVantorINI", {static_cast<long>(DM)})));
    EXPECT_EQ(Texts(Get(main.Get(), L"Problems")).back(), L"STR-082: set process affinity mask = &H1");
    DWORD_PTR after = 0;
    ASSERT_TRUE(GetProcessAffinityMask(GetCurrentProcess(), &after, &system));
    EXPECT_EQ(after, 1u);
    SetProcessAffinityMask(GetCurrentProcess(), before);
}

}  // namespace v5::test
