// Writes and removes the component's registry entries, for the machine or for the current user.
#pragma once

#include <windows.h>

namespace v5 {

class Registration {
  public:
    // Under HKEY_LOCAL_MACHINE\Software\Classes; needs administrator rights.
    static Registration ForMachine() { return Registration(HKEY_LOCAL_MACHINE); }
    // Under HKEY_CURRENT_USER\Software\Classes.
    static Registration ForCurrentUser() { return Registration(HKEY_CURRENT_USER); }

    // Writes the classes, their programmatic identifiers, the interfaces and the type library. When a step fails
    // what was written is removed again and the failure's status is returned.
    HRESULT Register() const noexcept;

    // Removes what Register writes and nothing else: entries that another build's width still needs, and interface
    // entries that belong to another type library, stay. Removing what is not there succeeds.
    HRESULT Unregister() const noexcept;

  private:
    explicit Registration(HKEY root) : mRoot(root) {}

    HKEY mRoot;
};

}  // namespace v5
