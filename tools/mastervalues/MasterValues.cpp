// Chooses two master passwords at random and prints them with the lines for ProductConstants.h.
//
//   v5mastervalues KEY        KEY: the scrambler's key, 6 printable ASCII characters
//
// The passwords are shown once and stored nowhere.
#include <cstdio>
#include <random>
#include <string>

#include "security/Scrambler.h"

namespace {

// Printable ASCII has the same codes in every ANSI code page.
struct Ascii : v5::CodePage {
    std::int16_t CodeOf(wchar_t character) const override { return static_cast<std::int16_t>(character); }
};

std::wstring RandomPassword(size_t length, std::random_device& device) {
    // Without characters that are mistaken for each other.
    const std::wstring alphabet = L"abcdefghjkmnpqrstuvwxyzABCDEFGHJKLMNPQRSTUVWXYZ23456789-+#%&!";
    std::uniform_int_distribution<size_t> index(0, alphabet.size() - 1);
    std::wstring password;
    while (password.size() < length) {
        password += alphabet[index(device)];
    }
    return password;
}

// Tries passwords of one length until the scrambled form of one has the wanted number of digits.
void Choose(const std::wstring& key, size_t length, size_t digits) {
    std::random_device device;
    for (;;) {
        const std::wstring password = RandomPassword(length, device);
        const v5::SecretText scrambled = v5::Scramble(password, key, Ascii());
        if (scrambled.Size() == digits) {
            std::printf("// %ls\ninline constexpr std::wstring_view kMasterPassword%zu = L\"%ls\";\n", password.c_str(),
                        digits, std::wstring(scrambled.View()).c_str());
            return;
        }
    }
}

}  // namespace

int main(int count, char** arguments) {
    const std::string key = count == 2 ? arguments[1] : "";
    bool printable = key.size() == v5::kScramblerKeyLength;
    for (const char c : key) {
        printable = printable && c > ' ' && c <= '~' && c != '"' && c != '\\';
    }
    if (!printable) {
        (void)std::fprintf(stderr, "usage: v5mastervalues KEY (6 printable ASCII characters, neither \" nor \\)\n");
        return 1;
    }
    std::printf("inline constexpr std::wstring_view kScramblerKey = L\"%s\";\n", key.c_str());
    Choose({key.begin(), key.end()}, 8, 24);
    Choose({key.begin(), key.end()}, 11, 37);
    return 0;
}
