// A site file of 99 entries with every key, about 120 kB: what the site benchmarks read.
#pragma once

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace v5::bench {

// Every key of a [DahsN] section.
inline std::vector<std::string> SiteKeys() {
    std::istringstream names(
        "SiteID LanguageID DahsComputerName DahsDescription HDR AutoOutputEnabled TraceEnabled LogFlushEnabled "
        "ReportsURL VantorDir LogsDir RedundantDasRole RedundantDasSyncStagingEnabled RedundantDasSyncCompareEnabled "
        "RedundantDASSyncMergeEnabled DRCurrentHealthTimeouts BackupDir");
    std::vector<std::string> keys(std::istream_iterator<std::string>(names), {});
    for (const char* form : {"", "Noninteractive", ".NET", "Noninteractive.NET"}) {
        for (const char* database : {"Alarms", "Config", "Data", "DataShortTerm", "Realtime", "Ostra"}) {
            keys.push_back(std::string("SQL") + database + form);
        }
    }
    return keys;
}

// `folder` is the entries' own folder and their logs'.
inline std::string SiteFile(const std::string& folder) {
    std::string file;
    for (int number = 1; number <= 99; ++number) {
        const std::string n = std::to_string(number);
        file += "[Dahs" + n + "]\r\n";
        for (const std::string& key : SiteKeys()) {
            const std::string value = key == "SiteID"                          ? "SITE" + n
                                      : key == "DahsComputerName"              ? "DAS-" + n
                                      : key == "AutoOutputEnabled"             ? "yes,30"
                                      : key == "RedundantDasRole"              ? "Standalone"
                                      : key == "VantorDir" || key == "LogsDir" ? folder
                                      : key.starts_with("SQL")                 ? "Server=S" + n
                                      : key.ends_with("Enabled")               ? "YES"
                                                                               : "text " + n;
            file += key + "=" + value + "\r\n";
        }
    }
    return file + "[AffinityMasks]\r\nIOS=0x0F\r\nDR=1\r\nDM=2\r\nRG=4\r\nDBE=8\r\n";
}

}  // namespace v5::bench
