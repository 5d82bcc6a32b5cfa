// A site file of 99 entries with every key, about 120 kB: what the site benchmarks read.
#pragma once

#include <string>

namespace v5::bench {

inline constexpr const char* kSiteKeys[] = {"SiteID",
                                            "LanguageID",
                                            "DahsComputerName",
                                            "DahsDescription",
                                            "HDR",
                                            "AutoOutputEnabled",
                                            "TraceEnabled",
                                            "LogFlushEnabled",
                                            "ReportsURL",
                                            "VantorDir",
                                            "LogsDir",
                                            "RedundantDasRole",
                                            "RedundantDasSyncStagingEnabled",
                                            "RedundantDasSyncCompareEnabled",
                                            "RedundantDASSyncMergeEnabled",
                                            "DRCurrentHealthTimeouts",
                                            "SQLAlarms",
                                            "SQLConfig",
                                            "SQLData",
                                            "SQLDataShortTerm",
                                            "SQLRealtime",
                                            "SQLOstra",
                                            "SQLAlarmsNoninteractive",
                                            "SQLConfigNoninteractive",
                                            "SQLDataNoninteractive",
                                            "SQLDataShortTermNoninteractive",
                                            "SQLRealtimeNoninteractive",
                                            "SQLOstraNoninteractive",
                                            "SQLAlarms.NET",
                                            "SQLConfig.NET",
                                            "SQLData.NET",
                                            "SQLDataShortTerm.NET",
                                            "SQLRealtime.NET",
                                            "SQLOstra.NET",
                                            "SQLAlarmsNoninteractive.NET",
                                            "SQLConfigNoninteractive.NET",
                                            "SQLDataNoninteractive.NET",
                                            "SQLDataShortTermNoninteractive.NET",
                                            "SQLRealtimeNoninteractive.NET",
                                            "SQLOstraNoninteractive.NET",
                                            "BackupDir"};

// `folder` is the entries' own folder and their logs'.
inline std::string SiteFile(const std::string& folder) {
    std::string file;
    for (int number = 1; number <= 99; ++number) {
        const std::string n = std::to_string(number);
        file += "[Dahs" + n + "]\r\n";
        for (const std::string key : kSiteKeys) {
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
