// What the user asks v5site for.
#pragma once

#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace v5site {

enum class Command { Help, Version, Check, List, Show, Why, Diff, Log, Security };

struct CommandLine {
    Command command = Command::Help;
    std::optional<std::wstring> file;    // this site file, not the one that programs find
    std::wstring files[2];               // diff: the two files
    std::vector<std::wstring> logs;      // log: the files
    std::wstring from, to;               // log: the lines of this time, yyyy-MM-dd[ HH:mm[:ss]]; empty: all
    std::wstring grep;                   // log: the lines that hold this text
    std::optional<long> dahsID;          // show, why, security: this DAHS, not the first
    std::optional<std::wstring> siteID;  // show, security: the first DAHS of this site
    bool noninteractive = false;
    bool dotNet = false;
    bool json = false;
    bool showPasswords = false;
    bool strict = false;               // check: a remark is a problem, too
    std::wstring since;                // security: changes from this time on, yyyy-MM-dd[ HH:mm[:ss]]
    std::optional<long> page;          // security: so many pages of changes back; 1: the latest
    std::optional<std::wstring> user;  // security: this user's changes
    std::optional<long> may;           // security: who may do what this restriction guards
    bool all = false;                  // security: every change, not the last ones only
};

// Why the tool cannot do what it was asked for, in Unicode.
class Error : public std::exception {
  public:
    explicit Error(std::wstring what) : mWhat(std::move(what)) {}
    const char* what() const noexcept override { return "v5site cannot do this"; }
    const std::wstring& What() const { return mWhat; }

  private:
    std::wstring mWhat;
};

// Understands the arguments after the program's name. Throws Error.
CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments);

// The text of --help.
extern const wchar_t kHelpText[];

}  // namespace v5site
