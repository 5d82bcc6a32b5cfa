// Between a document's text and what a row of the database holds: UTF-8 bytes in Base64.
#pragma once

#include <string>
#include <string_view>

namespace v5 {

std::wstring StoredForm(std::wstring_view text);

// Bytes that are no UTF-8 become U+FFFD; one byte-order mark at the start is dropped. Throws Base64Error.
std::wstring TextOfStored(std::wstring_view stored);

}  // namespace v5
