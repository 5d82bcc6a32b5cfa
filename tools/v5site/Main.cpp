// v5site: see CommandLine.cpp for what it does.
#include <windows.h>

#include <objbase.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "CommandLine.h"
#include "Console.h"
#include "Json.h"
#include "Report.h"
#include "SiteClient.h"

namespace {

using namespace v5site;

// Prints a result; the status, or that the tool cannot run where the result could not be written.
ExitStatus Printed(std::wstring_view output, ExitStatus status) {
    if (Print(output)) {
        return status;
    }
    PrintError(L"v5site: the output cannot be written\n");
    return kCannotRun;
}

ExitStatus RunSite(const CommandLine& line) {
    SiteClient site;
    const Report report = Run(line, site);
    PrintError(report.errors);
    return Printed(report.output, report.status);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    ExitStatus status = kCannotRun;
    const std::vector<std::wstring> words(arguments + 1, arguments + count);
    try {
        const CommandLine line = ParseCommandLine(words);
        switch (line.command) {
            case Command::kHelp:
                status = Printed(kHelpText, kFine);
                break;
            case Command::kVersion:
                status = Printed(L"v5site " V5SITE_VERSION L"\n", kFine);
                break;
            default:
                status = RunSite(line);
        }
    } catch (const Error& error) {
        PrintError(L"v5site: " + error.What() + L"\n");
        if (std::find(words.begin(), words.end(), L"--json") != words.end()) {
            Print(JsonFailure(status, {error.What()}));
        }
    }
    CoUninitialize();
    return status;
}
