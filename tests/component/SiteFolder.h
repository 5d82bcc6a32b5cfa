// A folder with a site file, to which VANTOR5_SYSTEM_FOLDER points while this object lives. In the file's text $folder$
// stands for the folder's path; its subfolder V may serve as a DAHS's own folder.
#pragma once

#include <windows.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace v5::test {

class SiteFolder {
  public:
    explicit SiteFolder(std::string_view file) {
        wchar_t temp[MAX_PATH + 1] = L"";
        GetTempPathW(MAX_PATH + 1, temp);
        path_ = std::wstring(temp) + L"V5Site" + std::to_wstring(GetCurrentProcessId());
        CreateDirectoryW(path_.c_str(), nullptr);
        Write(file);
        SetEnvironmentVariableW(kVariable, path_.c_str());
    }
    ~SiteFolder() {
        SetEnvironmentVariableW(kVariable, nullptr);
        DeleteFileW(File().c_str());
        for (const wchar_t* folder :
             {L"\\V\\Logs\\MailLogs", L"\\V\\Logs", L"\\V\\SecondaryBackup", L"\\V", L"\\CustomReportTemplates", L""}) {
            RemoveDirectoryW((path_ + folder).c_str());
        }
    }
    SiteFolder(const SiteFolder&) = delete;
    SiteFolder& operator=(const SiteFolder&) = delete;

    void Write(std::string_view text) const {
        const std::string path(path_.begin(), path_.end());
        constexpr std::string_view kMark = "$folder$";
        std::string file(text);
        for (size_t at = file.find(kMark); at != std::string::npos; at = file.find(kMark)) {
            file.replace(at, kMark.size(), path);
        }
        const HANDLE handle = CreateFileW(File().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        EXPECT_TRUE(WriteFile(handle, file.data(), static_cast<DWORD>(file.size()), &written, nullptr));
        CloseHandle(handle);
    }

    const std::wstring& Path() const { return path_; }
    std::wstring File() const { return path_ + L"\\Vantor5.INI"; }
    bool HasFolder(const std::wstring& name) const {
        return GetFileAttributesW((path_ + L"\\" + name).c_str()) != INVALID_FILE_ATTRIBUTES;
    }

  private:
    static constexpr wchar_t kVariable[] = L"VANTOR5_SYSTEM_FOLDER";
    std::wstring path_;
};

}  // namespace v5::test
