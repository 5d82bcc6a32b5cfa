#include "v5dbil/Site.h"

#include <utility>

#include "base/Numbers.h"
#include "base/Text.h"

namespace v5::devkit {

namespace {

constexpr std::int32_t kServerLevel = 0;
constexpr std::wstring_view kServerTable = L"SERVER";
constexpr std::wstring_view kAllowSqlLogins = L"AllowSqlLogins";

ConnectionSettings ParseComplete(std::wstring_view connectionString) {
    ConnectionSettings settings = ParseConnectionString(connectionString);
    if (settings.dataSource.empty()) {
        throw DatabaseError(L"the connection string names no data source");
    }
    if (!settings.windowsAuthentication && settings.userId.empty()) {
        throw DatabaseError(L"the connection string for '" + settings.dataSource +
                            L"' has neither a user ID nor integrated security");
    }
    return settings;
}

// See Site::AllowsSqlLogins. A site without the row, or with other text in it, accepts them.
bool SqlLoginsAllowed(Database& database, std::wstring_view site) {
    return ToBoolean(database.ReadLookup({site, kServerLevel, kServerTable, kAllowSqlLogins})).value_or(true);
}

}  // namespace

Site::Site(std::wstring id, std::wstring config, std::wstring_view alarms)
    : mId(std::move(id)), mConfigString(std::move(config)), mConfigSettings(ParseComplete(mConfigString)) {
    if (Trim(alarms).empty()) {
        return;
    }
    ConnectionSettings settings = ParseComplete(alarms);
    if (!EqualsIgnoreCase(settings.dataSource, mConfigSettings.dataSource)) {
        mAlarmsSettings = std::move(settings);
    }
}

void Site::Open() {
    LogOn();
    mOpen = true;
}

void Site::Close() {
    ForgetLogons();
    mOpen = false;
}

void Site::ForgetLogons() {
    mConfig.reset();
    mAlarms.reset();
}

Database& Site::Config() {
    if (!mOpen) {
        throw DatabaseError(L"the site is not open");
    }
    return LogOn();
}

Database& Site::EventLog() {
    Database& config = Config();
    return mAlarms ? *mAlarms : config;
}

std::wstring Site::CurrentUser() {
    Config();
    return mConfigSettings.windowsAuthentication ? std::wstring() : mConfigSettings.userId;
}

bool Site::AllowsSqlLogins() {
    return SqlLoginsAllowed(Config(), mId);
}

Database& Site::LogOn() {
    if (mConfig) {
        return *mConfig;
    }
    Database config = Connect(mConfigSettings);
    if (mAlarmsSettings) {
        mAlarms = Connect(*mAlarmsSettings);
    }
    return mConfig.emplace(std::move(config));
}

Database Site::Connect(const ConnectionSettings& settings) const {
    try {
        Database database(settings.dataSource, settings.busyTimeout);
        if (!settings.windowsAuthentication && !SqlLoginsAllowed(database, mId)) {
            throw DatabaseError(L"the server does not accept SQL logins");
        }
        return database;
    } catch (const DatabaseError& error) {
        throw DatabaseError(L"cannot log on to '" + settings.dataSource + L"': " + error.Reason());
    }
}

}  // namespace v5::devkit
