// A site file for the DAHS chooser.
#pragma once

#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

namespace v5::test {

struct Das {
    int id;
    const char* site;
    const char* role;
    bool remote = false;
};

// A site file in a folder of its own, which the component finds through its environment variable.
class SiteFolder {
  public:
    explicit SiteFolder(const std::vector<Das>& dases) {
        wchar_t temp[MAX_PATH];
        GetTempPathW(MAX_PATH, temp);
        folder_ = std::wstring(temp) + L"v5dialogs" + std::to_wstring(GetCurrentProcessId());
        CreateDirectoryW(folder_.c_str(), nullptr);
        SetEnvironmentVariableW(L"VANTOR5_SYSTEM_FOLDER", folder_.c_str());
        char computer[MAX_COMPUTERNAME_LENGTH + 1];
        DWORD length = sizeof computer;
        GetComputerNameA(computer, &length);
        FILE* file = _wfopen(File().c_str(), L"w");
        for (const Das& das : dases) {
            std::fprintf(file,
                         "[Dahs%d]\nSiteID=%s\nDahsDescription=Stack %d\nRedundantDasRole=%s\nDahsComputerName=%s\n"
                         "VantorDir=C:\\\nBackupDir=C:\\\n",
                         das.id, das.site, das.id, das.role, das.remote ? "far-away-das" : computer);
            for (const char* key : {"SQLAlarms", "SQLConfig", "SQLData", "SQLDataShortTerm", "SQLRealtime"}) {
                std::fprintf(file, "%s=Provider=p;Data Source=s\n%sNoninteractive=Provider=p;Data Source=n\n", key,
                             key);
            }
        }
        std::fclose(file);
    }
    ~SiteFolder() {
        DeleteFileW(File().c_str());
        RemoveDirectoryW(folder_.c_str());
        SetEnvironmentVariableW(L"VANTOR5_SYSTEM_FOLDER", nullptr);
    }
    SiteFolder(const SiteFolder&) = delete;
    SiteFolder& operator=(const SiteFolder&) = delete;

  private:
    std::wstring File() const { return folder_ + L"\\Vantor5.INI"; }

    std::wstring folder_;
};

}  // namespace v5::test
