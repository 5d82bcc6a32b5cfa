#include "CommandLine.h"

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace v5site {

const wchar_t kHelpText[] =
    LR"(NAME
  v5site - look at the site configuration file Vantor5.INI as the product's programs see it

SYNOPSIS
  v5site check    [--file PATH] [--strict] [--json]
  v5site list     [--file PATH] [--json]
  v5site show     [--file PATH] [--dahs N | --site ID] [--noninteractive] [--dotnet] [--json] [--show-passwords]
  v5site why      [--file PATH] [--dahs N | --site ID] [--json]
  v5site diff     A B [--json]
  v5site log      FILE... [--from TIME] [--to TIME] [--grep TEXT] [--json]
  v5site security [--file PATH] [--dahs N | --site ID] [--noninteractive] [--all | --page K] [--since TIME]
                  [--user NAME] [--may N] [--json]
  v5site --help | --version

DESCRIPTION
  Reads the site file by the rules of V5Strings.dll, the library that every program of the product uses, and prints
  what those programs get on this computer. But for security, nothing need be installed or registered, and nothing is
  written: no folder is made, no processor is set.

  The first word says what to do:

  check      Prints every finding of the library, with the number of the line that it is about where there is one,
             then remarks of v5site's own on what programs pass over without a word (a misspelt key, a second section
             of a name, a value that is no value), then the DAHS entries that are usable. For support, and for scripts
             after the file was changed.
  list       Prints a table of the usable entries: id, site, role, computer, local or remote, description.
  show       Prints the settings, folders and connection strings of one DAHS.
  why        Prints which file is read and why: the variable, each place that was tried, other site files in reach, the
             V5Strings.dll that programs of each width load, and for each DAHS why it is chosen, remote or dropped.
  diff       Prints what differs in effect between two site files: settings, folders and connection strings of every
             DAHS, not lines. Passwords are compared and never shown.
  log        Prints the logs of several programs in one order of time, each line behind its file's name: by time stamps,
             within a second by ticks. Lines that begin with !! mark what the lines do not say themselves: a restart, a
             run without its END line, an hour that the end of summer time repeats.
  security   Prints the user security of the site of one DAHS: whether it is on, the current user and that user's
             level, who is on which list, what level each restricted operation needs, and the last changes.

OPTIONS
  --file PATH        This site file, whatever its name and folder, not the one that programs find.
  --dahs N           The DAHS of section [DahsN], N from 1. Without --dahs and --site, the first usable one (why: all).
  --site ID          The first usable DAHS of a site. The first 10 characters of ID count, in any case.
  --noninteractive   Connection strings for programs without a user, such as services.
  --dotnet           Connection strings for the .NET data provider, not for OLE DB.
  --strict           check: remarks alone end with status 1, too.
  --json             Print one JSON object, for other programs; see OUTPUT.
  --all              Print every recorded change, not the last 20 only. With --json they are always all there.
  --page K           The changes page by page, 20 a page; page 1, the default, holds the last ones.
  --since TIME       The changes from this time on: 2014-03-05 or "2014-03-05 14:07:09".
  --user NAME        The changes that this user made, in any case of letters.
  --may N            Who may do what restriction N guards: whose level suffices, list by list.
  --from TIME, --to TIME
                     The lines of logs from and to this time. A line without a time belongs to the line before.
  --grep TEXT        The lines of logs that hold this text; the case of the letters A to Z is ignored.
  --show-passwords   Print the passwords in settings, not ***. Take care where the output goes.
  -h, --help, help   Print this text and end. Also after a command.
  --version          Print the version and end.

OUTPUT
  Results go to the standard output, messages to the standard error. Both are UTF-8 when they are no console.

  With --json, the object has the member schema (1; another number when a member changes its meaning) and these:

  check      file, status (the exit status), findings, lines (of the findings, in the same order; 0: no line), remarks
             (each with line, section, key, text), usable (entries as in list)
  list       file, entries (each with dahs, site, role, computer, remote, description), findings
  show       file, settings, folders, connections: each an object of names and values
  why        file, variable (process, user, computer), tried (path, found), others, libraries (width, path, version),
             computer, dahses (each with dahs, site, state, reasons)
  diff       status, files, differences (each with dahs, name, first, second; an empty name: the DAHS as a whole)
  log        lines: each with file, text and, where there is something to remark, remark
  security   site, status and userLevel (number and name), user, lists (level1, level2, level3), minimums
             (restriction, name, level, levelName), changesRead (whether the event log could
             be read), changes (all that were asked for: time, tag, text), may (with --may: who, level, names, may),
             messages
  failures   status (the exit status), messages: why the command could not do its work

ENVIRONMENT
  VANTOR5_SYSTEM_FOLDER
             The folder where the search for the file begins; see FILES.

FILES
  Vantor5.INI
             Looked for where every program of the product looks: in the folder that VANTOR5_SYSTEM_FOLDER names
             and in its parents, then beside the registered V5Strings.dll (v5site itself, where none is) and above.

EXIT STATUS
  0  All is well. diff: the files mean the same.
  1  check: there are problems, but at least one DAHS is usable. diff: there are differences. security: some of it
     could not be read.
  2  There is no file, no usable DAHS, or not the one that was asked for. security: its databases cannot be opened.
  3  The command line is wrong, the component that security asks is not registered, or the output could not be written.

EXAMPLES
  v5site check
             What is wrong with the file, and in which line?
  v5site check --file D:\Mail\Vantor5.INI
             The same of a file that a plant has sent, on any computer.
  v5site show --site BRENN --dotnet
             What does a .NET program get that works for site BRENN?
  v5site diff before.INI Vantor5.INI
             What has the change of the file really changed?
  v5site security --since 2014-03-01 --user "BRENN\miller"
             What has Miller changed in the security of the first site since March?
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

bool AsksForHelp(const std::wstring& word) {
    return word == L"--help" || word == L"-h" || word == L"/?" || word == L"help";
}

Command CommandFrom(const std::wstring& word) {
    if (AsksForHelp(word)) {
        return Command::Help;
    }
    constexpr std::pair<const wchar_t*, Command> kCommands[] = {
        {L"check", Command::Check},       {L"list", Command::List},         {L"show", Command::Show},
        {L"why", Command::Why},           {L"diff", Command::Diff},         {L"log", Command::Log},
        {L"security", Command::Security}, {L"--version", Command::Version},
    };
    for (const auto& [name, command] : kCommands) {
        if (word == name) {
            return command;
        }
    }
    throw Wrong(L"there is no command '" + word + L"'");
}

long NumberFrom(const std::wstring& option, const std::wstring& text) {
    size_t used = 0;
    long value = 0;
    try {
        value = std::stol(text, &used);
    } catch (const std::logic_error&) {
        used = 0;
    }
    if (used == 0 || used != text.size() || value < 1) {
        throw Wrong(option + L" needs a number from 1, not '" + text + L"'");
    }
    return value;
}

// A time as the records have it, or its first part: day, minute or second.
std::wstring TimeFrom(const std::wstring& option, const std::wstring& text) {
    constexpr std::wstring_view kForm = L"0000-00-00 00:00:00";
    bool fits = text.size() == 10 || text.size() == 16 || text.size() == kForm.size();
    for (size_t i = 0; fits && i < text.size(); ++i) {
        fits = kForm[i] == L'0' ? text[i] >= L'0' && text[i] <= L'9' : text[i] == kForm[i];
    }
    return fits ? text
                : throw Wrong(option + L" needs a time like 2014-03-05 or '2014-03-05 14:07:09', not '" + text + L"'");
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments) {
    CommandLine line;
    if (arguments.empty()) {
        throw Wrong(L"a command is missing");
    }
    line.command = CommandFrom(arguments[0]);
    const auto isFor = [&](std::initializer_list<Command> commands) {
        return std::find(commands.begin(), commands.end(), line.command) != commands.end();
    };
    const bool isForOneDahs = isFor({Command::Show, Command::Why, Command::Security});
    const bool readsOneFile = isForOneDahs || isFor({Command::Check, Command::List});
    using Flag = bool CommandLine::*;
    const struct {
        const wchar_t* name;
        bool isAllowed;
        Flag flag;
    } switches[] = {{L"--json", true, &CommandLine::json},
                    {L"--noninteractive", isFor({Command::Show, Command::Security}), &CommandLine::noninteractive},
                    {L"--dotnet", isFor({Command::Show}), &CommandLine::dotNet},
                    {L"--show-passwords", isFor({Command::Show}), &CommandLine::showPasswords},
                    {L"--strict", isFor({Command::Check}), &CommandLine::strict},
                    {L"--all", isFor({Command::Security}), &CommandLine::all}};
    const bool isSecurity = isFor({Command::Security}), isLog = isFor({Command::Log});
    const struct {
        const wchar_t* name;
        bool isAllowed;
        std::function<void(const std::wstring& name, const std::wstring& value)> take;
    } options[] = {{L"--dahs", isForOneDahs, [&](auto& name, auto& value) { line.dahsID = NumberFrom(name, value); }},
                   {L"--site", isForOneDahs, [&](auto&, auto& value) { line.siteID = value; }},
                   {L"--file", readsOneFile, [&](auto&, auto& value) { line.file = value; }},
                   {L"--page", isSecurity, [&](auto& name, auto& value) { line.page = NumberFrom(name, value); }},
                   {L"--since", isSecurity, [&](auto& name, auto& value) { line.since = TimeFrom(name, value); }},
                   {L"--user", isSecurity, [&](auto&, auto& value) { line.user = value; }},
                   {L"--may", isSecurity, [&](auto& name, auto& value) { line.may = NumberFrom(name, value); }},
                   {L"--from", isLog, [&](auto& name, auto& value) { line.from = TimeFrom(name, value); }},
                   {L"--to", isLog, [&](auto& name, auto& value) { line.to = TimeFrom(name, value); }},
                   {L"--grep", isLog, [&](auto&, auto& value) { line.grep = value; }}};
    size_t files = 0;
    for (size_t i = 1; i < arguments.size(); ++i) {
        const std::wstring& word = arguments[i];
        if (AsksForHelp(word)) {
            line.command = Command::Help;
            return line;
        }
        const auto* const flag = std::find_if(std::begin(switches), std::end(switches),
                                              [&](const auto& each) { return each.isAllowed && word == each.name; });
        const auto* const option = std::find_if(std::begin(options), std::end(options),
                                                [&](const auto& each) { return each.isAllowed && word == each.name; });
        if (flag != std::end(switches)) {
            line.*flag->flag = true;
        } else if (option != std::end(options)) {
            if (i + 1 == arguments.size() || arguments[i + 1].starts_with(L"--")) {
                throw Wrong(L"a value is missing after " + word);
            }
            option->take(word, arguments[++i]);
        } else if (line.command == Command::Diff && files < std::size(line.files) && !word.starts_with(L"--")) {
            line.files[files++] = word;
        } else if (line.command == Command::Log && !word.starts_with(L"--")) {
            line.logs.push_back(word);
        } else {
            throw Wrong(L"'" + word + L"' is no option of " + arguments[0]);
        }
    }
    if (line.dahsID && line.siteID) {
        throw Wrong(L"--dahs and --site exclude each other");
    }
    if (line.command == Command::Diff && files < std::size(line.files)) {
        throw Wrong(L"diff needs two files");
    }
    if (line.command == Command::Log && line.logs.empty()) {
        throw Wrong(L"log needs a file");
    }
    return line;
}

}  // namespace v5site
