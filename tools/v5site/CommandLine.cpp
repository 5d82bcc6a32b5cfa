#include "CommandLine.h"

#include <utility>

namespace v5site {

const wchar_t kHelpText[] =
    LR"(v5site - look at the site configuration file Vantor5.INI as the product's programs see it

Usage:
  v5site check [--json]
      Read the file, print every finding, with the line of the file that it is about, and which DAHS entries are
      usable.
  v5site list [--json]
      Print a table of the usable entries: id, site, role, computer, local or remote, description.
  v5site show [--dahs N | --site ID] [--noninteractive] [--dotnet] [--json] [--show-passwords]
      Print the settings, folders and connection strings of one DAHS.
  v5site security [--dahs N | --site ID] [--noninteractive] [--json]
      Print the user security of one DAHS's site: whether it is on, who is on which list, what level each restricted
      operation needs, and the last changes.

Options:
  --dahs N           the DAHS of section [DahsN]; without --dahs and --site, the first usable one
  --site ID          the first DAHS of a site (the first 10 characters of ID count, in any case)
  --noninteractive   connection strings for programs without a user, such as services
  --dotnet           connection strings for the .NET data provider
  --json             print JSON, for other programs
  --show-passwords   print passwords in connection strings instead of ***
  --help, --version  print this text, or the version, and end

The file is looked for where every program of the product looks: in the folder that the environment variable
VANTOR5_SYSTEM_FOLDER names and in its parents, then beside V5Strings.dll and above. Reading creates missing
folders of the first DAHS, as it does for every program. Output is UTF-8 when it is not a console.

Exit status:
  0  all is well
  1  check: there are problems, but at least one DAHS is usable; security: some of it could not be read
  2  there is no file, no usable DAHS, or not the one that was asked for; security: its databases cannot be opened
  3  the command line is wrong, or V5Strings.dll is not registered
)";

namespace {

Command CommandFrom(const std::wstring& word) {
    constexpr std::pair<const wchar_t*, Command> kCommands[] = {
        {L"check", Command::kCheck},       {L"list", Command::kList}, {L"show", Command::kShow},
        {L"--help", Command::kHelp},       {L"-h", Command::kHelp},   {L"/?", Command::kHelp},
        {L"--version", Command::kVersion}, {L"help", Command::kHelp}, {L"security", Command::kSecurity},
    };
    for (const auto& [name, command] : kCommands) {
        if (word == name) {
            return command;
        }
    }
    throw UsageError(L"there is no command '" + word + L"'");
}

long DahsIdFrom(const std::wstring& text) {
    size_t used = 0;
    long value = 0;
    try {
        value = std::stol(text, &used);
    } catch (const std::logic_error&) {
        used = 0;
    }
    if (used == 0 || used != text.size() || value < 1) {
        throw UsageError(L"--dahs needs the number of a DAHS, not '" + text + L"'");
    }
    return value;
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments) {
    CommandLine line;
    if (arguments.empty()) {
        throw UsageError(L"a command is missing");
    }
    line.command = CommandFrom(arguments[0]);
    const bool isShow = line.command == Command::kShow;
    const bool isForOneDahs = isShow || line.command == Command::kSecurity;
    struct Switch {
        const wchar_t* name;
        bool isAllowed;
        bool CommandLine::*flag;
    };
    const Switch switches[] = {{L"--json", true, &CommandLine::json},
                               {L"--noninteractive", isForOneDahs, &CommandLine::noninteractive},
                               {L"--dotnet", isShow, &CommandLine::dotNet},
                               {L"--show-passwords", isShow, &CommandLine::showPasswords}};
    for (size_t i = 1; i < arguments.size(); ++i) {
        const std::wstring& word = arguments[i];
        if (word == L"--help" || word == L"-h") {
            line.command = Command::kHelp;
            return line;
        }
        if (isForOneDahs && (word == L"--dahs" || word == L"--site")) {
            if (i + 1 == arguments.size()) {
                throw UsageError(L"a value is missing after " + word);
            }
            const std::wstring& value = arguments[++i];
            if (word == L"--dahs") {
                line.dahsId = DahsIdFrom(value);
            } else {
                line.siteId = value;
            }
            continue;
        }
        bool known = false;
        for (const Switch& option : switches) {
            if (word == option.name && option.isAllowed) {
                line.*option.flag = true;
                known = true;
            }
        }
        if (!known) {
            throw UsageError(L"'" + word + L"' is no option of " + arguments[0]);
        }
    }
    if (line.dahsId && line.siteId) {
        throw UsageError(L"--dahs and --site exclude each other");
    }
    return line;
}

}  // namespace v5site
