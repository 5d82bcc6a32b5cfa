// The database interface component and the account information component, as the security rules use them: ports.
// An operation that cannot do its work throws AutomationError, unless it says that it answers false.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/AutomationError.h"
#include "base/Dates.h"

namespace v5 {

// One record of a site's event log.
struct EventRecord {
    std::wstring text;
    std::wstring_view category;
    std::int32_t kind;
    std::wstring_view tag;
};

struct SiteConnection {
    std::wstring siteID;
    std::wstring languageID;
    std::wstring configDatabase;  // connection strings
    std::wstring alarmsDatabase;
    bool isNoninteractive = false;
};

class SiteDatabase {
  public:
    virtual ~SiteDatabase() = default;

    // The three steps that make the database ready, in this order. Each answers false when it failed.
    virtual bool SetApplicationName(std::wstring_view name) = 0;
    virtual bool Initialise(const SiteConnection& connection) = 0;
    virtual bool OpenSite(std::wstring_view siteID) = 0;

    virtual void Close() = 0;
    virtual void ForgetLogons(std::wstring_view siteID) = 0;

    // The value of one row of the site's lookup table, empty when there is no such row. Writing answers false when
    // it failed; the row then keeps its old value.
    virtual std::wstring ReadLookup(std::wstring_view siteID, std::wstring_view key) = 0;
    virtual bool WriteLookup(std::wstring_view siteID, std::wstring_view key, std::wstring_view value) = 0;

    // Appends a record to the site's event log. Answers false when it failed.
    virtual bool WriteEvent(std::wstring_view siteID, const CivilDateTime& time, const EventRecord& record) = 0;

    // The SQL login in use for the site; empty with Windows authentication.
    virtual std::wstring CurrentUserName(std::wstring_view siteID) = 0;
    virtual std::wstring ConnectionString(std::wstring_view siteID) = 0;
    virtual bool UsesWindowsAuthentication(std::wstring_view connectionString) = 0;
    virtual bool AllowsSqlLogins(std::wstring_view siteID) = 0;
};

// The Windows account of the calling process.
class Accounts {
  public:
    virtual ~Accounts() = default;

    virtual std::wstring CurrentUserName() = 0;
    virtual std::wstring CurrentUserSid() = 0;
    virtual bool IsCurrentUserMemberOfGroup(std::wstring_view sid) = 0;
    virtual bool IsCurrentUserAnAdministrator() = 0;

    // "DOMAIN\name"; empty for a SID that no account has.
    virtual std::wstring AccountNameOfSid(std::wstring_view sid) = 0;
};

}  // namespace v5
