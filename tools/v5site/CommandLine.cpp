#include "CommandLine.h"

#include <stdexcept>
#include <utility>

namespace v5site {

const wchar_t kHelpText[] =
    LR"(NAME
  v5site - look at the site configuration file Vantor5.INI as the product's programs see it

SYNOPSIS
  v5site check    [--json]
  v5site list     [--json]
  v5site show     [--dahs N | --site ID] [--noninteractive] [--dotnet] [--json] [--show-passwords]
  v5site security [--dahs N | --site ID] [--noninteractive] [--all] [--json]
  v5site --help | --version

DESCRIPTION
  Asks V5Strings.dll, the library that every program of the product uses, for the site file, and prints what it
  answers. What v5site shows is therefore what those programs get on this computer.

  The first word says what to do:

  check      Reads the file and prints every finding, with the number of the line that it is about where there is
             one, then the DAHS entries that are usable. For support, and for scripts after the file was changed.
  list       Prints a table of the usable entries: id, site, role, computer, local or remote, description.
  show       Prints the settings, folders and connection strings of one DAHS.
  security   Prints the user security of the site of one DAHS: whether it is on, the current user and that user's
             level, who is on which list, what level each restricted operation needs, and the last changes.

OPTIONS
  --dahs N           The DAHS of section [DahsN], N from 1. Without --dahs and --site, the first usable one.
  --site ID          The first usable DAHS of a site. The first 10 characters of ID count, in any case.
  --noninteractive   Connection strings for programs without a user, such as services.
  --dotnet           Connection strings for the .NET data provider, not for OLE DB.
  --json             Print one JSON object, for other programs; see OUTPUT.
  --all              Print every recorded change, not the last 20 only. With --json they are always all there.
  --show-passwords   Print the passwords in settings, not ***. Take care where the output goes.
  -h, --help, help   Print this text and end. Also after a command.
  --version          Print the version and end.

OUTPUT
  Results go to the standard output, messages to the standard error. Both are UTF-8 when they are no console.

  With --json, the object has these members:

  check      file, status (the exit status), findings, lines (of the findings, in the same order; 0: no line),
             usable (entries as in list)
  list       file, entries: each with dahs, site, role, computer, remote, description
  show       file, settings, folders, connections: each an object of names and values
  security   site, status and userLevel (number and name), user, lists (level1, level2, level3), minimums
             (restriction, name, level, levelName), changesRead (whether the event log could
             be read), changes (all of them: time, tag, text), messages
  failures   status (the exit status), messages: why the command could not do its work

ENVIRONMENT
  VANTOR5_SYSTEM_FOLDER
             The folder where the search for the file begins; see FILES.

FILES
  Vantor5.INI
             Looked for where every program of the product looks: in the folder that VANTOR5_SYSTEM_FOLDER names
             and in its parents, then beside V5Strings.dll and above. The file is never written. Reading it makes
             missing folders of the first DAHS, as it does for every program.

EXIT STATUS
  0  All is well.
  1  check: there are problems, but at least one DAHS is usable. security: some of it could not be read.
  2  There is no file, no usable DAHS, or not the one that was asked for. security: its databases cannot be opened.
  3  The command line is wrong, V5Strings.dll is not registered, or the output could not be written.

EXAMPLES
  v5site check
             What is wrong with the file, and in which line?
  v5site show --site BRENN --dotnet
             What does a .NET program get that works for site BRENN?
  v5site list --json > entries.json
             The entries for another program.
  v5site check --json > nul || echo The site file needs attention.
             In a batch file, after an installation.

SEE ALSO
  docs\site-file.md (sections, keys and defaults), docs\messages.md (what each finding means and what to do) and
  docs\security.md (levels, restrictions and lists), in the zip packages of V5Strings.
)";

namespace {

// A command line that cannot be understood, with the way out.
Error Wrong(const std::wstring& what) {
    return Error(what + L"\nTry 'v5site --help'.");
}

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
    throw Wrong(L"there is no command '" + word + L"'");
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
        throw Wrong(L"--dahs needs the number of a DAHS, not '" + text + L"'");
    }
    return value;
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments) {
    CommandLine line;
    if (arguments.empty()) {
        throw Wrong(L"a command is missing");
    }
    line.command = CommandFrom(arguments[0]);
    const bool isShow = line.command == Command::kShow;
    const bool isForOneDahs = isShow || line.command == Command::kSecurity;
    using Flag = bool CommandLine::*;
    struct Switch {
        const wchar_t* name;
        bool isAllowed;
        Flag flag;
    };
    const Switch switches[] = {{L"--json", true, &CommandLine::json},
                               {L"--noninteractive", isForOneDahs, &CommandLine::noninteractive},
                               {L"--dotnet", isShow, &CommandLine::dotNet},
                               {L"--show-passwords", isShow, &CommandLine::showPasswords},
                               {L"--all", line.command == Command::kSecurity, &CommandLine::all}};
    for (size_t i = 1; i < arguments.size(); ++i) {
        const std::wstring& word = arguments[i];
        if (word == L"--help" || word == L"-h" || word == L"/?" || word == L"help") {
            line.command = Command::kHelp;
            return line;
        }
        if (isForOneDahs && (word == L"--dahs" || word == L"--site")) {
            if (i + 1 == arguments.size() || arguments[i + 1].starts_with(L"-")) {
                throw Wrong(L"a value is missing after " + word);
            }
            const std::wstring& value = arguments[++i];
            if (word == L"--dahs") {
                line.dahsID = DahsIdFrom(value);
            } else {
                line.siteID = value;
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
            throw Wrong(L"'" + word + L"' is no option of " + arguments[0]);
        }
    }
    if (line.dahsID && line.siteID) {
        throw Wrong(L"--dahs and --site exclude each other");
    }
    return line;
}

}  // namespace v5site
