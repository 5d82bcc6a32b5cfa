// The window that asks the user for a password.
#pragma once

#include <string>

#include "security/PasswordPrompt.h"

namespace v5 {

class PasswordForm final : public PasswordPrompt {
  public:
    void SetMessage(std::wstring_view message) override { mMessage = message; }
    void SetWindowTitle(std::wstring_view title) override { mTitle = title; }

    // Shows a fresh, empty window. Throws std::system_error when the system has no room for it.
    std::optional<SecretText> Ask() override;

  private:
    std::wstring mMessage = L"Enter the password:";
    std::wstring mTitle = L"Password";
};

}  // namespace v5
