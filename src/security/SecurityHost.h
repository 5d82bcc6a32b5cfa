// What the security rules need from the machine: a port. One host serves one security object.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "base/Clock.h"
#include "base/MessageSink.h"
#include "security/PasswordPrompt.h"
#include "security/Scrambler.h"
#include "security/SiteDatabase.h"
#include "security/UtilityXMLDOMFunctions.h"

namespace v5 {

class SecurityHost : public AnsiCodes {
  public:
    // New objects of the neighbouring components. Throw AutomationError when a component cannot be created. The
    // database's own messages go to `messages` unchanged, for as long as the object lives.
    virtual std::unique_ptr<SiteDatabase> NewDatabase(MessageSink& messages) = 0;
    virtual std::unique_ptr<Accounts> NewAccounts() = 0;

    // The document that a text is; null when the text is not well-formed. The text has passed IsSafeToParse.
    virtual std::unique_ptr<XmlDocument> ParseXml(std::wstring_view text) = 0;

    virtual std::unique_ptr<PasswordPrompt> NewPasswordPrompt() = 0;

    // The product's own message box with a message-box style: modal, without an owner, without a time-out.
    virtual void ShowMessageBox(std::wstring_view text, std::int32_t style, std::wstring_view title) = 0;

    virtual void Pause(std::uint32_t milliseconds) = 0;

    virtual const Clock& LocalClock() const = 0;
};

}  // namespace v5
