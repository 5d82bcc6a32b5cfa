// The folders that programs use, derived from the selected DAHS.
#pragma once

#include <string>
#include <vector>

#include "config/DahsEntry.h"
#include "config/SiteHost.h"

namespace v5 {

// All without a trailing backslash.
struct DahsFolders {
    std::wstring vantor;
    std::wstring system;
    std::wstring logs;
    std::wstring mailLogs;
    std::wstring customReportTemplates;
    std::wstring primaryBackup;
    std::wstring secondaryBackup;
    std::wstring temp;
};

// The text from which the system folder comes by expanding it; kept as it is where the variable is not defined.
inline constexpr wchar_t kSystemFolderReference[] = L"%VANTOR5_SYSTEM_FOLDER%";

// The folders of a DAHS. The folder for temporary files is the DAHS's own when it exists, else the system's.
DahsFolders FoldersOf(const DahsEntry& entry, const SiteHost& host);

// Creates those folders that programs write to and that do not exist, one level each. The first that cannot be created
// is reported in `problems` and the remaining ones are left alone.
void CreateMissingFolders(const DahsFolders& folders, SiteHost& host, std::vector<std::wstring>& problems);

}  // namespace v5
