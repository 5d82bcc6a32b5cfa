// What a DLL tells the shared server code about itself: its classes and its type library.
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <wrl/client.h>

#include <span>

namespace v5 {

// One creatable class. `create` makes an object and answers the interface asked for; it does not throw.
struct ClassEntry {
    const CLSID* clsid;
    const wchar_t* progId;       // "V5Strings.DahsIniMain"
    const wchar_t* description;  // shown by object browsers and registry tools
    HRESULT (*create)(REFIID iid, void** object);
};

struct Component {
    const GUID* libraryId;
    WORD libraryMajor;
    WORD libraryMinor;
    std::span<const ClassEntry> classes;
};

// Defined once by each DLL that links this code.
const Component& ThisComponent();

// The type library in this module's resources; loaded when first needed. Throws AutomationError.
Microsoft::WRL::ComPtr<ITypeLib> ComponentTypeLibrary();

// The number of live objects and server locks; the DLL may be unloaded when there is none.
void AddComponentUse() noexcept;
void ReleaseComponentUse() noexcept;
bool IsComponentInUse() noexcept;

}  // namespace v5
