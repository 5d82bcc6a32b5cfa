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

std::string Narrow(const std::wstring& text) {
    return {text.begin(), text.end()};
}

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
    if (V_VT(&value) != (VT_ARRAY | VT_BSTR)) {
        return texts;
    }
    LONG low = -1;
    LONG high = -1;
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

long Number(const _variant_t& value) {
    EXPECT_EQ(value.vt, VT_I4);
    return value.lVal;
}

bool Flag(const _variant_t& value) {
    EXPECT_EQ(value.vt, VT_BOOL);
    return value.boolVal != VARIANT_FALSE;
}

bool Truth(const CallResult& result) {
    EXPECT_EQ(result.status, S_OK);
    return Flag(result.value);
}

ComPtr<IDispatch> Object(const _variant_t& value) {
    EXPECT_EQ(V_VT(&value), VT_DISPATCH);
    return V_VT(&value) == VT_DISPATCH ? ComPtr<IDispatch>(V_DISPATCH(&value)) : nullptr;
}

}  // namespace

TEST(DahsIni, NothingIsKnownBeforeReading) {
    const ComPtr<IDispatch> main = CreateByName(kMain);
    EXPECT_EQ(Get(main.Get(), L"Problems").vt, VT_EMPTY);
    EXPECT_EQ(Text(Get(main.Get(), L"ActualVantorINI")), L"");
    EXPECT_EQ(Text(Get(main.Get(), L"LocalComputerName")), LocalName(ComputerNameNetBIOS));
    EXPECT_EQ(Number(Get(main.Get(), L"DahsID")), 0);
    EXPECT_FALSE(Flag(Get(main.Get(), L"AutoOutputEnabled")));
    EXPECT_EQ(Texts(Call(main.Get(), L"GetInfoArray").value).size(), 34u);
    EXPECT_FALSE(Truth(Call(main.Get(), L"ChooseDahs", {0L})));
    EXPECT_EQ(Texts(Get(main.Get(), L"Problems")), std::vector<std::wstring>{L"STR-029: no DAHS is defined"});
    const ComPtr<IDispatch> entries = CreateByName(L"V5Strings.DahsIniEntries");
    EXPECT_EQ(Number(Get(entries.Get(), L"Count")), 0);
    const ComPtr<IDispatch> entry = CreateByName(L"V5Strings.DahsIniEntry");
    EXPECT_EQ(Number(Get(entry.Get(), L"DahsID")), 0);
    EXPECT_EQ(Text(Get(entry.Get(), L"SqlConnectionString_OstraNoninteractive_DotNet")), L"");
}

TEST(DahsIni, LateBoundClientsReadAndChoose) {
    const SiteFolder folder(Section(2, "ab", "RedundantDasRole=primary") +
                            Section(7, "ab", "RedundantDasRole=secondary\r\nDahsComputerName=elsewhere") +
                            Section(8, "77"));
    const ComPtr<IDispatch> main = CreateByName(kMain);
    ASSERT_TRUE(Truth(Call(main.Get(), L"ReadVantorINI2", {0L, true})));
    EXPECT_EQ(
        Texts(Get(main.Get(), L"Problems")),
        (std::vector<std::wstring>{
            L"STR-0183: found INI file '" + folder.File() + L"'",
            L"STR-084: '" + folder.File() + L"', DAHS 8: missing or invalid value for 'SiteID'; may not be a number",
            L"STR-031: DAHS8 in '" + folder.File() + L"' cannot be used because one or more entries are invalid"}));
    EXPECT_EQ(Number(Get(main.Get(), L"DahsID")), 2);
    EXPECT_EQ(Number(Get(main.Get(), L"RedundantDasRole")), 1);
    EXPECT_EQ(Text(Get(main.Get(), L"RedundantDasRoleText")), L"Primary");
    EXPECT_EQ(Text(Get(main.Get(), L"VantorSystemDir")), folder.Path());
    EXPECT_TRUE(Truth(Call(main.Get(), L"ChooseDahs3", {7L, false, true})));
    EXPECT_TRUE(Flag(Get(main.Get(), L"SelectedDahsIsRemote")));
    EXPECT_EQ(Text(Get(main.Get(), L"SqlConnectionString_Alarms")), L"a");
    EXPECT_EQ(Text(Get(main.Get(), L"SqlConnectionString_Ostra")), L"Vantor5Ostra");
    EXPECT_FALSE(Truth(Call(main.Get(), L"ReadVantorINI", {0L})));

    _variant_t primary(9L), secondary(9L), byPrimary, bySecondary;  // as script variables arrive
    V_VT(&byPrimary) = V_VT(&bySecondary) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&byPrimary) = &primary;
    V_VARIANTREF(&bySecondary) = &secondary;
    EXPECT_EQ(Call(main.Get(), L"FindRedundantDasIDs", {L"AB", 0L, byPrimary, bySecondary}).status, S_OK);
    EXPECT_EQ(V_I4(&primary), 2);
    EXPECT_EQ(V_I4(&secondary), 7);
    EXPECT_EQ(Number(Call(main.Get(), L"GetDahsIDForComputerName", {L"ignored", true}).value), 2);
}

TEST(DahsIni, EntriesAreACollection) {
    const SiteFolder folder(Section(2, "ab") + Section(7, "cd", "RedundantDasRole=secondary"));
    const ComPtr<IDispatch> main = CreateByName(kMain);
    const ComPtr<IDispatch> entries = Object(Get(main.Get(), L"DahsEntries"));
    ASSERT_TRUE(Truth(Call(main.Get(), L"ReadVantorINI", {0L})));
    EXPECT_EQ(Object(Get(main.Get(), L"DahsEntries")).Get(), entries.Get()) << "one collection for the object's life";
    EXPECT_EQ(Number(Get(entries.Get(), L"Count")), 2);
    EXPECT_EQ(Number(Get(entries.Get(), L"CountOfNonSecondaryDahsEntries")), 1);

    const auto id = [](const CallResult& result) {
        const ComPtr<IDispatch> entry = Object(result.value);
        return entry ? Number(Get(entry.Get(), L"DahsID")) : 0;
    };
    EXPECT_EQ(id(Call(entries.Get(), L"Item", {2L, false})), 7);
    EXPECT_EQ(id(Call(entries.Get(), L"Item", {2L, true})), 2);
    EXPECT_EQ(id(Call(entries.Get(), L"Item", {7L})), 7);
    EXPECT_EQ(id(Call(entries.Get(), L"Item0", {0L})), 2);

    struct Failure {
        const wchar_t* member;
        std::vector<_variant_t> arguments;
        long number;
        const wchar_t* description;
    };
    const Failure failures[] = {
        {L"Item", {1L}, static_cast<long>(0x800A0005), L"Invalid procedure call or argument"},
        {L"Item", {0L, false}, static_cast<long>(0x800A0009), L"Subscript out of range"},
        {L"Item", {3L, false}, static_cast<long>(0x800A0009), L"Subscript out of range"},
        {L"Item", {LONG_MIN, false}, static_cast<long>(0x800A0009), L"Subscript out of range"},
        {L"Item0", {-1L}, static_cast<long>(0x800A0009), L"Subscript out of range"},
        {L"Item0", {2L}, static_cast<long>(0x800A0009), L"Subscript out of range"},
    };
    for (const Failure& failure : failures) {
        const CallResult result = Call(entries.Get(), failure.member, failure.arguments);
        EXPECT_EQ(result.status, DISP_E_EXCEPTION) << failure.member;
        EXPECT_EQ(result.errorNumber, failure.number) << failure.member;
        EXPECT_EQ(result.errorDescription, failure.description);
        EXPECT_EQ(result.errorSource, L"V5Strings.DahsIniEntries");
    }

    const CallResult enumerator = Invoke(entries.Get(), DISPID_NEWENUM, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {});
    ASSERT_EQ(V_VT(&enumerator.value), VT_UNKNOWN);
    ComPtr<IEnumVARIANT> walk;
    ASSERT_EQ(V_UNKNOWN(&enumerator.value)->QueryInterface(IID_PPV_ARGS(&walk)), S_OK);
    _variant_t found[3];
    ULONG count = 0;
    EXPECT_EQ(walk->Next(3, found, &count), S_FALSE);
    ASSERT_EQ(count, 2u);
    EXPECT_EQ(Number(Get(Object(found[1]).Get(), L"DahsID")), 7);
}

// Entries outlive the object that read them, and so does what they know about the machine.
TEST(DahsIni, EarlyBoundClientsMayKeepAnEntry) {
    ComPtr<_DahsIniEntry> entry;
    {
        const SiteFolder folder("\xEF\xBB\xBF" + Section(3, "ab", "DahsDescription=St\xC3\xB6rfall \xE2\x82\xAC") +
                                "[AffinityMasks]\nRG=0x0F");
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
        EXPECT_EQ(main->FindRedundantDasIDs(nullptr, 0, nullptr, nullptr), E_POINTER);
        EXPECT_EQ(main->get_Problems(nullptr), E_POINTER);
    }
    BSTR description = nullptr;
    ASSERT_EQ(entry->get_DahsDescription(&description), S_OK);
    EXPECT_EQ(Taken(description), L"St\u00F6rfall \u20AC");
    VARIANT_BOOL remote = VARIANT_TRUE;
    ASSERT_EQ(entry->get_IsRemote(&remote), S_OK);
    EXPECT_EQ(remote, VARIANT_FALSE);
    long mask = 0;
    ASSERT_EQ(entry->get_AffinityMask_RG(&mask), S_OK);
    EXPECT_EQ(mask, 15);
}

TEST(DahsIni, TheMachineIsKnownByItsShortAndItsFullName) {
    const auto lower = [](std::wstring name) {
        CharLowerW(name.data());
        return name;
    };
    for (const std::wstring& name : {LocalName(ComputerNameNetBIOS), LocalName(ComputerNameDnsHostname),
                                     LocalName(ComputerNameDnsFullyQualified), lower(LocalName(ComputerNameNetBIOS))}) {
        const SiteFolder folder(Section(1, "ab", "DahsComputerName=" + Narrow(name)));
        const ComPtr<IDispatch> main = CreateByName(kMain);
        ASSERT_TRUE(Truth(Call(main.Get(), L"ReadVantorINI", {0L})));
        EXPECT_FALSE(Flag(Get(main.Get(), L"SelectedDahsIsRemote"))) << Narrow(name);
    }
}

TEST(DahsIni, FoldersAreMadeAndWhatCannotBeMadeIsReported) {
    const SiteFolder folder(Section(1, "ab"));
    ComPtr<IDispatch> main = CreateByName(kMain);
    ASSERT_TRUE(Truth(Call(main.Get(), L"ReadVantorINI", {0L})));
    for (const wchar_t* name :
         {L"V", L"V\\Logs", L"V\\Logs\\MailLogs", L"V\\SecondaryBackup", L"CustomReportTemplates"}) {
        EXPECT_TRUE(folder.HasFolder(name)) << Narrow(name);
    }
    EXPECT_EQ(Texts(Get(main.Get(), L"Problems")).size(), 1u);

    folder.Write(Section(1, "ab", "VantorDir=$folder$\\none\\V"));
    main = CreateByName(kMain);
    EXPECT_TRUE(Truth(Call(main.Get(), L"ReadVantorINI", {0L})));
    const std::wstring problem = Texts(Get(main.Get(), L"Problems")).back();
    const std::wstring start = L"Could not create folder '" + folder.Path() + L"\\none\\V': ";
    EXPECT_EQ(problem.substr(0, start.size()), start);
    EXPECT_GT(problem.size(), start.size()) << "the reason is missing";
}

TEST(DahsIni, AFileThatCannotBeReadIsReported) {
    const SiteFolder folder("");
    const HANDLE lock = CreateFileW(folder.File().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    const ComPtr<IDispatch> main = CreateByName(kMain);
    EXPECT_FALSE(Truth(Call(main.Get(), L"ReadVantorINI", {0L})));
    CloseHandle(lock);
    const std::wstring problem = Texts(Get(main.Get(), L"Problems")).back();
    const std::wstring start = L"Could not read INI file '" + folder.File() + L"': ";
    EXPECT_EQ(problem.substr(0, start.size()), start);
    EXPECT_GT(problem.size(), start.size()) << "the reason is missing";
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

TEST(DahsIni, AForcedEntryIsChosenAtOnce) {
    const ComPtr<IDispatch> main = CreateByName(kMain);
    EXPECT_TRUE(Truth(Call(main.Get(), L"SetupWithOneForcedDahsEntry", {L"ab"})));
    EXPECT_EQ(Number(Get(main.Get(), L"DahsID")), 888);
    EXPECT_EQ(Text(Get(main.Get(), L"SiteID")), L"ab");
    EXPECT_EQ(Number(Get(main.Get(), L"AutoOutputEnabledEx")), 0);
    EXPECT_FALSE(Flag(Get(main.Get(), L"AreMultipleDahsDefined")));
    EXPECT_FALSE(Truth(Call(main.Get(), L"SetupWithOneForcedDahsEntry", {L"ab"})));
}

}  // namespace v5::test
