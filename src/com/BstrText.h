// BSTR arguments of calls on other components.
#pragma once

#include <windows.h>

#include <comutil.h>

#include <string>
#include <string_view>

#include "com/Values.h"

namespace v5 {

// A BSTR argument that is freed after the call. Throws std::bad_alloc.
inline _bstr_t ToBstr(std::wstring_view text) {
    BstrOwner owner(NewBstr(text));
    _bstr_t argument(owner.get(), false);
    static_cast<void>(owner.release());
    return argument;
}

}  // namespace v5
