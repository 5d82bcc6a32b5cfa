#include "SiteClient.h"

#include <comutil.h>
#include <oleauto.h>

#include <array>
#include <cwchar>

namespace v5site {

namespace {

using Microsoft::WRL::ComPtr;
using namespace V5Strings;  // the published enumerations

void Check(HRESULT status, const wchar_t* what) {
    if (FAILED(status)) {
        std::array<wchar_t, 16> number{};
        static_cast<void>(std::swprintf(number.data(), number.size(), L"0x%08lX", static_cast<unsigned long>(status)));
        throw Error(std::wstring(what) + L" failed (" + number.data() + L")");
    }
}

template <class Interface>
using Getter = HRESULT (STDMETHODCALLTYPE Interface::*)(BSTR*);
template <class Interface, class Number>
using NumberGetter = HRESULT (STDMETHODCALLTYPE Interface::*)(Number*);

template <class Interface>
std::wstring Text(Interface* object, Getter<Interface> get) {
    _bstr_t text;
    Check((object->*get)(text.GetAddress()), L"reading a property");
    return TextOf(text);
}

template <class Number, class Interface>
Number NumberOf(Interface* object, NumberGetter<Interface, Number> get) {
    Number number{};
    Check((object->*get)(&number), L"reading a property");
    return number;
}

template <class Interface>
bool Flag(Interface* object, NumberGetter<Interface, VARIANT_BOOL> get) {
    return NumberOf<VARIANT_BOOL>(object, get) != VARIANT_FALSE;
}

const wchar_t* RoleText(RedundantDasRoleEnum role) {
    switch (role) {
        case V5Strings::PrimaryDas:
            return L"Primary";
        case V5Strings::SecondaryDas:
            return L"Secondary";
        default:
            return L"Standalone";
    }
}

VARIANT_BOOL Boolean(bool value) {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

}  // namespace

std::wstring TextOf(BSTR text) {
    return text == nullptr ? std::wstring() : std::wstring(text, SysStringLen(text));
}

SiteClient::SiteClient() {
    const HRESULT status =
        CoCreateInstance(__uuidof(DahsIniMain), nullptr, CLSCTX_INPROC_SERVER, __uuidof(_DahsIniMain), &mMain);
    Check(status, L"creating V5Strings.DahsIniMain (is V5Strings.dll registered with regsvr32?)");
}

bool SiteClient::Read(const CommandLine& line) {
    VARIANT_BOOL done = VARIANT_FALSE;
    Check(mMain->ReadVantorINI3(V5Strings::NotApplicable, Boolean(line.noninteractive), Boolean(line.dotNet), &done),
          L"ReadVantorINI3");
    return done != VARIANT_FALSE;
}

bool SiteClient::Choose(const CommandLine& line) {
    VARIANT_BOOL done = VARIANT_TRUE;
    if (line.dahsID) {
        Check(mMain->ChooseDahs3(*line.dahsID, Boolean(line.noninteractive), Boolean(line.dotNet), &done),
              L"ChooseDahs3");
    } else if (line.siteID) {
        Check(mMain->ChooseDahs4(_bstr_t(line.siteID->c_str()), Boolean(line.noninteractive), Boolean(line.dotNet),
                                 &done),
              L"ChooseDahs4");
    }
    return done != VARIANT_FALSE;
}

std::wstring SiteClient::FilePath() const {
    return Text(mMain.Get(), &_DahsIniMain::get_ActualVantorINI);
}

std::vector<std::wstring> SiteClient::Findings() const {
    _variant_t array;
    Check(mMain->get_Problems(array.GetAddress()), L"Problems");
    std::vector<std::wstring> findings;
    if (array.vt != (VT_ARRAY | VT_BSTR)) {
        return findings;
    }
    LONG last = -1;
    Check(SafeArrayGetUBound(array.parray, 1, &last), L"Problems");
    for (LONG i = 0; i <= last; ++i) {
        _bstr_t text;
        Check(SafeArrayGetElement(array.parray, &i, text.GetAddress()), L"Problems");
        findings.push_back(TextOf(text));
    }
    return findings;
}

std::vector<EntryRow> SiteClient::Entries() const {
    ComPtr<_DahsIniEntries> entries;
    Check(mMain->get_DahsEntries(&entries), L"DahsEntries");
    const long count = NumberOf<long>(entries.Get(), &_DahsIniEntries::get_Count);
    std::vector<EntryRow> rows;
    for (long i = 0; i < count; ++i) {
        ComPtr<_DahsIniEntry> entry;
        Check(entries->Item0(i, &entry), L"Item0");
        _DahsIniEntry* dahs = entry.Get();
        rows.push_back({.dahsID = NumberOf<long>(dahs, &_DahsIniEntry::get_DahsID),
                        .siteID = Text(dahs, &_DahsIniEntry::get_SiteID),
                        .role = RoleText(NumberOf<RedundantDasRoleEnum>(dahs, &_DahsIniEntry::get_RedundantDasRole)),
                        .computerName = Text(dahs, &_DahsIniEntry::get_DahsComputerName),
                        .description = Text(dahs, &_DahsIniEntry::get_DahsDescription),
                        .isRemote = Flag(dahs, &_DahsIniEntry::get_IsRemote)});
    }
    return rows;
}

std::vector<Setting> SiteClient::Settings() const {
    _DahsIniMain* main = mMain.Get();
    using Main = _DahsIniMain;
    return {
        {L"DahsID", NumberOf<long>(main, &Main::get_DahsID)},
        {L"SiteID", Text(main, &Main::get_SiteID)},
        {L"LanguageID", Text(main, &Main::get_LanguageID)},
        {L"DahsDescription", Text(main, &Main::get_DahsDescription)},
        {L"DahsComputerName", Text(main, &Main::get_DahsComputerName)},
        {L"LocalComputerName", Text(main, &Main::get_LocalComputerName)},
        {L"SelectedDahsIsRemote", Flag(main, &Main::get_SelectedDahsIsRemote)},
        {L"RedundantDasRole", Text(main, &Main::get_RedundantDasRoleText)},
        {L"RedundantDasSyncStagingEnabled", Flag(main, &Main::get_RedundantDasSyncStagingEnabled)},
        {L"RedundantDasSyncCompareEnabled", Flag(main, &Main::get_RedundantDasSyncCompareEnabled)},
        {L"RedundantDASSyncMergeEnabled", Flag(main, &Main::get_RedundantDASSyncMergeEnabled)},
        {L"HDREnabled", Flag(main, &Main::get_HDREnabled)},
        {L"AutoOutputEnabled", Flag(main, &Main::get_AutoOutputEnabled)},
        {L"AutoOutputEnabledEx",
         static_cast<long>(NumberOf<AutoOutputEnabledExEnum>(main, &Main::get_AutoOutputEnabledEx))},
        {L"AutoOutputEnabledExRedundantDasTimeout",
         NumberOf<long>(main, &Main::get_AutoOutputEnabledExRedundantDasTimeout)},
        {L"DRCurrentHealthTimeouts", Text(main, &Main::get_DRCurrentHealthTimeouts)},
        {L"ExtraTraceMsgsEnabled", Flag(main, &Main::get_ExtraTraceMsgsEnabled)},
        {L"LogFlushEnabled", Flag(main, &Main::get_LogFlushEnabled)},
        {L"ReportsURL", Text(main, &Main::get_ReportsURL)},
        {L"MustUseReportsURL", Flag(main, &Main::get_MustUseReportsURL)},
    };
}

std::vector<Setting> SiteClient::Folders() const {
    _DahsIniMain* main = mMain.Get();
    using Main = _DahsIniMain;
    return {
        {L"VantorDir", Text(main, &Main::get_VantorDir)},
        {L"VantorSystemDir", Text(main, &Main::get_VantorSystemDir)},
        {L"VantorLogsDir", Text(main, &Main::get_VantorLogsDir)},
        {L"VantorMailLogsDir", Text(main, &Main::get_VantorMailLogsDir)},
        {L"VantorCustomReportTemplatesDir", Text(main, &Main::get_VantorCustomReportTemplatesDir)},
        {L"PrimaryBackupDir", Text(main, &Main::get_PrimaryBackupDir)},
        {L"SecondaryBackupDir", Text(main, &Main::get_SecondaryBackupDir)},
        {L"TempDir", Text(main, &Main::get_TempDir)},
        {L"PadepReportDir", Text(main, &Main::get_PadepReportDir)},
    };
}

std::vector<Setting> SiteClient::Connections() const {
    _DahsIniMain* main = mMain.Get();
    using Main = _DahsIniMain;
    return {
        {L"Alarms", Text(main, &Main::get_SqlConnectionString_Alarms)},
        {L"Config", Text(main, &Main::get_SqlConnectionString_Config)},
        {L"Data", Text(main, &Main::get_SqlConnectionString_Data)},
        {L"DataShortTerm", Text(main, &Main::get_SqlConnectionString_DataShortTerm)},
        {L"Realtime", Text(main, &Main::get_SqlConnectionString_Realtime)},
        {L"Ostra", Text(main, &Main::get_SqlConnectionString_Ostra)},
    };
}

SecuritySite SiteClient::Security() const {
    _DahsIniMain* main = mMain.Get();
    using Main = _DahsIniMain;
    return {.siteID = Text(main, &Main::get_SiteID),
            .languageId = Text(main, &Main::get_LanguageID),
            .configDatabase = Text(main, &Main::get_SqlConnectionString_Config),
            .alarmsDatabase = Text(main, &Main::get_SqlConnectionString_Alarms)};
}

}  // namespace v5site
