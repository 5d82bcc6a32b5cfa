#include "Settings.h"

#include "PasswordMask.h"

namespace v5site {

using v5::Database;

std::wstring Display(const Value& value) {
    if (const auto* text = std::get_if<std::wstring>(&value)) {
        return *text;
    }
    if (const auto* number = std::get_if<long>(&value)) {
        return std::to_wstring(*number);
    }
    return std::get<bool>(value) ? L"yes" : L"no";
}

std::vector<Setting> SettingsOf(const v5::Site& site) {
    const v5::DahsEntry& dahs = *site.Current().entry;
    return {
        {L"DahsID", long{dahs.dahsID}},
        {L"SiteID", dahs.siteID},
        {L"LanguageID", dahs.languageId},
        {L"DahsDescription", dahs.description},
        {L"DahsComputerName", dahs.computerName},
        {L"LocalComputerName", site.LocalComputerName()},
        {L"SelectedDahsIsRemote", site.Current().isRemote},
        {L"RedundantDasRole", std::wstring(v5::RedundantDasRoleText(dahs.role))},
        {L"RedundantDasSyncStagingEnabled", dahs.syncStagingEnabled},
        {L"RedundantDasSyncCompareEnabled", dahs.syncCompareEnabled},
        {L"RedundantDASSyncMergeEnabled", dahs.syncMergeEnabled},
        {L"HDREnabled", dahs.hdrEnabled},
        {L"AutoOutputEnabled", dahs.AutoOutputEnabled()},
        {L"AutoOutputEnabledEx", static_cast<long>(dahs.autoOutput)},
        {L"AutoOutputEnabledExRedundantDasTimeout", long{dahs.autoOutputTimeout}},
        {L"DRCurrentHealthTimeouts", dahs.drCurrentHealthTimeouts},
        {L"ExtraTraceMsgsEnabled", dahs.extraTraceMsgsEnabled},
        {L"LogFlushEnabled", dahs.logFlushEnabled},
        {L"ReportsURL", dahs.reportsUrl},
        {L"MustUseReportsURL", site.Current().MustUseReportsUrl()},
    };
}

std::vector<Setting> FoldersOf(const v5::Site& site) {
    const v5::DahsFolders& folders = site.Current().folders;
    return {
        {L"VantorDir", folders.vantor},
        {L"VantorSystemDir", folders.system},
        {L"VantorLogsDir", folders.logs},
        {L"VantorMailLogsDir", folders.mailLogs},
        {L"VantorCustomReportTemplatesDir", folders.customReportTemplates},
        {L"PrimaryBackupDir", folders.primaryBackup},
        {L"SecondaryBackupDir", folders.secondaryBackup},
        {L"TempDir", folders.temp},
        {L"PadepReportDir", site.Current().PadepReportDir()},
    };
}

std::vector<Setting> ConnectionsOf(const v5::ConnectionStrings& connections) {
    return {
        {L"Alarms", connections[Database::Alarms]},     {L"Config", connections[Database::Config]},
        {L"Data", connections[Database::Data]},         {L"DataShortTerm", connections[Database::DataShortTerm]},
        {L"Realtime", connections[Database::Realtime]}, {L"Ostra", connections[Database::Ostra]},
    };
}

std::vector<Setting> Masked(std::vector<Setting> settings) {
    for (Setting& setting : settings) {
        if (auto* text = std::get_if<std::wstring>(&setting.value)) {
            *text = MaskPasswords(*text);
        }
    }
    return settings;
}

}  // namespace v5site
