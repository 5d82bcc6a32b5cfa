#include "v5site/PasswordMask.h"

#include <gtest/gtest.h>

#include <string>

namespace v5site {

TEST(PasswordMask, OnlyPasswordsAreHidden) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"Server=s;Password=secret;Database=d", L"Server=s;Password=***;Database=d"},
        {L"PWD=secret", L"PWD=***"},
        {L" pwd = secret ; x=y", L" pwd =***; x=y"},
        {L"Jet OLEDB:Database Password=secret;", L"Jet OLEDB:Database Password=***;"},
        {L"Password=\"se;cret\";a=b", L"Password=***;a=b"},
        {L"Password='se;''cr;et';a=b", L"Password=***;a=b"},
        {L"Pwd={se;cr}}et};a=b", L"Pwd=***;a=b"},
        {L"Password=\"se;cret", L"Password=***"},
        {L"Password=se=cret;a=b", L"Password=***;a=b"},
        {L"Password=", L"Password=***"},
        {L"x;Password=secret", L"x;Password=***"},
        {L"App=\"x;Password=y\";a", L"App=\"x;Password=y\";a"},
        {L"Trusted;PasswordAge=3;=;;", L"Trusted;PasswordAge=3;=;;"},
        {L"no settings", L"no settings"},
        {L"", L""},
    };
    for (const auto& [text, masked] : cases) {
        EXPECT_EQ(MaskPasswords(text), masked) << std::string(text, text + std::wstring(text).size());
    }
}

}  // namespace v5site
