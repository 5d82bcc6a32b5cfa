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
    : id_(std::move(id)), configString_(std::move(config)), configSettings_(ParseComplete(configString_)) {
    if (Trim(alarms).empty()) {
        return;
    }
    ConnectionSettings settings = ParseComplete(alarms);
    if (!EqualsIgnoreCase(settings.dataSource, configSettings_.dataSource)) {
        alarmsSettings_ = std::move(settings);
    }
}

void Site::Open() {
    LogOn();
    open_ = true;
}

void Site::Close() {
    ForgetLogons();
    open_ = false;
}

void Site::ForgetLogons() {
    config_.reset();
    alarms_.reset();
}

Database& Site::Config() {
    if (!open_) {
        throw DatabaseError(L"the site is not open");
    }
    LogOn();
    return *config_;
}

Database& Site::EventLog() {
    Database& config = Config();
    return alarms_ ? *alarms_ : config;
}

std::wstring Site::CurrentUser() {
    Config();
    return configSettings_.windowsAuthentication ? std::wstring() : configSettings_.userId;
}

bool Site::AllowsSqlLogins() {
    return SqlLoginsAllowed(Config(), id_);
}

void Site::LogOn() {
    if (config_) {
        return;
    }
    Database config = Connect(configSettings_);
    if (alarmsSettings_) {
        alarms_ = Connect(*alarmsSettings_);
    }
    config_ = std::move(config);
}

Database Site::Connect(const ConnectionSettings& settings) const {
    try {
        Database database(settings.dataSource, settings.busyTimeout);
        if (!settings.windowsAuthentication && !SqlLoginsAllowed(database, id_)) {
            throw DatabaseError(L"the server does not accept SQL logins");
        }
        return database;
    } catch (const DatabaseError& error) {
        throw DatabaseError(L"cannot log on to '" + settings.dataSource + L"': " + error.Reason());
    }
}

}  // namespace v5::devkit
