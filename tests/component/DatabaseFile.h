// A database file of the devkit for one test, and another program that has it open.
#pragma once

#include <windows.h>
#include <gtest/gtest.h>

#include <sqlite3.h>

#include <string>
#include <vector>

namespace v5::test {

// The name of a file that is not there yet; what has come to be there is deleted at the end.
class DatabaseFile {
  public:
    DatabaseFile() {
        wchar_t folder[MAX_PATH], file[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        GetTempFileNameW(folder, L"v5d", 0, file);
        DeleteFileW(file);
        mPath = file;
    }
    ~DatabaseFile() { DeleteFileW(mPath.c_str()); }
    DatabaseFile(const DatabaseFile&) = delete;
    DatabaseFile& operator=(const DatabaseFile&) = delete;

    const std::wstring& Path() const { return mPath; }

    // Connection strings for a Windows user and for a SQL login.
    std::wstring WindowsLogin() const { return L"Data Source=" + mPath + L";Integrated Security=SSPI"; }
    std::wstring SqlLogin(const std::wstring& user) const { return L"Data Source=" + mPath + L";User ID=" + user; }

  private:
    std::wstring mPath;
};

// Another program's connection to the same file. After "BEGIN IMMEDIATE" nobody else can write, after "BEGIN EXCLUSIVE"
// nobody else can read, until "COMMIT". With "Connect Timeout=0" in its connection string the component fails at once.
class OtherProgram {
  public:
    explicit OtherProgram(const std::wstring& path) {
        EXPECT_EQ(sqlite3_open16(path.c_str(), &mConnection), SQLITE_OK);
    }
    ~OtherProgram() { sqlite3_close(mConnection); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    // The engine's result code: SQLITE_OK, SQLITE_CONSTRAINT …
    int Execute(const char* sql) { return sqlite3_exec(mConnection, sql, nullptr, nullptr, nullptr); }

    // The rows of a query, the columns of each behind one another with a blank between.
    std::vector<std::wstring> Rows(const char* sql) {
        std::vector<std::wstring> rows;
        sqlite3_stmt* query = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(mConnection, sql, -1, &query, nullptr), SQLITE_OK);
        while (sqlite3_step(query) == SQLITE_ROW) {
            std::wstring row;
            for (int column = 0; column < sqlite3_column_count(query); ++column) {
                const auto* text = static_cast<const wchar_t*>(sqlite3_column_text16(query, column));
                row += (column > 0 ? L" " : L"") + std::wstring(text != nullptr ? text : L"");
            }
            rows.push_back(row);
        }
        sqlite3_finalize(query);
        return rows;
    }

  private:
    sqlite3* mConnection = nullptr;
};

}  // namespace v5::test
