// One site as the database interface knows it: its connection strings, and its databases while somebody is logged on.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "v5dbil/ConnectionString.h"
#include "v5dbil/Database.h"

namespace v5::devkit {

// Operations throw DatabaseError, with a reason that names the database file.
class Site {
  public:
    // An empty `alarms` says that the configuration database holds the event log too. Throws when `config` names no
    // database file.
    Site(std::wstring id, std::wstring config, std::wstring_view alarms);

    const std::wstring& Id() const { return mId; }
    const std::wstring& ConnectionString() const { return mConfigString; }

    // Logs on to the site's databases; does nothing when that is done. Fails when a connection string asks neither
    // for Windows authentication nor for a SQL login, when the server refuses SQL logins, or when a file cannot be
    // opened.
    void Open();

    // Logs off and closes the site.
    void Close();

    // Logs off; an open site logs on again when it is next used.
    void ForgetLogons();

    // The database of lookup rows, and the one of the event log. Throw when the site is not open.
    Database& Config();
    Database& EventLog();

    // The SQL login; empty with Windows authentication. Throws when the site is not open.
    std::wstring CurrentUser();

    // Whether the server accepts SQL logins: it does, unless lookup row (site, level 0, table "SERVER",
    // key "AllowSqlLogins") says False or 0. Throws when the site is not open.
    bool AllowsSqlLogins();

  private:
    Database& LogOn();
    Database Connect(const ConnectionSettings& settings) const;

    std::wstring mId;
    std::wstring mConfigString;
    ConnectionSettings mConfigSettings;
    std::optional<ConnectionSettings> mAlarmsSettings;  // when the event log is elsewhere
    bool mOpen = false;
    std::optional<Database> mConfig;
    std::optional<Database> mAlarms;
};

}  // namespace v5::devkit
