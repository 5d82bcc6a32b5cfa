#include "security/TextConversionFunctions.h"

#include "base/Utf8.h"
#include "security/UtilityBase64Functions.h"

namespace v5 {

std::wstring StoredForm(std::wstring_view text) {
    return EncodeBase64(ToUtf8(text));
}

std::wstring TextOfStored(std::wstring_view stored) {
    return FromUtf8(DecodeBase64(stored));
}

}  // namespace v5
