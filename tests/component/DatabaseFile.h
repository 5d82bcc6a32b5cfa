// A database file of the devkit for one test, and another program that has it open.
#pragma once

#include <windows.h>
#include <gtest/gtest.h>

#include <sqlite3.h>

#include <string>

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

  private:
    sqlite3* mConnection = nullptr;
};

}  // namespace v5::test
