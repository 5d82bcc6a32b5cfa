// What a database connection string asks for, in OLE DB or in .NET form.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace v5::devkit {

struct ConnectionSettings {
    std::wstring dataSource;  // path of the database file
    std::wstring userId;      // SQL login; empty when the text names none
    bool windowsAuthentication = false;
    std::chrono::milliseconds busyTimeout{5000};  // how long an operation waits for another program's lock
};

// Reads `key=value` settings between semicolons. Keys are compared without regard to case, blanks around keys and
// values are ignored, a value may stand in single or double quotes, and the last of several settings with one key
// counts. Known keys: Data Source or Server; User ID or UID; Integrated Security (SSPI, true, yes) or
// Trusted_Connection; Connect Timeout (whole seconds, at most 600; anything else leaves the default). Other settings
// are passed over.
ConnectionSettings ParseConnectionString(std::wstring_view text);

}  // namespace v5::devkit
