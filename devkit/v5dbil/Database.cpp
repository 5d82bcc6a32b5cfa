#include "v5dbil/Database.h"

#include <sqlite3.h>

#include <algorithm>

namespace v5::devkit {

namespace {

static_assert(sizeof(wchar_t) == 2, "texts go to the engine as UTF-16");

// Version 1 of the file's tables, as `PRAGMA user_version` records it.
constexpr int kSchemaVersion = 1;
constexpr const char* kSchema = R"(
    CREATE TABLE IF NOT EXISTS lookup(
        site TEXT NOT NULL, level INTEGER NOT NULL, name TEXT NOT NULL, key TEXT NOT NULL, value TEXT NOT NULL,
        PRIMARY KEY (site, level, name, key)) STRICT, WITHOUT ROWID;
    CREATE TABLE IF NOT EXISTS event_log(
        number INTEGER PRIMARY KEY AUTOINCREMENT, site TEXT NOT NULL, time REAL NOT NULL, text TEXT NOT NULL,
        category TEXT NOT NULL, kind INTEGER NOT NULL, source TEXT NOT NULL, tag TEXT NOT NULL) STRICT;
    CREATE TRIGGER IF NOT EXISTS event_log_keeps_records BEFORE DELETE ON event_log
        BEGIN SELECT RAISE(ABORT, 'records of the event log are never removed'); END;
    CREATE TRIGGER IF NOT EXISTS event_log_keeps_contents BEFORE UPDATE ON event_log
        BEGIN SELECT RAISE(ABORT, 'records of the event log are never changed'); END;
    PRAGMA user_version = 1;)";

std::wstring Wide(const void* utf16, int bytes) {
    return {static_cast<const wchar_t*>(utf16), static_cast<size_t>(bytes) / sizeof(wchar_t)};
}

[[noreturn]] void ThrowLastError(sqlite3* connection) {
    const auto* reason = static_cast<const wchar_t*>(sqlite3_errmsg16(connection));
    throw DatabaseError(reason != nullptr ? reason : L"out of memory");
}

// One use of a prepared statement: binds parameters in order, steps, reads columns in order, and resets at its end.
class Use {
  public:
    Use(sqlite3* connection, sqlite3_stmt* statement) : mConnection(connection), mStatement(statement) {}
    ~Use() {
        sqlite3_reset(mStatement);
        sqlite3_clear_bindings(mStatement);
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

    // The text must outlive this object: it is not copied.
    Use& Bind(std::wstring_view text) {
        const wchar_t* data = text.data() != nullptr ? text.data() : L"";  // a null pointer would bind NULL
        return Checked(sqlite3_bind_text64(mStatement, ++mBound, reinterpret_cast<const char*>(data),
                                           text.size() * sizeof(wchar_t), SQLITE_STATIC, SQLITE_UTF16LE));
    }
    Use& Bind(std::int32_t number) { return Checked(sqlite3_bind_int(mStatement, ++mBound, number)); }
    Use& Bind(double number) { return Checked(sqlite3_bind_double(mStatement, ++mBound, number)); }

    // Whether there is a next row.
    bool Step() {
        mColumn = 0;
        const int result = sqlite3_step(mStatement);
        if (result != SQLITE_ROW && result != SQLITE_DONE) {
            ThrowLastError(mConnection);
        }
        return result == SQLITE_ROW;
    }

    std::int32_t NextLong() { return sqlite3_column_int(mStatement, mColumn++); }
    double NextDouble() { return sqlite3_column_double(mStatement, mColumn++); }
    std::wstring NextText() {
        const void* text = sqlite3_column_text16(mStatement, mColumn);
        return Wide(text, sqlite3_column_bytes16(mStatement, mColumn++));
    }

  private:
    Use& Checked(int result) {
        if (result != SQLITE_OK) {
            ThrowLastError(mConnection);
        }
        return *this;
    }

    sqlite3* mConnection;
    sqlite3_stmt* mStatement;
    int mBound = 0;
    int mColumn = 0;
};

}  // namespace

void Database::Closer::operator()(sqlite3* connection) const {
    sqlite3_close(connection);
}
void Database::Closer::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

Database::Database(const std::wstring& path, std::chrono::milliseconds busyTimeout) {
    sqlite3* connection = nullptr;
    const int result = sqlite3_open16(path.c_str(), &connection);  // a new file keeps texts as UTF-16
    mConnection.reset(connection);
    if (result != SQLITE_OK) {
        ThrowLastError(connection);
    }
    sqlite3_busy_timeout(connection, static_cast<int>(busyTimeout.count()));
    CreateTables();
    mReadLookup = Prepare("SELECT value FROM lookup WHERE site = ? AND level = ? AND name = ? AND key = ?");
    mWriteLookup = Prepare(
        "INSERT INTO lookup(site, level, name, key, value) VALUES(?, ?, ?, ?, ?)"
        " ON CONFLICT DO UPDATE SET value = excluded.value");
    mAppendEvent =
        Prepare("INSERT INTO event_log(site, time, text, category, kind, source, tag) VALUES(?, ?, ?, ?, ?, ?, ?)");
    mReadEvents = Prepare(
        "SELECT number, time, text, category, kind, source, tag FROM event_log WHERE site = ?"
        " ORDER BY number DESC LIMIT ?");
}

Database::Database(Database&&) noexcept = default;
Database& Database::operator=(Database&&) noexcept = default;
Database::~Database() = default;

std::wstring Database::ReadLookup(const LookupKey& key) {
    Use use(mConnection.get(), mReadLookup.get());
    use.Bind(key.site).Bind(key.level).Bind(key.table).Bind(key.key);
    return use.Step() ? use.NextText() : std::wstring();
}

void Database::WriteLookup(const LookupKey& key, std::wstring_view value) {
    Use use(mConnection.get(), mWriteLookup.get());
    use.Bind(key.site).Bind(key.level).Bind(key.table).Bind(key.key).Bind(value);
    use.Step();
}

void Database::AppendEvent(std::wstring_view site, const EventRecord& record) {
    Use use(mConnection.get(), mAppendEvent.get());
    use.Bind(site).Bind(record.time).Bind(record.text).Bind(record.category).Bind(record.kind);
    use.Bind(record.source).Bind(record.tag);
    use.Step();
}

std::vector<EventRecord> Database::ReadEvents(std::wstring_view site, std::int32_t count) {
    Use use(mConnection.get(), mReadEvents.get());
    use.Bind(site).Bind(count > 0 ? count : -1);  // -1: no limit
    std::vector<EventRecord> records;
    while (use.Step()) {
        EventRecord& record = records.emplace_back();
        record.number = use.NextLong();
        record.time = use.NextDouble();
        record.text = use.NextText();
        record.category = use.NextText();
        record.kind = use.NextLong();
        record.source = use.NextText();
        record.tag = use.NextText();
    }
    std::reverse(records.begin(), records.end());
    return records;
}

void Database::Execute(const char* sql) {
    if (sqlite3_exec(mConnection.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        ThrowLastError(mConnection.get());
    }
}

void Database::CreateTables() {
    const auto version = [this] {
        const Statement statement = Prepare("PRAGMA user_version");
        Use use(mConnection.get(), statement.get());
        use.Step();
        return use.NextLong();
    };
    if (version() == 0) {
        Execute("BEGIN IMMEDIATE");  // two programs may find the file new at the same time
        Execute(kSchema);
        Execute("COMMIT");
    } else if (version() != kSchemaVersion) {
        throw DatabaseError(L"the file was written by another version");
    }
}

Database::Statement Database::Prepare(const char* sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v3(mConnection.get(), sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) != SQLITE_OK) {
        ThrowLastError(mConnection.get());
    }
    return Statement(statement);
}

}  // namespace v5::devkit
