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
#include "LogReport.h"
#include "Report.h"

namespace {

using namespace v5site;

// Prints a result; the status, or that the tool cannot run where the result could not be written.
ExitStatus Printed(std::wstring_view output, ExitStatus status) {
    if (Print(output)) {
        return status;
    }
    PrintError(L"v5site: the output cannot be written\n");
    return CannotRun;
}

ExitStatus RunSite(const CommandLine& line) {
    const Report report = Run(line);
    PrintError(report.errors);
    return Printed(report.output, report.status);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    ExitStatus status = CannotRun;
    const std::vector<std::wstring> words(arguments + 1, arguments + count);
    try {
        const CommandLine line = ParseCommandLine(words);
        switch (line.command) {
            case Command::Help:
                status = Printed(kHelpText, Fine);
                break;
            case Command::Version:
                status = Printed(L"v5site " V5SITE_VERSION L"\n", Fine);
                break;
            case Command::Log:
                status = PrintLogs(line);
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
