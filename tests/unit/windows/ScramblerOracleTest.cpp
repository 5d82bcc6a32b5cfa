// The scrambler and its random numbers against the script engine's own, for thousands of values.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>

#include "platform/AnsiCodePage.h"
#include "security/RandomNumbers.h"
#include "security/Scrambler.h"

namespace v5 {

namespace {

std::int32_t Bits(float number) {
    return static_cast<std::int32_t>(number * 16777216);
}

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
    RandomNumbers random;
    int numbers = 0, fractions = 0, texts = 0;
    for (char buffer[256]; std::fgets(buffer, sizeof buffer, script) != nullptr;) {
        std::istringstream line(buffer);
        std::string kind, expected;
        line >> kind;
        if (kind == "R") {
            std::int32_t n = 0, bits = 0;
            line >> n >> bits;
            ASSERT_EQ(Bits(random.Rnd(static_cast<float>(-n))), bits) << n;
            while (line >> bits) {
                ASSERT_EQ(Bits(random.Next()), bits) << n;
            }
            ++numbers;
        } else if (kind == "F") {
            std::int32_t n = 0, bits = 0;
            line >> n >> bits;
            ASSERT_EQ(Bits(random.Rnd(static_cast<float>(-n / 7.0))), bits) << n;
            ++fractions;
        } else if (kind == "S") {
            const std::wstring text = TextOfCodes(line);
            line >> expected;
            ASSERT_EQ(std::wstring(Scramble(text, L"7Q%-k#", codePage).View()),
                      std::wstring(expected.begin(), expected.end()))
                << buffer;
            ++texts;
        }
    }
    EXPECT_EQ(_pclose(script), 0);
    EXPECT_EQ(numbers, 2958);
    EXPECT_EQ(fractions, 40);
    EXPECT_EQ(texts, 300);
}

}  // namespace v5
