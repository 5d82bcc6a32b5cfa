#include "v5site/PasswordMask.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace v5site {

namespace {

// Connection strings with secrets in every place and dress; each secret holds the letters that nothing else does.
class Generator {
  public:
    explicit Generator(unsigned seed) : mRandom(seed) {}

    std::wstring Connection(int depth) {
        std::wstring text;
        for (size_t i = 0, count = 1 + Below(4); i < count; ++i) {
            text += Setting(depth) + (i + 1 < count || Below(2) == 0 ? L";" : L"");
        }
        return text;
    }

  private:
    size_t Below(size_t end) { return mRandom() % end; }

    static std::wstring Quoted(const std::wstring& text, wchar_t open, wchar_t close) {
        std::wstring quoted(1, open);
        for (const wchar_t c : text) {
            quoted.append(c == close ? 2 : 1, c);
        }
        return quoted + close;
    }

    std::wstring InSomeQuotes(const std::wstring& text) {
        const wchar_t* quotes[] = {L"\"\"", L"''", L"{}"};
        const wchar_t* pair = quotes[Below(3)];
        return Quoted(text, pair[0], pair[1]);
    }

    std::wstring Setting(int depth) {
        const wchar_t* names[] = {L"Password", L" pwd ", L"PWD", L"Jet OLEDB:Database Password", L"x;Passwd", L"a=Pwd"};
        const wchar_t* secrets[] = {L"QZ", L"Q=Z", L"Z\"Q", L"Q'Z"};
        const wchar_t* quotedSecrets[] = {L"Q;Z", L"Z\"';=Q", L"{Q}}Z", L"Q;Pwd=Z"};
        const wchar_t* addressSecrets[] = {L"Q@Z", L"Q/;Z", L"Q;pwd=Z", L"Z;PWD='Q@Z'", L"Q;Password=Z;x"};
        switch (Below(depth > 0 ? 5 : 4)) {
            case 0:
                return std::wstring(names[Below(6)]) + L"=" + secrets[Below(4)];
            case 1:
                return std::wstring(names[Below(6)]) + L"= " + InSomeQuotes(quotedSecrets[Below(4)]);
            case 2:
                return L"Reports=https://me:" + std::wstring(addressSecrets[Below(5)]) + L"@host/p";
            case 3:
                return Below(2) == 0 ? L"Server=s" : L"PasswordAge = 3";
            default:
                return L"Extended Properties=" + InSomeQuotes(Connection(depth - 1));
        }
    }

    std::mt19937 mRandom;
};

}  // namespace

TEST(PasswordMask, NoSecretPasses) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        const std::wstring text = Generator(seed).Connection(3), masked = MaskPasswords(text);
        ASSERT_EQ(masked.find_first_of(L"QZ"), std::wstring::npos) << std::string(text.begin(), text.end()) << "\n"
                                                                   << std::string(masked.begin(), masked.end());
    }
}

TEST(PasswordMask, WhatIsNoSecretStays) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"Server=s;Password=\"se;cret\";Database=d", L"Server=s;Password=***;Database=d"},
        {L"App=\"x;Pwd=\"\"y;z\"\";b=1\";a", L"App=\"x;Pwd=***;b=1\";a"},
        {L"U=https://me:s@h:80/p;a=b", L"U=https://me:***@h:80/p;a=b"},
        {L"Trusted;PasswordAge=3;=;;U=http://h:80/p", L"Trusted;PasswordAge=3;=;;U=http://h:80/p"},
        {L"", L""}};
    for (const auto& [text, masked] : cases) {
        EXPECT_EQ(MaskPasswords(text), masked) << std::string(text, text + std::wstring(text).size());
    }
}

}  // namespace v5site
