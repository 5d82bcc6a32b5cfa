// BSTR arguments and answers of calls on other components.
#pragma once

#include <windows.h>

#include <comutil.h>

#include <string>
#include <string_view>

#include "com/Values.h"

namespace v5 {

// A BSTR argument that is freed after the call. Throws std::bad_alloc.
inline _bstr_t ToBstr(std::wstring_view text) {
    return {NewBstr(text), false};
}

// The text of an answer, which is freed.
inline std::wstring TakeText(BSTR text) {
    const _bstr_t owner(text, false);
    return std::wstring(View(text));
}

}  // namespace v5
