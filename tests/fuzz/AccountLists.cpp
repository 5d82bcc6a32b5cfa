// Lists of accounts as clients give and read them.
#include "security/AccountLists.h"

#include <algorithm>

#include "base/Text.h"
#include "fuzz/Fuzz.h"
#include "unit/FakeSecurityHost.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    using v5::fuzz::Require;
    v5::fuzz::Input input(data, size);
    const auto choice = input.Take<std::uint8_t>();
    const v5::PrivilegeLevel levels[] = {51, 52, 55};
    const v5::PrivilegeLevel level = levels[choice % 3];
    std::wstring list = input.Text();
    std::erase_if(list, [](wchar_t c) {  // markup is the parser's to escape, and surrogates are the text's to pair
        return c == 0 || std::wstring_view(L"<>|=!/").find(c) != std::wstring_view::npos || (c >= 0xD800 && c < 0xE000);
    });

    v5::FakeSecurityHost host;
    if (choice & 8) {
        host.machine.accountNames[L"S-1-5-32"] = L" Users\t";
        host.machine.accountNames[L"S-"] = L"Nobody";
    }
    v5::SecurityMessages messages;
    v5::SecuritySite site(host, messages);
    site.Connect(v5::kTestConnection, L"fuzz");
    v5::UserIdentity user(site);
    v5::AccountLists lists(site, user);

    try {
        lists.Replace(level, list);
    } catch (const v5::SecurityProblem& problem) {
        Require(!v5::IsXmlText(list), "a list that a document can hold is taken");
        Require(problem.Message() == L"Can't save XML [STR-0127]", "the refusal says why");
        const std::wstring& row = host.machine.rows[std::wstring(v5::kAccountsDocument.key)];
        Require(row.empty() && host.machine.log.empty(), "a refused list changes nothing");
        return 0;
    }
    const v5::AccountListTexts read = lists.Read();
    const std::wstring& stored = level == 51 ? read.level1 : level == 52 ? read.level2 : read.level3;
    for (const std::wstring& item : v5::Split(list, L',')) {
        Require(stored.find(v5::TrimXml(item)) != stored.npos, "every account of a list is read again");
    }
    Require(read.level1.size() + read.level2.size() + read.level3.size() == stored.size(), "other levels stay");
    const auto& calls = host.machine.calls;
    Require(std::count(calls.begin(), calls.end(), "WriteEvent") == (stored.empty() ? 0 : 2),
            "a change is recorded, what is no change is not");

    const auto rows = host.machine.rows;
    lists.Replace(level, list);
    Require(host.machine.rows == rows, "the same list again changes nothing");
    if (choice & 16) {
        host.machine.sid = v5::Trim(list.substr(0, list.find(L',')));
        lists.UserLevel();
    }
    Require(messages.sent.empty(), "no problem is reported");
    return 0;
}
