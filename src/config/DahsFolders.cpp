#include "config/DahsFolders.h"

#include "base/AutomationError.h"
#include "base/Text.h"

namespace v5 {

DahsFolders FoldersOf(const DahsEntry& entry, const SiteHost& host) {
    DahsFolders folders;
    folders.vantor = WithoutTrailingBackslash(entry.vantorDir);
    folders.system = WithoutTrailingBackslash(host.ExpandEnvironment(kSystemFolderReference));
    folders.logs = WithoutTrailingBackslash(entry.logsDir);
    folders.mailLogs = folders.logs + L"\\MailLogs";
    folders.customReportTemplates = folders.system + L"\\CustomReportTemplates";
    folders.primaryBackup = WithoutTrailingBackslash(entry.primaryBackupDir);
    folders.secondaryBackup = folders.vantor + L"\\SecondaryBackup";
    folders.temp = folders.vantor + L"\\Temp";
    if (!host.FolderExists(folders.temp)) {
        folders.temp = host.TemporaryFolder();
    }
    return folders;
}

void CreateMissingFolders(const DahsFolders& folders, SiteHost& host, std::vector<std::wstring>& problems) {
    // The primary backup folder is the site's own affair: often a share that is not always there.
    for (const std::wstring* folder : {&folders.vantor, &folders.system, &folders.logs, &folders.mailLogs,
                                       &folders.customReportTemplates, &folders.secondaryBackup, &folders.temp}) {
        std::wstring reason;
        try {
            if (!folder->empty() && !host.FolderExists(*folder)) {
                reason = host.CreateFolder(*folder);
            }
        } catch (...) {
            reason = CurrentFailureText();
        }
        if (!reason.empty()) {
            problems.push_back(L"Could not create folder '" + *folder + L"': " + reason);
            return;
        }
    }
}

}  // namespace v5
