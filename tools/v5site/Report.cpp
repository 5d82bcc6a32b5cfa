#include "Report.h"

#include <algorithm>

#include "Json.h"
#include "PasswordMask.h"
#include "SecurityReport.h"
#include "SiteDiff.h"
#include "SiteReader.h"
#include "SiteText.h"
#include "WhyReport.h"
#include "base/Text.h"

namespace v5site {

namespace {

// Findings that are no problems: where the file was found.
bool IsProblem(const std::wstring& finding) {
    return !finding.starts_with(L"STR-0183:") && !finding.starts_with(L"STR-094:");
}

// Whatever is printed goes through here: a file's path and a key's value may hold secrets, too.
std::vector<std::wstring> Findings(const v5::Site& site) {
    std::vector<std::wstring> findings;
    findings.reserve(site.Problems().size());
    for (const std::wstring& problem : site.Problems()) {
        findings.push_back(MaskPasswords(problem));
    }
    return findings;
}

std::vector<std::wstring> ProblemsOf(const v5::Site& site) {
    std::vector<std::wstring> problems = Findings(site);
    std::erase_if(problems, [](const std::wstring& finding) { return !IsProblem(finding); });
    return problems;
}

struct EntryRow {
    std::int32_t dahsID;
    std::wstring siteID, role, computerName, description;
    bool isRemote;
};

std::vector<EntryRow> Rows(const v5::Site& site) {
    std::vector<EntryRow> rows;
    for (const v5::DahsEntryPtr& entry : *site.Entries()) {
        rows.push_back({entry->dahsID, MaskPasswords(entry->siteID),
                        std::wstring(v5::RedundantDasRoleText(entry->role)), MaskPasswords(entry->computerName),
                        MaskPasswords(entry->description), site.IsRemote(*entry)});
    }
    return rows;
}

std::wstring JsonRows(const std::vector<EntryRow>& rows) {
    std::vector<std::wstring> items;
    items.reserve(rows.size());
    for (const EntryRow& row : rows) {
        items.push_back(JsonSettings({{L"dahs", long{row.dahsID}},
                                      {L"site", row.siteID},
                                      {L"role", row.role},
                                      {L"computer", row.computerName},
                                      {L"remote", row.isRemote},
                                      {L"description", row.description}},
                                     2));
    }
    return JsonArray(items, 1);
}

std::wstring LineNumber(size_t number) {
    return number == 0 ? std::wstring() : L" (line " + std::to_wstring(number) + L")";
}

// "1 problem", "2 problems", "no problems".
std::wstring Counted(size_t count, const wchar_t* what) {
    return (count == 0 ? L"no" : std::to_wstring(count)) + L" " + what + (count == 1 ? L"" : L"s");
}

// A group of settings with its heading, names and values in two columns.
std::wstring Group(const std::wstring& heading, const std::vector<Setting>& settings) {
    size_t width = 0;
    for (const Setting& setting : settings) {
        width = std::max(width, std::wstring_view(setting.name).size());
    }
    std::wstring text = heading + L"\n";
    for (const Setting& setting : settings) {
        std::wstring line = L"  " + Padded(setting.name, width) + L"  " + Display(setting.value);
        line.erase(line.find_last_not_of(L' ') + 1);
        text += line + L"\n";
    }
    return text;
}

Report Check(const CommandLine& line, const SiteReader& reader) {
    const std::vector<std::wstring> findings = Findings(reader.Site());
    const std::vector<EntryRow> rows = Rows(reader.Site());
    const SiteText file(reader.Host().Text());
    const std::vector<Remark> remarks = file.Remarks();
    const auto problems = static_cast<size_t>(std::count_if(findings.begin(), findings.end(), IsProblem));
    Report report;
    report.status = !reader.IsUsable() ? NoDahs : problems > 0 || (line.strict && !remarks.empty()) ? Problems : Fine;
    if (line.json) {
        std::vector<std::wstring> numbers, items;
        for (const std::wstring& finding : findings) {
            numbers.push_back(std::to_wstring(file.LineOf(finding)));
        }
        for (const Remark& remark : remarks) {
            items.push_back(JsonSettings({{L"line", static_cast<long>(remark.line)},
                                          {L"section", MaskPasswords(remark.section)},
                                          {L"key", MaskPasswords(remark.key)},
                                          {L"text", MaskPasswords(remark.text)}},
                                         2));
        }
        report.output = JsonDocument({{L"file", JsonText(MaskPasswords(reader.Site().FilePath()))},
                                      {L"status", std::to_wstring(report.status)},
                                      {L"findings", JsonTexts(findings, 1)},
                                      {L"lines", JsonArray(numbers, 1)},
                                      {L"remarks", JsonArray(items, 1)},
                                      {L"usable", JsonRows(rows)}});
        return report;
    }
    for (const std::wstring& finding : findings) {
        report.output += finding + LineNumber(file.LineOf(finding)) + L"\n";
    }
    for (const Remark& remark : remarks) {
        report.output += L"Remark: " +
                         MaskPasswords((remark.section.empty() ? L"" : L"[" + remark.section + L"] ") + remark.key +
                                       (remark.key.empty() ? L"" : L": ") + remark.text) +
                         LineNumber(remark.line) + L"\n";
    }
    report.output += L"\n";
    if (rows.empty()) {
        report.output += L"No DAHS is usable.\n";
    } else {
        report.output += L"Usable:\n";
        for (const EntryRow& row : rows) {
            report.output +=
                L"  DAHS " + std::to_wstring(row.dahsID) + L" (site " + row.siteID + L", " + row.computerName + L")\n";
        }
    }
    std::wstring summary =
        Counted(problems, L"problem") + (remarks.empty() ? L"" : L", " + Counted(remarks.size(), L"remark")) + L".\n";
    summary.front() = v5::ToUpper(summary.front());
    report.output += summary;
    return report;
}

Report List(const CommandLine& line, const SiteReader& reader) {
    const std::vector<EntryRow> rows = Rows(reader.Site());
    Report report;
    if (line.json) {
        report.output = JsonDocument({{L"file", JsonText(MaskPasswords(reader.Site().FilePath()))},
                                      {L"entries", JsonRows(rows)},
                                      {L"findings", JsonTexts(Findings(reader.Site()), 1)}});
        return report;
    }
    std::vector<std::vector<std::wstring>> table = {{L"ID", L"SITE", L"ROLE", L"COMPUTER", L"WHERE", L"DESCRIPTION"}};
    for (const EntryRow& row : rows) {
        table.push_back({std::to_wstring(row.dahsID), row.siteID, row.role, row.computerName,
                         row.isRemote ? L"remote" : L"local", row.description});
    }
    report.output = TableOf(table);
    report.errors = MessageLines(ProblemsOf(reader.Site()));
    return report;
}

Report Show(const CommandLine& line, const SiteReader& reader) {
    const auto fit = [&line](std::vector<Setting> group) {
        return line.showPasswords ? std::move(group) : Masked(std::move(group));
    };
    const v5::Site& site = reader.Site();
    const std::vector<Setting> settings = fit(SettingsOf(site)), folders = fit(FoldersOf(site)),
                               connections = fit(ConnectionsOf(site.Current().connections));
    Report report;
    if (line.json) {
        report.output = JsonDocument({{L"file", JsonText(MaskPasswords(site.FilePath()))},
                                      {L"settings", JsonSettings(settings, 1)},
                                      {L"folders", JsonSettings(folders, 1)},
                                      {L"connections", JsonSettings(connections, 1)}});
        return report;
    }
    const std::wstring heading = std::wstring(L"Connection strings (") + (line.dotNet ? L".NET" : L"OLE DB") + L", " +
                                 (line.noninteractive ? L"non-interactive" : L"interactive") + L")";
    report.output = L"File " + MaskPasswords(site.FilePath()) + L"\n\n" + Group(L"Settings", settings) + L"\n" +
                    Group(L"Folders", folders) + L"\n" + Group(heading, connections);
    return report;
}

// Why there is nothing to list or show.
Report Nothing(const CommandLine& line, const std::vector<std::wstring>& reasons) {
    Report report;
    report.errors = MessageLines(reasons);
    report.status = NoDahs;
    report.output = line.json ? JsonFailure(report.status, reasons) : L"";
    return report;
}

Report Diff(const CommandLine& line) {
    SiteReader first(line, line.files[0]), second(line, line.files[1]);
    for (const SiteReader* reader : {&first, &second}) {
        if (!reader->IsUsable()) {
            return Nothing(line, Findings(reader->Site()));
        }
    }
    const std::vector<Difference> differences = Differences(first.Site(), second.Site());
    Report report;
    report.status = differences.empty() ? Fine : Problems;
    if (line.json) {
        std::vector<std::wstring> items;
        items.reserve(differences.size());
        for (const Difference& each : differences) {
            items.push_back(JsonSettings(
                {{L"dahs", long{each.dahsID}}, {L"name", each.name}, {L"first", each.first}, {L"second", each.second}},
                2));
        }
        report.output = JsonDocument(
            {{L"status", std::to_wstring(report.status)},
             {L"files",
              JsonTexts({MaskPasswords(first.Site().FilePath()), MaskPasswords(second.Site().FilePath())}, 1)},
             {L"differences", JsonArray(items, 1)}});
        return report;
    }
    std::int32_t dahsID = 0;
    for (const Difference& each : differences) {
        if (each.dahsID != dahsID) {
            report.output += L"DAHS " + std::to_wstring(each.dahsID) + L"\n";
            dahsID = each.dahsID;
        }
        report.output += (each.name.empty() ? L"" : L"  " + each.name + L"\n") + L"    < " + each.first + L"\n    > " +
                         each.second + L"\n";
    }
    report.output += differences.empty() ? L"No differences.\n" : L"";
    return report;
}

}  // namespace

std::wstring Padded(std::wstring text, size_t width) {
    text.resize(std::max(width, text.size()), L' ');
    return text;
}

std::wstring MessageLines(const std::vector<std::wstring>& messages) {
    std::wstring lines;
    for (const std::wstring& message : messages) {
        lines.append(L"v5site: ").append(message).append(L"\n");
    }
    return lines;
}

std::wstring TableOf(const std::vector<std::vector<std::wstring>>& rows) {
    std::vector<size_t> widths(rows.at(0).size());
    for (const auto& row : rows) {
        for (size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    std::wstring text;
    for (const auto& row : rows) {
        std::wstring line;
        for (size_t i = 0; i < row.size(); ++i) {
            line += Padded(row[i], widths[i]) + L"  ";
        }
        line.erase(line.find_last_not_of(L' ') + 1);
        text += line + L"\n";
    }
    return text;
}

std::vector<std::wstring> FindingsOn(const v5::Site& site, std::int32_t dahsID) {
    std::vector<std::wstring> findings = Findings(site);
    std::erase_if(findings, [&](const std::wstring& finding) { return DahsOf(finding) != dahsID; });
    return findings;
}

Report Run(const CommandLine& line) {
    if (line.command == Command::Diff) {
        return Diff(line);
    }
    SiteReader reader(line, line.file);
    if (line.command == Command::Check) {
        return Check(line, reader);
    }
    if (line.command == Command::Why) {
        return ShowWhy(line, reader);
    }
    if (!reader.IsUsable()) {
        return Nothing(line, ProblemsOf(reader.Site()));
    }
    if (line.command == Command::List) {
        return List(line, reader);
    }
    if (!reader.Choose(line)) {
        if (!line.dahsID) {
            return Nothing(line, {Findings(reader.Site()).back()});
        }
        std::vector<std::wstring> reasons = FindingsOn(reader.Site(), static_cast<std::int32_t>(*line.dahsID));
        reasons.insert(reasons.begin(), L"DAHS " + std::to_wstring(*line.dahsID) + L" is not defined or not usable");
        return Nothing(line, reasons);
    }
    return line.command == Command::Security ? ShowSecurity(line, reader.Site()) : Show(line, reader);
}

}  // namespace v5site
