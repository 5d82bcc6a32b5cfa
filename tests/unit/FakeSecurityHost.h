// Stand-ins for what the security rules need from the machine. Any operation can be made to fail, by its name.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "FailCall.h"
#include "FakeXml.h"
#include "Latin1.h"
#include "security/Security.h"
#include "security/TextConversionFunctions.h"

namespace v5 {

// The messages to the client, a line for each: its type and its text.
struct SecurityMessages : MessageSink {
    std::wstring sent;

    void RaiseMessage(long type, std::wstring_view text) override {
        sent.append(std::to_wstring(type)).append(L" ").append(text).append(L"\n");
    }

    // What was sent since the last call.
    std::wstring Take() { return std::exchange(sent, {}); }
};

// What a test sets and sees.
struct FakeMachine : Operations {
    std::map<std::wstring, std::wstring> rows;  // by document key
    std::wstring log;                           // a line for each record: its tag, category, kind and text
    std::wstring sqlUser;                       // not empty: SQL authentication
    bool allowsSqlLogins = false;

    std::wstring windowsUser = L"Operator7";
    std::wstring sid = L"S-1-5-21-7";
    std::vector<std::wstring> groups;
    std::map<std::wstring, std::wstring> accountNames;
    bool isAdministrator = false;

    std::deque<std::wstring> typed;   // into the password dialog; then the user cancels
    std::vector<std::wstring> asked;  // "message/title" of each password dialog
    std::vector<std::wstring> boxes;  // "style|title|text"
    std::vector<std::uint32_t> pauses;
};

struct FakeDatabase : SiteDatabase {
    FakeMachine& m_;

    explicit FakeDatabase(FakeMachine& machine) : m_(machine) {}

    bool SetApplicationName(std::wstring_view) override { return m_.Succeeds("SetApplicationName"); }
    bool Initialise(const SiteConnection&) override { return m_.Succeeds("Initialise"); }
    bool OpenSite(std::wstring_view) override { return m_.Succeeds("OpenSite"); }
    void Close() override { m_.Require("Close"); }
    void ForgetLogons(std::wstring_view) override { m_.Require("ForgetLogons"); }
    std::wstring ReadLookup(std::wstring_view, std::wstring_view key) override {
        return m_.Answer("ReadLookup", m_.rows[std::wstring(key)]);
    }
    bool WriteLookup(std::wstring_view, std::wstring_view key, std::wstring_view value) override {
        const bool succeeds = m_.Succeeds("WriteLookup");
        if (succeeds) {
            m_.rows[std::wstring(key)] = value;
        }
        return succeeds;
    }
    bool WriteEvent(std::wstring_view, const CivilDateTime&, const EventRecord& record) override {
        if (!m_.Succeeds("WriteEvent")) {
            return false;
        }
        const std::wstring kind = L" " + std::to_wstring(record.kind) + L" ";
        m_.log += std::wstring(record.tag) + L" " + std::wstring(record.category) + kind + record.text + L"\n";
        return true;
    }
    std::wstring CurrentUserName(std::wstring_view) override { return m_.Answer("CurrentUserName", m_.sqlUser); }
    std::wstring ConnectionString(std::wstring_view) override {
        return m_.Answer("ConnectionString", std::wstring(m_.sqlUser.empty() ? L"windows" : L"sql"));
    }
    bool UsesWindowsAuthentication(std::wstring_view connectionString) override {
        return m_.Answer("UsesWindowsAuthentication", connectionString == L"windows");
    }
    bool AllowsSqlLogins(std::wstring_view) override { return m_.Answer("AllowsSqlLogins", m_.allowsSqlLogins); }
};

struct FakeAccounts : Accounts {
    FakeMachine& m_;

    explicit FakeAccounts(FakeMachine& machine) : m_(machine) {}

    std::wstring CurrentUserName() override { return m_.Answer("Accounts.CurrentUserName", m_.windowsUser); }
    std::wstring CurrentUserSid() override { return m_.Answer("CurrentUserSid", m_.sid); }
    bool IsCurrentUserMemberOfGroup(std::wstring_view sid) override {
        return m_.Answer("IsCurrentUserMemberOfGroup",
                         std::find(m_.groups.begin(), m_.groups.end(), sid) != m_.groups.end());
    }
    bool IsCurrentUserAnAdministrator() override {
        return m_.Answer("IsCurrentUserAnAdministrator", m_.isAdministrator);
    }
    std::wstring AccountNameOfSid(std::wstring_view sid) override {
        return m_.Answer("AccountNameOfSid", m_.accountNames[std::wstring(sid)]);
    }
};

class FakeSecurityHost : public SecurityHost, public Clock {
  public:
    mutable FakeMachine machine;
    Latin1 codePage;
    CivilDateTime now = {2014, 3, 5, 14, 7, 9};

    std::unique_ptr<SiteDatabase> NewDatabase(MessageSink&) override {
        machine.Require("NewDatabase");
        return std::make_unique<FakeDatabase>(machine);
    }
    std::unique_ptr<Accounts> NewAccounts() override {
        machine.Require("NewAccounts");
        return std::make_unique<FakeAccounts>(machine);
    }
    std::unique_ptr<XmlDocument> ParseXml(std::wstring_view text) override {
        machine.Require("ParseXml");
        return std::make_unique<MemoryDocument>(text, machine);
    }
    void AskForPassword(const PasswordDialogTexts& texts, const std::function<bool(SecretText)>& isSettled) override {
        machine.Require("AskForPassword");
        machine.asked.push_back(texts.Message + L"/" + texts.WindowTitle);
        for (bool settled = false; !settled && !machine.typed.empty();) {
            SecretText typed(machine.typed.front());
            machine.typed.pop_front();
            settled = isSettled(std::move(typed));
        }
    }
    void ShowMessageBox(std::wstring_view text, std::int32_t style, std::wstring_view title) override {
        machine.Require("ShowMessageBox");
        machine.boxes.push_back(std::to_wstring(style) + L"|" + std::wstring(title) + L"|" + std::wstring(text));
    }
    void Pause(std::uint32_t milliseconds) override { machine.pauses.push_back(milliseconds); }
    const Clock& LocalClock() const override { return *this; }

    const CodePage& SystemCodePage() const override { return codePage; }
    CivilDateTime LocalNow() const override {
        machine.Require("LocalNow");
        return now;
    }
    std::uint32_t TickMilliseconds() const override { return 0; }
};

inline const SiteConnection kTestConnection = {L"SITE1", L"EN", L"config", L"alarms", false};

// Security on a machine of its own.
struct SecurityBench {
    FakeSecurityHost host;
    SecurityMessages messages;
    Security security{host, messages};

    bool Connect() { return security.Setup(kTestConnection, L"Test"); }
    void Put(const DocumentFormat& format, std::wstring_view elements) {
        host.machine.rows[std::wstring(format.key)] = StoredForm(L"<root>" + std::wstring(elements) + L"</root>");
    }
};

}  // namespace v5
