#include "com/Values.h"

#include <new>

namespace v5 {

BSTR NewBstr(std::wstring_view text) {
    BSTR result = text.size() > 0x3FFFFFFF ? nullptr : SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (result == nullptr) {
        throw std::bad_alloc();
    }
    return result;
}

VARIANT NewTextArray(const std::vector<std::wstring>& texts) {
    VARIANT result;
    VariantInit(&result);
    SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(texts.size()));
    if (array == nullptr) {
        throw std::bad_alloc();
    }
    V_VT(&result) = VT_ARRAY | VT_BSTR;
    V_ARRAY(&result) = array;
    try {
        auto* slot = static_cast<BSTR*>(array->pvData);
        for (const std::wstring& text : texts) {
            *slot++ = NewBstr(text);
        }
    } catch (...) {
        VariantClear(&result);
        throw;
    }
    return result;
}

}  // namespace v5
