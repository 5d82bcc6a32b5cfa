// What the security rules need from the machine: a port. One host serves one security object.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/Clock.h"
#include "base/CodePage.h"
#include "base/MessageSink.h"
#include "security/SecretText.h"
#include "security/SiteDatabase.h"
#include "security/UtilityXMLDOMFunctions.h"

namespace v5 {

// What the password dialog says. An empty text leaves the dialog's own.
struct PasswordDialogTexts {
    std::wstring Message;      // above the text box
    std::wstring WindowTitle;  // the window's caption
};

class SecurityHost {
  public:
    virtual ~SecurityHost() = default;

    // New objects of the neighbouring components. Throw AutomationError when a component cannot be created. The
    // database's own messages go to `messages` unchanged, for as long as the object lives.
    virtual std::unique_ptr<SiteDatabase> NewDatabase(MessageSink& messages) = 0;
    virtual std::unique_ptr<Accounts> NewAccounts() = 0;

    // The document that a text is; null when the text is not well-formed. The text has passed IsSafeToParse.
    virtual std::unique_ptr<XmlDocument> ParseXml(std::wstring_view text) = 0;

    // Shows the password dialog modally, its text box empty, and gives what the user typed (may be empty) to
    // `isSettled`; shows the same dialog again, where the user left it, until that answers true or the user cancels.
    virtual void AskForPassword(const PasswordDialogTexts& texts, const std::function<bool(SecretText)>& isSettled) = 0;

    // The product's own message box with a message-box style: modal, without an owner, without a time-out.
    virtual void ShowMessageBox(std::wstring_view text, std::int32_t style, std::wstring_view title) = 0;

    virtual void Pause(std::uint32_t milliseconds) = 0;

    virtual const Clock& LocalClock() const = 0;
    virtual const CodePage& SystemCodePage() const = 0;
};

}  // namespace v5
