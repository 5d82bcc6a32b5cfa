// Between text and the bytes of files and stored documents.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace v5 {

// Documents. Bytes that are no part of a well-formed UTF-8 sequence become U+FFFD, one for each, and so does half a
// surrogate pair; FromUtf8 drops a byte-order mark at the start.
std::string ToUtf8(std::wstring_view text);
std::wstring FromUtf8(std::string_view bytes);

// The text of a file whose first bytes mark it as UTF-8 or UTF-16, without the mark; nullopt when there is no mark.
// Half surrogate pairs, which UTF-16 files may contain, stay; a last odd byte is dropped.
std::optional<std::wstring> DecodeMarked(std::string_view bytes);

}  // namespace v5
