#include "Report.h"

#include <algorithm>
#include <array>

#include "Json.h"
#include "PasswordMask.h"
#include "SecurityReport.h"
#include "SiteLines.h"

namespace v5site {

namespace {

// Findings that are no problems: where the file was found.
bool IsProblem(const std::wstring& finding) {
    return !finding.starts_with(L"STR-0183:") && !finding.starts_with(L"STR-094:");
}

std::wstring Display(const Value& value) {
    if (const auto* text = std::get_if<std::wstring>(&value)) {
        return *text;
    }
    if (const auto* number = std::get_if<long>(&value)) {
        return std::to_wstring(*number);
    }
    return std::get<bool>(value) ? L"yes" : L"no";
}

const wchar_t* Place(const EntryRow& row) {
    return row.isRemote ? L"remote" : L"local";
}

std::wstring JsonRow(const EntryRow& row, int depth) {
    return JsonSettings({{L"dahs", row.dahsID},
                         {L"site", row.siteID},
                         {L"role", row.role},
                         {L"computer", row.computerName},
                         {L"remote", row.isRemote},
                         {L"description", row.description}},
                        depth);
}

std::wstring JsonRows(const std::vector<EntryRow>& rows) {
    std::vector<std::wstring> items;
    items.reserve(rows.size());
    for (const EntryRow& row : rows) {
        items.push_back(JsonRow(row, 2));
    }
    return JsonArray(items, 1);
}

// One line a finding, with the number of the line of the file that it is about.
std::wstring Lines(const std::vector<std::wstring>& findings, const SiteLines& file) {
    std::wstring lines;
    for (const std::wstring& finding : findings) {
        const size_t number = file.LineOf(finding);
        lines += finding + (number == 0 ? std::wstring() : L" (line " + std::to_wstring(number) + L")") + L"\n";
    }
    return lines;
}

std::wstring TableOf(const std::vector<EntryRow>& rows) {
    constexpr size_t kColumns = 6;
    using Cells = std::array<std::wstring, kColumns>;
    std::vector<Cells> table = {{L"ID", L"SITE", L"ROLE", L"COMPUTER", L"WHERE", L"DESCRIPTION"}};
    for (const EntryRow& row : rows) {
        table.push_back(
            {std::to_wstring(row.dahsID), row.siteID, row.role, row.computerName, Place(row), row.description});
    }
    std::array<size_t, kColumns> widths{};
    for (const Cells& cells : table) {
        for (size_t i = 0; i < kColumns; ++i) {
            widths[i] = std::max(widths[i], cells[i].size());
        }
    }
    std::wstring text;
    for (const Cells& cells : table) {
        std::wstring line;
        for (size_t i = 0; i < kColumns; ++i) {
            line += Padded(cells[i], widths[i]) + L"  ";
        }
        line.erase(line.find_last_not_of(L' ') + 1);
        text += line + L"\n";
    }
    return text;
}

// A group of settings with its heading, names and values in two columns.
std::wstring Group(const wchar_t* heading, const std::vector<Setting>& settings) {
    size_t width = 0;
    for (const Setting& setting : settings) {
        width = std::max(width, std::wstring_view(setting.name).size());
    }
    std::wstring text = std::wstring(heading) + L"\n";
    for (const Setting& setting : settings) {
        std::wstring line = L"  " + Padded(setting.name, width) + L"  " + Display(setting.value);
        line.erase(line.find_last_not_of(L' ') + 1);
        text += line + L"\n";
    }
    return text;
}

Report Check(const CommandLine& line, bool usable, const SiteClient& site) {
    const std::vector<std::wstring> findings = site.Findings();
    const std::vector<EntryRow> rows = site.Entries();
    const SiteLines file(site.FilePath());
    const auto problems = std::count_if(findings.begin(), findings.end(), IsProblem);
    Report report;
    report.status = !usable ? kNoDahs : problems > 0 ? kProblems : kFine;
    if (line.json) {
        std::vector<std::wstring> texts, numbers;
        for (const std::wstring& finding : findings) {
            texts.push_back(JsonText(finding));
            numbers.push_back(std::to_wstring(file.LineOf(finding)));
        }
        report.output = JsonObject({{L"file", JsonText(site.FilePath())},
                                    {L"status", std::to_wstring(report.status)},
                                    {L"findings", JsonArray(texts, 1)},
                                    {L"lines", JsonArray(numbers, 1)},
                                    {L"usable", JsonRows(rows)}},
                                   0) +
                        L"\n";
        return report;
    }
    report.output = Lines(findings, file) + L"\n";
    if (rows.empty()) {
        report.output += L"No DAHS is usable.\n";
    } else {
        report.output += L"Usable:\n";
        for (const EntryRow& row : rows) {
            report.output +=
                L"  DAHS " + std::to_wstring(row.dahsID) + L" (site " + row.siteID + L", " + row.computerName + L")\n";
        }
    }
    report.output += problems == 0   ? L"No problems.\n"
                     : problems == 1 ? L"1 problem.\n"
                                     : std::to_wstring(problems) + L" problems.\n";
    return report;
}

Report List(const CommandLine& line, const SiteClient& site) {
    const std::vector<EntryRow> rows = site.Entries();
    Report report;
    report.output = line.json
                        ? JsonObject({{L"file", JsonText(site.FilePath())}, {L"entries", JsonRows(rows)}}, 0) + L"\n"
                        : TableOf(rows);
    return report;
}

Report Show(const CommandLine& line, const SiteClient& site) {
    const auto fit = [&line](std::vector<Setting> group) {
        for (Setting& setting : group) {
            auto* text = std::get_if<std::wstring>(&setting.value);
            if (text != nullptr && !line.showPasswords) {
                *text = MaskPasswords(*text);
            }
        }
        return group;
    };
    const std::vector<Setting> settings = fit(site.Settings()), folders = fit(site.Folders()),
                               connections = fit(site.Connections());
    Report report;
    if (line.json) {
        report.output = JsonObject({{L"file", JsonText(site.FilePath())},
                                    {L"settings", JsonSettings(settings, 1)},
                                    {L"folders", JsonSettings(folders, 1)},
                                    {L"connections", JsonSettings(connections, 1)}},
                                   0) +
                        L"\n";
        return report;
    }
    const std::wstring heading = std::wstring(L"Connection strings (") + (line.dotNet ? L".NET" : L"OLE DB") + L", " +
                                 (line.noninteractive ? L"non-interactive" : L"interactive") + L")";
    report.output = L"File " + site.FilePath() + L"\n\n" + Group(L"Settings", settings) + L"\n" +
                    Group(L"Folders", folders) + L"\n" + Group(heading.c_str(), connections);
    return report;
}

// Why there is nothing to list or show: the last finding says it.
Report Nothing(const CommandLine& line, const std::wstring& why) {
    Report report;
    report.errors = L"v5site: " + why + L"\n";
    report.status = kNoDahs;
    report.output = line.json ? JsonFailure(report.status, {why}) : L"";
    return report;
}

}  // namespace

std::wstring Padded(std::wstring text, size_t width) {
    text.resize(std::max(width, text.size()), L' ');
    return text;
}

Report Run(const CommandLine& line, SiteClient& site) {
    const bool usable = site.Read(line);
    if (line.command == Command::kCheck) {
        return Check(line, usable, site);
    }
    if (!usable) {
        return Nothing(line, site.Findings().back());
    }
    if (line.command == Command::kList) {
        return List(line, site);
    }
    if (!site.Choose(line)) {
        return Nothing(line, line.dahsID ? L"DAHS " + std::to_wstring(*line.dahsID) + L" is not defined or not usable"
                                         : site.Findings().back());
    }
    return line.command == Command::kSecurity ? ShowSecurity(line, site.Security()) : Show(line, site);
}

}  // namespace v5site
