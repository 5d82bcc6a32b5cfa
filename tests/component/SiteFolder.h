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
        : path_(std::filesystem::temp_directory_path() / ("V5Site" + std::to_string(GetCurrentProcessId()))) {
        std::filesystem::create_directory(path_);
        Write(file);
        SetEnvironmentVariableW(kVariable, path_.c_str());
    }
    ~SiteFolder() {
        SetEnvironmentVariableW(kVariable, nullptr);
        std::error_code nobodyCares;
        std::filesystem::remove_all(path_, nobodyCares);
    }
    SiteFolder(const SiteFolder&) = delete;
    SiteFolder& operator=(const SiteFolder&) = delete;

    void Write(std::string text) const {
        constexpr std::string_view kMark = "$folder$";
        const std::string path = path_.string();
        for (size_t at = 0; (at = text.find(kMark, at)) != std::string::npos; at += path.size()) {
            text.replace(at, kMark.size(), path);
        }
        std::ofstream(path_ / "Vantor5.INI", std::ios::binary) << text;
    }

    std::wstring Path() const { return path_.wstring(); }
    std::wstring File() const { return (path_ / "Vantor5.INI").wstring(); }
    bool HasFolder(const std::wstring& name) const { return std::filesystem::is_directory(path_ / name); }

  private:
    static constexpr wchar_t kVariable[] = L"VANTOR5_SYSTEM_FOLDER";
    std::filesystem::path path_;
};

}  // namespace v5::test
