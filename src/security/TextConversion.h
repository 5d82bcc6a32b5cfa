// Between text and the bytes of a stored document: UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace v5 {

// `text` in UTF-8. A surrogate without its partner becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);

// The text of UTF-8 bytes. Every byte that is not part of a well-formed sequence becomes U+FFFD; a byte-order mark at
// the start is dropped.
std::wstring FromUtf8(std::string_view bytes);

}  // namespace v5
