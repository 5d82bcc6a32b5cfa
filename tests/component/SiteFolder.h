// A folder with a site file, to which VANTOR5_SYSTEM_FOLDER points while this object lives. In the file's text $folder$
// stands for the folder's path; its subfolder V may serve as a DAHS's own folder.
#pragma once

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace v5::test {

class SiteFolder {
  public:
    explicit SiteFolder(const std::string& file)
        : mPath(std::filesystem::temp_directory_path() / ("V5Site" + std::to_string(GetCurrentProcessId()))) {
        std::filesystem::create_directory(mPath);
        Write(file);
        SetEnvironmentVariableW(kVariable, mPath.c_str());
    }
    ~SiteFolder() {
        SetEnvironmentVariableW(kVariable, nullptr);
        std::error_code nobodyCares;
        std::filesystem::remove_all(mPath, nobodyCares);
    }
    SiteFolder(const SiteFolder&) = delete;
    SiteFolder& operator=(const SiteFolder&) = delete;

    void Write(std::string text) const {
        constexpr std::string_view kMark = "$folder$";
        const std::string path = mPath.string();
        for (size_t at = 0; (at = text.find(kMark, at)) != std::string::npos; at += path.size()) {
            text.replace(at, kMark.size(), path);
        }
        std::ofstream(mPath / "Vantor5.INI", std::ios::binary) << text;
    }

    std::wstring Path() const { return mPath.wstring(); }
    std::wstring File() const { return (mPath / "Vantor5.INI").wstring(); }
    bool HasFolder(const std::wstring& name) const { return std::filesystem::is_directory(mPath / name); }

  private:
    static constexpr wchar_t kVariable[] = L"VANTOR5_SYSTEM_FOLDER";
    std::filesystem::path mPath;
};

}  // namespace v5::test
