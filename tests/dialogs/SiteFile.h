// The text of a site file for the DAHS chooser.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace v5::test {

struct Das {
    int id;
    std::string site, role;
    bool remote = false;
};

inline std::string SiteFile(const std::vector<Das>& dases) {
    char computer[MAX_COMPUTERNAME_LENGTH + 1];
    DWORD length = sizeof computer;
    GetComputerNameA(computer, &length);
    std::string text;
    for (const Das& das : dases) {
        const std::string id = std::to_string(das.id);
        text += "[Dahs" + id + "]\nSiteID=" + das.site + "\nDahsDescription=Stack " + id +
                "\nRedundantDasRole=" + das.role + "\nDahsComputerName=" + (das.remote ? "far-away-das" : computer) +
                "\nVantorDir=C:\\\nBackupDir=C:\\\n" +
                "SQLAlarms=a\nSQLConfig=c\nSQLData=d\nSQLDataShortTerm=s\nSQLRealtime=r\n";
    }
    return text;
}

}  // namespace v5::test
