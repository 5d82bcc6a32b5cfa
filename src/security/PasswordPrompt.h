// The password dialog as the privilege check sees it: a port, so that the check runs without a window.
#pragma once

#include <optional>
#include <string_view>

#include "security/SecretText.h"

namespace v5 {

class PasswordPrompt {
  public:
    virtual ~PasswordPrompt() = default;

    // The prompt above the text box, and the window's caption. A prompt that is given neither keeps its own texts.
    virtual void SetMessage(std::wstring_view message) = 0;
    virtual void SetWindowTitle(std::wstring_view title) = 0;

    // Empties the text box, shows the dialog modally and gives what the user typed (may be empty); nullopt when the
    // user cancelled. May be called again on the same prompt: message and title stay.
    virtual std::optional<SecretText> Ask() = 0;
};

}  // namespace v5
