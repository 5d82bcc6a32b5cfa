#include "WhyReport.h"

#include <windows.h>

#include <winver.h>

#include <algorithm>

#include "Json.h"
#include "PasswordMask.h"
#include "SiteText.h"
#include "base/Text.h"
#include "config/SiteFileSearch.h"

namespace v5site {

namespace {

constexpr wchar_t kVariable[] = L"VANTOR5_SYSTEM_FOLDER";
constexpr wchar_t kFileName[] = L"Vantor5.INI";

// The variable as the registry keeps it for programs that start later; empty when it is not set there.
std::wstring StoredVariable(HKEY root, const wchar_t* key) {
    std::wstring value(32768, L'\0');  // the longest that a variable can be
    auto bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
    const LSTATUS status = RegGetValueW(root, key, kVariable, RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND,
                                        nullptr, value.data(), &bytes);
    value.resize(status == ERROR_SUCCESS ? bytes / sizeof(wchar_t) - 1 : 0);
    return value;
}

std::wstring ProcessVariable() {
    std::wstring value(GetEnvironmentVariableW(kVariable, nullptr, 0), L'\0');
    value.resize(GetEnvironmentVariableW(kVariable, value.data(), static_cast<DWORD>(value.size())));
    return value;
}

// "5.4.0.0"; empty when the file has no version or cannot be read.
std::wstring FileVersion(const std::wstring& path) {
    DWORD unused = 0;
    std::vector<char> data(GetFileVersionInfoSizeW(path.c_str(), &unused));
    VS_FIXEDFILEINFO* info = nullptr;
    UINT size = 0;
    if (data.empty() || !GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(data.size()), data.data()) ||
        !VerQueryValueW(data.data(), L"\\", reinterpret_cast<void**>(&info), &size)) {
        return {};
    }
    std::wstring version;
    for (const DWORD part : {info->dwFileVersionMS, info->dwFileVersionLS}) {
        version +=
            (version.empty() ? L"" : L".") + std::to_wstring(HIWORD(part)) + L"." + std::to_wstring(LOWORD(part));
    }
    return version;
}

struct Library {
    int width;
    std::wstring path, version;
};

std::vector<Library> Libraries() {
    std::vector<Library> libraries;
    for (const int width : {64, 32}) {
        const std::wstring path = RegisteredDll(width);
        libraries.push_back({width, path, path.empty() ? L"" : FileVersion(path)});
    }
    return libraries;
}

// Every place that was tried for the file, each once.
std::vector<Attempt> Tried(const LookingHost& host) {
    std::vector<Attempt> tried;
    for (const Attempt& each : host.Attempts()) {
        const bool isKnown =
            std::any_of(tried.begin(), tried.end(), [&](const Attempt& other) { return other.path == each.path; });
        if (!isKnown && each.path.ends_with(kFileName)) {
            tried.push_back(each);
        }
    }
    return tried;
}

// Further site files, in the folders above the file and above the library.
std::vector<std::wstring> Others(const SiteReader& reader) {
    std::vector<std::wstring> others;
    for (std::wstring folder : {v5::ParentFolder(reader.Site().FilePath()), reader.Host().LibraryFolder()}) {
        for (; !folder.empty(); folder = v5::ParentFolder(folder)) {
            const std::wstring path = v5::JoinPath(folder, kFileName);
            const bool isKnown = v5::EqualsIgnoreCase(path, reader.Site().FilePath()) ||
                                 std::find(others.begin(), others.end(), path) != others.end();
            if (!isKnown && reader.Host().FileExists(path)) {
                others.push_back(path);
            }
        }
    }
    return others;
}

struct Judgement {
    std::int32_t dahsID;
    std::wstring siteID, state;
    std::vector<std::wstring> reasons;
};

Judgement Judge(const v5::Site& site, std::int32_t id, std::int32_t chosen) {
    const v5::DahsEntryPtr entry = site.Entries()->Find(id);
    Judgement judgement{id, entry ? MaskPasswords(entry->siteID) : L"", L"", FindingsOn(site, id)};
    if (!entry) {
        judgement.state = L"dropped";
        if (judgement.reasons.empty()) {
            judgement.reasons = {L"its section has no SiteID"};
        }
        return judgement;
    }
    judgement.state = id == chosen ? L"chosen" : L"usable";
    const bool isRemote = site.IsRemote(*entry);
    judgement.reasons.push_back(std::wstring(isRemote ? L"remote" : L"local") + L": its computer '" +
                                MaskPasswords(entry->computerName) +
                                (isRemote ? L"' is not this one" : L"' is this one"));
    return judgement;
}

std::wstring OrNot(const std::wstring& text) {
    return text.empty() ? L"(not set)" : text;
}

std::wstring Json(const SiteReader& reader, const std::vector<Attempt>& tried, const std::vector<std::wstring>& others,
                  const std::vector<Judgement>& judgements, const std::wstring (&variable)[3]) {
    std::vector<std::wstring> triedItems, libraries, dahses;
    for (const Attempt& each : tried) {
        triedItems.push_back(JsonSettings({{L"path", each.path}, {L"found", each.isThere}}, 2));
    }
    for (const Library& each : Libraries()) {
        libraries.push_back(
            JsonSettings({{L"width", long{each.width}}, {L"path", each.path}, {L"version", each.version}}, 2));
    }
    for (const Judgement& each : judgements) {
        dahses.push_back(JsonObject({{L"dahs", std::to_wstring(each.dahsID)},
                                     {L"site", JsonText(each.siteID)},
                                     {L"state", JsonText(each.state)},
                                     {L"reasons", JsonTexts(each.reasons, 3)}},
                                    2));
    }
    return JsonDocument(
        {{L"file", JsonText(reader.Site().FilePath())},
         {L"variable",
          JsonSettings({{L"process", variable[0]}, {L"user", variable[1]}, {L"computer", variable[2]}}, 1)},
         {L"tried", JsonArray(triedItems, 1)},
         {L"others", JsonTexts(others, 1)},
         {L"libraries", JsonArray(libraries, 1)},
         {L"computer", JsonText(reader.Site().LocalComputerName())},
         {L"dahses", JsonArray(dahses, 1)}});
}

}  // namespace

Report ShowWhy(const CommandLine& line, SiteReader& reader) {
    const v5::Site& site = reader.Site();
    const bool isChosen = reader.IsUsable() && reader.Choose(line);
    const std::int32_t chosen = isChosen ? site.Current().entry->dahsID : 0;
    const std::vector<Attempt> tried = Tried(reader.Host());
    const std::vector<std::wstring> others = Others(reader);
    const std::wstring variable[] = {
        ProcessVariable(), StoredVariable(HKEY_CURRENT_USER, L"Environment"),
        StoredVariable(HKEY_LOCAL_MACHINE, L"SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment")};
    std::vector<Judgement> judgements;
    for (const std::int32_t id : SiteText(reader.Host().Text()).DahsIds()) {
        if ((!line.dahsID || *line.dahsID == id) && (!line.siteID || id == chosen)) {
            judgements.push_back(Judge(site, id, chosen));
        }
    }
    Report report;
    report.status = isChosen ? Fine : NoDahs;
    if (line.json) {
        report.output = Json(reader, tried, others, judgements, variable);
        return report;
    }
    report.output = L"File      " + (site.FilePath().empty() ? L"(none)" : site.FilePath()) + L"\n";
    if (line.file) {
        report.output += L"          named on the command line\n";
    } else {
        report.output += std::wstring(L"\n") + kVariable + L"\n  this program  " + OrNot(variable[0]) +
                         L"\n  user          " + OrNot(variable[1]) + L"\n  computer      " + OrNot(variable[2]) +
                         L"\n\nTried\n";
        for (const Attempt& each : tried) {
            report.output += (each.isThere ? L"  found      " : L"  not there  ") + each.path + L"\n";
        }
    }
    if (!others.empty()) {
        report.output += L"\nOther site files in reach\n";
        for (const std::wstring& each : others) {
            report.output += L"  " + each + L"\n";
        }
    }
    report.output += L"\nV5Strings.dll that programs load\n";
    for (const Library& each : Libraries()) {
        report.output += L"  " + std::to_wstring(each.width) + L" bit  " +
                         (each.path.empty() ? L"(not registered)" : each.path + L"  " + each.version) + L"\n";
    }
    report.output += L"\nDAHSes, as seen from " + site.LocalComputerName() + L"\n";
    for (const Judgement& each : judgements) {
        report.output += L"  " + std::to_wstring(each.dahsID) + L"  " + each.state + L"\n";
        for (const std::wstring& reason : each.reasons) {
            report.output += L"       " + reason + L"\n";
        }
    }
    report.output += judgements.empty() ? L"  (none)\n" : L"";
    return report;
}

}  // namespace v5site
