// Between the rules' values and automation's: the only place where a BSTR, a SAFEARRAY or a VARIANT_BOOL is made.
#pragma once

#include <windows.h>

#include <comutil.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace v5 {

using Microsoft::WRL::ComPtr;

// The text of a BSTR, line breaks and NULs included; a null BSTR is the empty text. Valid while the BSTR is.
inline std::wstring_view View(BSTR text) {
    return text == nullptr ? std::wstring_view() : std::wstring_view(text, SysStringLen(text));
}

struct FreeBstr {
    void operator()(BSTR text) const { SysFreeString(text); }
};
using BstrOwner = std::unique_ptr<OLECHAR, FreeBstr>;

// The text of a BSTR that is ours, which is freed. Throws std::bad_alloc.
inline std::wstring TakeText(BSTR text) {
    const BstrOwner owner(text);
    return std::wstring(View(text));
}

inline bool ToBool(VARIANT_BOOL value) {
    return value != VARIANT_FALSE;
}

// A new BSTR that the caller owns, never null. Throws std::bad_alloc.
BSTR NewBstr(std::wstring_view text);

// The same as an argument, freed after the call. Throws std::bad_alloc.
inline _bstr_t ToBstr(std::wstring_view text) {
    BstrOwner owner(NewBstr(text));
    _bstr_t argument(owner.get(), false);
    static_cast<void>(owner.release());
    return argument;
}

// A text as a VARIANT. Throws std::bad_alloc.
inline _variant_t TextVariant(std::wstring_view text) {
    _variant_t result;
    V_BSTR(&result) = NewBstr(text);
    V_VT(&result) = VT_BSTR;
    return result;
}

// A new zero-based array of texts (VT_ARRAY|VT_BSTR) that the caller owns. Throws std::bad_alloc.
VARIANT NewTextArray(const std::vector<std::wstring>& texts);

// Packs a rule's answer into the out-parameter that it is returned through. `out` is never null here.
inline void Pack(bool value, VARIANT_BOOL* out) {
    *out = value ? VARIANT_TRUE : VARIANT_FALSE;
}
inline void Pack(std::int32_t value, long* out) {
    *out = value;
}
inline void Pack(double value, double* out) {
    *out = value;
}
inline void Pack(std::wstring_view value, BSTR* out) {
    *out = NewBstr(value);
}
inline void Pack(const std::vector<std::wstring>& value, VARIANT* out) {
    *out = NewTextArray(value);
}
template <class Value, class Published>
requires std::is_enum_v<Published> && std::is_enum_v<Value>
void Pack(Value value, Published* out) {
    *out = static_cast<Published>(static_cast<std::int32_t>(value));
}
template <class Implementation, class Interface>
void Pack(ComPtr<Implementation> object, Interface** out) {
    *out = object.Detach();
}

// Replaces the text of an in/out parameter; the old text is freed only when the new one could be made.
inline void Replace(BSTR* inOut, std::wstring_view value) {
    BSTR fresh = NewBstr(value);
    SysFreeString(*inOut);
    *inOut = fresh;
}

}  // namespace v5
