// The INI reader against the system's own profile functions, on generated files.
#include <windows.h>
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

#include "base/Text.h"
#include "config/IniFile.h"
#include "platform/AnsiCodePage.h"

namespace v5 {

namespace {

constexpr std::array<std::wstring_view, 3> kSections = {L"Dahs1", L"Dahs2", L"Dahs11"};
constexpr std::array<std::wstring_view, 3> kKeys = {L"SiteID", L"HDR", L"SQLData.NET"};

enum class Encoding { Ansi, Utf8, Utf16 };

std::string Encoded(const std::wstring& text, Encoding encoding) {
    if (encoding == Encoding::Utf16) {
        const std::wstring marked = L"\uFEFF" + text;
        return {reinterpret_cast<const char*>(marked.data()), marked.size() * sizeof(wchar_t)};
    }
    const UINT page = encoding == Encoding::Ansi ? CP_ACP : CP_UTF8;
    const auto size = static_cast<int>(text.size());
    std::string bytes(text.size() * 4, '\0');
    const int length =
        WideCharToMultiByte(page, 0, text.data(), size, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<size_t>(length));
    return (encoding == Encoding::Utf8 ? "\xEF\xBB\xBF" : "") + bytes;
}

// Lines put together from the pieces that the profile rules are about.
std::wstring RandomFile(std::mt19937& random) {
    // No blanks inside the brackets: the test machine keeps them as part of the name, we drop them as everywhere else.
    const std::wstring pieces[] = {
        L"[Dahs1]", L"[dahs2]",  L"[DAHS11]", L"[Dahs1",       L"]",     L"[Other]", L"[",
        L"SiteID=", L"siteid =", L" HDR\t= ", L"SQLData.NET=", L"=",     L";",       L"\"",
        L"'",       L" ",        L"\t",       L"ab",           L"A b;c", L"x=y",     L"\u00E9\u00FC",
        L"\u20AC",  L"\x1A",     L"#",        L"%A%",          L"\\",    L"\"q\"",   L"'q'"};
    const std::wstring ends[] = {L"\r\n", L"\n", L"\r\n\r\n"};
    const std::wstring starts[] = {L"[Dahs1]\n", L"[dahs2]\r\n", L"SiteID=", L"siteid =", L" HDR\t= ", L"SQLData.NET="};
    std::wstring text = L"[Dahs1]\r\n";
    for (size_t line = random() % 14 + 1; line > 0; --line) {
        text += random() % 2 == 0 ? starts[random() % std::size(starts)] : L"";
        for (size_t piece = random() % 5; piece > 0; --piece) {
            text += pieces[random() % std::size(pieces)];
        }
        text += line > 1 || random() % 2 == 0 ? ends[random() % std::size(ends)] : L"";
    }
    return text;
}

// Section and key are whole literals.
std::wstring OracleValue(const std::wstring& path, std::wstring_view section, std::wstring_view key) {
    wchar_t value[512] = L"";
    GetPrivateProfileStringW(section.data(), key.data(), L"", value, 512, path.c_str());
    return value;
}

}  // namespace

TEST(IniFileOracle, GeneratedFilesReadAlike) {
    wchar_t temp[MAX_PATH + 1] = L"";
    GetTempPathW(MAX_PATH + 1, temp);
    const IniNames sections(kSections);
    const IniNames keys(kKeys);
    std::mt19937 random(2024);
    int found = 0;
    for (int round = 0; round < 600; ++round) {
        const std::wstring text = RandomFile(random);
        const std::string bytes = Encoded(text, static_cast<Encoding>(round % 3));
        // A name of its own each time: the system keeps the last files that it has read.
        const std::wstring path = std::wstring(temp) + L"v5ini" + std::to_wstring(round) + L".ini";
        const HANDLE handle = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        ASSERT_TRUE(WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
        CloseHandle(handle);

        const IniFile file(FromTextFile(bytes), sections);
        for (size_t section = 0; section < kSections.size(); ++section) {
            std::array<std::wstring_view, kKeys.size()> values;
            file.ReadSection(section, keys, values);
            for (size_t key = 0; key < kKeys.size(); ++key) {
                found += values[key].empty() ? 0 : 1;
                EXPECT_EQ(values[key], OracleValue(path, kSections[section], kKeys[key]))
                    << "round " << round << ", " << ToAnsi(kSections[section]) << ", " << ToAnsi(kKeys[key]) << " in\n"
                    << ToAnsi(text);
            }
        }
        DeleteFileW(path.c_str());
    }
    EXPECT_GT(found, 100) << "the files hold too little to compare";
}

}  // namespace v5
