// A machine on which a site file lies, all in memory.
#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "FailCall.h"
#include "base/Text.h"
#include "base/Utf8.h"
#include "config/Site.h"

namespace v5 {

struct FakeSiteHost : SiteHost {
    mutable Operations machine;
    std::wstring systemFolder = L"C:\\Site";  // empty: the variable is not defined
    std::set<std::wstring> folders = {L"C:\\", L"C:\\Site", L"C:\\Windows\\Temp"};
    std::map<std::wstring, std::string> files;
    std::wstring refusedFolder;
    std::optional<std::uint64_t> systemMask = 0xF;
    std::uint64_t affinitySet = 0;
    std::vector<std::wstring> created;

    std::wstring ExpandEnvironment(const std::wstring& text) const override {
        return !machine.Succeeds("ExpandEnvironment") || systemFolder.empty()
                   ? text
                   : ReplaceAll(text, L"%VANTOR5_SYSTEM_FOLDER%", systemFolder);
    }
    // The current directory is C:\Site.
    std::wstring FullPath(const std::wstring& path) const override {
        return path.find(L':') == 1 || path.starts_with(L"\\") ? path : L"C:\\Site\\" + path;
    }
    bool FolderExists(const std::wstring& path) const override {
        return machine.Succeeds("FolderExists") && folders.count(path) != 0;
    }
    bool FileExists(const std::wstring& path) const override {
        return machine.Succeeds("FileExists") && files.count(path) != 0;
    }
    std::wstring ReadFile(const std::wstring& path, std::wstring& text) const override {
        if (!machine.Succeeds("ReadFile")) {
            return L"Access is denied.";
        }
        text = Decoded(files.at(path));
        return {};
    }
    std::wstring CreateFolder(const std::wstring& path) override {
        if (!machine.Succeeds("CreateFolder") || path == refusedFolder) {
            return L"Access is denied.";
        }
        created.push_back(path);
        folders.insert(path);
        return {};
    }
    // Windows-1252 as far as the tests need it, unless a mark says otherwise.
    static std::wstring Decoded(std::string_view bytes) {
        if (const auto marked = DecodeMarked(bytes)) {
            return *marked;
        }
        std::wstring text;
        for (const char c : bytes) {
            const auto code = static_cast<unsigned char>(c);
            text += code == 150 ? L'\u2013' : code == 151 ? L'\u2014' : static_cast<wchar_t>(code);
        }
        return text;
    }
    std::wstring LibraryFolder() const override {
        return machine.Succeeds("LibraryFolder") ? L"C:\\Program\\Bin" : L"";
    }
    std::wstring TemporaryFolder() const override {
        return machine.Succeeds("TemporaryFolder") ? L"C:\\Windows\\Temp" : L"";
    }
    std::wstring LocalComputerName() const override { return L"DAS1"; }
    bool IsLocalComputer(const std::wstring& name) const override {
        return machine.Succeeds("IsLocalComputer") && EqualsIgnoreCase(name, L"das1");
    }
    std::optional<std::uint64_t> SystemAffinityMask() const override {
        return machine.Succeeds("SystemAffinityMask") ? systemMask : std::nullopt;
    }
    bool SetProcessAffinityMask(std::uint64_t mask) override {
        affinitySet = mask;
        return machine.Succeeds("SetProcessAffinityMask");
    }
};

// A section without faults. `lines` come first, and so override the others.
inline std::string Section(int number, const std::string& lines = "") {
    return "[Dahs" + std::to_string(number) + "]\n" + lines +
           "\nSiteID=AB\nDahsComputerName=das1\nVantorDir=D:\\V\nBackupDir=E:\\B\nSQLAlarms=Provider=p;Pwd=x;alarms\n"
           "SQLConfig=config\nSQLData=Server=s;Database=Vantor5Data\nSQLDataShortTerm=short\nSQLRealtime=realtime\n";
}

// A site on a machine of its own, with `file` in the system folder.
struct SiteBench {
    FakeSiteHost host;
    Site site{host};

    explicit SiteBench(const std::string& file) { host.files[L"C:\\Site\\Vantor5.INI"] = file; }
    bool Read(AppCategory category = AppCategory::NotApplicable,
              BlankConnections option = BlankConnections::IgnoreEntry) {
        return site.Read(category, false, false, option);
    }
};

inline std::wstring Lines(const std::vector<std::wstring>& texts) {
    std::wstring lines;
    for (const std::wstring& text : texts) {
        lines += text + L"\n";
    }
    return lines;
}

}  // namespace v5
