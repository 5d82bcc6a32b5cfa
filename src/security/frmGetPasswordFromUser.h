// The window that asks the user for a password.
#pragma once

#include <functional>

#include "security/SecurityHost.h"

namespace v5 {

// Shows the dialog modally and gives each text that the user types to `isSettled`, until that answers true or the user
// cancels. It is one dialog: hidden while a text is judged, and shown again, empty, where the user left it. Throws
// std::system_error when the system has no room for it, and what `isSettled` throws.
void AskForPassword(const PasswordDialogTexts& texts, const std::function<bool(SecretText)>& isSettled);

}  // namespace v5
