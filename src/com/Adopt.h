// Ownership of a new COM object.
#pragma once

#include <windows.h>

#include <wrl/client.h>

namespace v5 {

// Takes over the one reference that a new object starts with. Use it instead of ComPtr::Attach: MinGW's counts a
// reference of its own, and the object would never end.
template <class Object>
Microsoft::WRL::ComPtr<Object> Adopt(Object* fresh) {
    Microsoft::WRL::ComPtr<Object> owner;
    *owner.GetAddressOf() = fresh;
    return owner;
}

}  // namespace v5
