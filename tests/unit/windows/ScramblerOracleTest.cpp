// The scrambler against the script engine, its random numbers among it, for many texts.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>

#include "platform/AnsiCodePage.h"
#include "security/Scrambler.h"

namespace v5 {

namespace {

std::wstring TextOfCodes(std::istream& line) {
    std::string codes, code;
    line >> codes;
    std::istringstream parts(codes.substr(1));
    std::wstring text;
    while (std::getline(parts, code, '-')) {
        const char ansi = static_cast<char>(std::stoi(code));
        wchar_t c = 0;
        MultiByteToWideChar(CP_ACP, 0, &ansi, 1, &c, 1);
        text += c;
    }
    return text;
}

}  // namespace

TEST(ScramblerOracle, AgreesWithTheScriptEngine) {
    const std::string drive = V5_SOURCE_DIR[0] == '/' ? "Z:" : "";
    const std::string command = "cscript //nologo " + drive + V5_SOURCE_DIR "/tests/unit/windows/ScramblerOracle.vbs";
    FILE* const script = _popen(command.c_str(), "rt");
    ASSERT_NE(script, nullptr);
    const AnsiCodePage codePage;
    int texts = 0;
    for (char buffer[256]; std::fgets(buffer, sizeof buffer, script) != nullptr; ++texts) {
        std::istringstream line(buffer);
        const std::wstring text = TextOfCodes(line);
        std::string expected;
        line >> expected;
        ASSERT_EQ(std::wstring(Scramble(text, L"7Q%-k#", codePage).View()),
                  std::wstring(expected.begin(), expected.end()))
            << buffer;
    }
    EXPECT_EQ(_pclose(script), 0);
    EXPECT_EQ(texts, 1500);
}

}  // namespace v5
