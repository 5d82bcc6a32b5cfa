// Stand-ins for what the security rules need from the machine. Any operation can be made to fail, by its name.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "security/SecurityHost.h"

namespace v5 {

struct SentMessage {
    long type;
    std::wstring text;

    bool operator==(const SentMessage&) const = default;
};

struct SecurityMessages : MessageSink {
    std::vector<SentMessage> sent;

    void RaiseMessage(long type, std::wstring_view text) override { sent.push_back({type, std::wstring(text)}); }

    // What was sent since the last call.
    std::vector<SentMessage> Take() { return std::exchange(sent, {}); }
};

struct LoggedEvent {
    std::wstring text, category;
    std::int32_t kind;
    std::wstring tag;

    bool operator==(const LoggedEvent&) const = default;
};

// What a test sets and sees. `failing` names the operation that fails, after `whenItFails` has run: what a client does
// about the message that announces the failure.
struct FakeMachine {
    std::string failing;
    std::function<void()> whenItFails;
    std::function<void(const char*)> onCall = [](const char*) {};  // before each operation; may throw
    std::vector<std::string> calls;

    std::map<std::wstring, std::wstring> rows;  // by document key
    std::vector<LoggedEvent> log;
    std::wstring sqlUser;  // not empty: SQL authentication
    bool allowsSqlLogins = false;

    std::wstring windowsUser = L"Operator7";
    std::wstring sid = L"S-1-5-21-7";
    std::vector<std::wstring> groups;
    std::map<std::wstring, std::wstring> accountNames;
    bool isAdministrator = false;

    std::deque<std::wstring> typed;  // answers of the password prompt; then the user cancels
    std::wstring promptMessage, promptTitle;
    std::vector<std::wstring> boxes;  // "style|title|text"
    std::vector<std::uint32_t> pauses;

    bool Succeeds(const char* operation) {
        calls.emplace_back(operation);
        onCall(operation);
        if (failing != operation) {
            return true;
        }
        if (whenItFails) {
            whenItFails();
        }
        return false;
    }
    void Require(const char* operation) {
        if (!Succeeds(operation)) {
            throw AutomationError(0x80004005, L"it broke");
        }
    }
};

class FakeDatabase : public SiteDatabase {
  public:
    explicit FakeDatabase(FakeMachine& machine) : m_(machine) {}

    bool SetApplicationName(std::wstring_view) override { return m_.Succeeds("SetApplicationName"); }
    bool Initialise(const SiteConnection&) override { return m_.Succeeds("Initialise"); }
    bool OpenSite(std::wstring_view) override { return m_.Succeeds("OpenSite"); }
    void Close() override { m_.Require("Close"); }
    void ForgetLogons(std::wstring_view) override { m_.Require("ForgetLogons"); }
    std::wstring ReadLookup(std::wstring_view, std::wstring_view key) override {
        m_.Require("ReadLookup");
        return m_.rows[std::wstring(key)];
    }
    bool WriteLookup(std::wstring_view, std::wstring_view key, std::wstring_view value) override {
        if (!m_.Succeeds("WriteLookup")) {
            return false;
        }
        m_.rows[std::wstring(key)] = value;
        return true;
    }
    bool WriteEvent(std::wstring_view, const CivilDateTime&, const EventRecord& record) override {
        if (!m_.Succeeds("WriteEvent")) {
            return false;
        }
        m_.log.push_back({record.text, std::wstring(record.category), record.kind, std::wstring(record.tag)});
        return true;
    }
    std::wstring CurrentUserName(std::wstring_view) override {
        m_.Require("CurrentUserName");
        return m_.sqlUser;
    }
    std::wstring ConnectionString(std::wstring_view) override {
        m_.Require("ConnectionString");
        return m_.sqlUser.empty() ? L"windows" : L"sql";
    }
    bool UsesWindowsAuthentication(std::wstring_view connectionString) override {
        m_.Require("UsesWindowsAuthentication");
        return connectionString == L"windows";
    }
    bool AllowsSqlLogins(std::wstring_view) override {
        m_.Require("AllowsSqlLogins");
        return m_.allowsSqlLogins;
    }

  private:
    FakeMachine& m_;
};

class FakeAccounts : public Accounts {
  public:
    explicit FakeAccounts(FakeMachine& machine) : m_(machine) {}

    std::wstring CurrentUserName() override {
        m_.Require("Accounts.CurrentUserName");
        return m_.windowsUser;
    }
    std::wstring CurrentUserSid() override {
        m_.Require("CurrentUserSid");
        return m_.sid;
    }
    bool IsCurrentUserMemberOfGroup(std::wstring_view sid) override {
        m_.Require("IsCurrentUserMemberOfGroup");
        return std::find(m_.groups.begin(), m_.groups.end(), sid) != m_.groups.end();
    }
    bool IsCurrentUserAnAdministrator() override {
        m_.Require("IsCurrentUserAnAdministrator");
        return m_.isAdministrator;
    }
    std::wstring AccountNameOfSid(std::wstring_view sid) override {
        m_.Require("AccountNameOfSid");
        return m_.accountNames[std::wstring(sid)];
    }

  private:
    FakeMachine& m_;
};

class FakePrompt : public PasswordPrompt {
  public:
    explicit FakePrompt(FakeMachine& machine) : m_(machine) {}

    void SetMessage(std::wstring_view message) override { m_.promptMessage = message; }
    void SetWindowTitle(std::wstring_view title) override { m_.promptTitle = title; }
    std::optional<SecretText> Ask() override {
        m_.Require("Ask");
        if (m_.typed.empty()) {
            return std::nullopt;
        }
        SecretText answer(m_.typed.front());
        m_.typed.pop_front();
        return answer;
    }

  private:
    FakeMachine& m_;
};

class FakeSecurityHost : public SecurityHost, public Clock {
  public:
    FakeMachine machine;
    CivilDateTime now = {2014, 3, 5, 14, 7, 9};

    std::unique_ptr<SiteDatabase> NewDatabase(MessageSink&) override {
        machine.Require("NewDatabase");
        return std::make_unique<FakeDatabase>(machine);
    }
    std::unique_ptr<Accounts> NewAccounts() override {
        machine.Require("NewAccounts");
        return std::make_unique<FakeAccounts>(machine);
    }
    std::unique_ptr<XmlDocument> ParseXml(std::wstring_view) override { return nullptr; }
    std::unique_ptr<PasswordPrompt> NewPasswordPrompt() override {
        machine.Require("NewPasswordPrompt");
        return std::make_unique<FakePrompt>(machine);
    }
    void ShowMessageBox(std::wstring_view text, std::int32_t style, std::wstring_view title) override {
        machine.Require("ShowMessageBox");
        machine.boxes.push_back(std::to_wstring(style) + L"|" + std::wstring(title) + L"|" + std::wstring(text));
    }
    void Pause(std::uint32_t milliseconds) override { machine.pauses.push_back(milliseconds); }
    const Clock& LocalClock() const override { return *this; }

    std::int16_t AnsiCode(wchar_t c) const override { return c < 256 ? static_cast<std::int16_t>(c) : L'?'; }
    CivilDateTime LocalNow() const override { return now; }
    std::uint32_t TickMilliseconds() const override { return 0; }
};

inline const SiteConnection kTestConnection = {L"SITE1", L"EN", L"config", L"alarms", false};

}  // namespace v5
