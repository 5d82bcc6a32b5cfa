// v5site: see CommandLine.cpp for what it does.
#include <windows.h>

#include <objbase.h>

#include "CommandLine.h"
#include "Console.h"
#include "Report.h"
#include "SiteClient.h"

namespace {

using namespace v5site;

ExitStatus RunSite(const CommandLine& line) {
    SiteClient site;
    const Report report = Run(line, site);
    Print(report.output);
    PrintError(report.errors);
    return report.status;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    ExitStatus status = kCannotRun;
    try {
        const CommandLine line = ParseCommandLine({arguments + 1, arguments + count});
        switch (line.command) {
            case Command::kHelp:
                Print(kHelpText);
                status = kFine;
                break;
            case Command::kVersion:
                Print(L"v5site " V5SITE_VERSION L"\n");
                status = kFine;
                break;
            default:
                status = RunSite(line);
        }
    } catch (const UsageError& error) {
        PrintError(L"v5site: " + error.What() + L"\nTry 'v5site --help'.\n");
    } catch (const ClientError& error) {
        PrintError(L"v5site: " + error.What() + L"\n");
    }
    CoUninitialize();
    return status;
}
