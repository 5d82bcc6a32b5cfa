// One database file with the two tables that the devkit keeps: lookup rows and the event log.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace v5::devkit {

// What every operation below throws when the database engine refuses; the words are the engine's own.
class DatabaseError : public std::exception {
  public:
    explicit DatabaseError(std::wstring reason) : mReason(std::move(reason)) {}
    const std::wstring& Reason() const { return mReason; }
    const char* what() const noexcept override { return "database error"; }

  private:
    std::wstring mReason;
};

// The address of one lookup row. All four parts are compared exactly.
struct LookupKey {
    std::wstring_view site;
    std::int32_t level;
    std::wstring_view table;
    std::wstring_view key;
};

struct EventRecord {
    std::int32_t number = 0;  // given by the database when the record is appended
    double time = 0;          // automation date, kept bit for bit
    std::wstring text;
    std::wstring category;
    std::int32_t kind = 0;
    std::wstring source;
    std::wstring tag;
};

// Texts are kept as they come, UTF-16 unit by unit, of any length. Every write is a transaction of its own.
class Database {
  public:
    // Opens the file, and makes it and its tables when they are not there. `busyTimeout` is how long each operation
    // waits while another connection holds the lock, before it fails.
    Database(const std::wstring& path, std::chrono::milliseconds busyTimeout);
    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    ~Database();

    // The row's text; empty when there is no such row.
    std::wstring ReadLookup(const LookupKey& key);

    // Writes the row in place of an older one.
    void WriteLookup(const LookupKey& key, std::wstring_view value);

    // Appends a record; its `number` is ignored.
    void AppendEvent(std::wstring_view site, const EventRecord& record);

    // The site's newest `count` records (all of them when `count` is not positive), oldest first.
    std::vector<EventRecord> ReadEvents(std::wstring_view site, std::int32_t count);

  private:
    struct Closer {
        void operator()(sqlite3* connection) const;
        void operator()(sqlite3_stmt* statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Closer>;

    void Execute(const char* sql);
    void CreateTables();
    Statement Prepare(const char* sql);

    std::unique_ptr<sqlite3, Closer> mConnection;
    Statement mReadLookup, mWriteLookup, mAppendEvent, mReadEvents;  // destroyed before the connection is closed
};

}  // namespace v5::devkit
