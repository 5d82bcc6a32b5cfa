// Between text and the bytes of files and stored documents.
#pragma once

#include <string>
#include <string_view>

namespace v5 {

// Documents. Bytes that are no part of a well-formed UTF-8 sequence become U+FFFD, one for each, and so does half a
// surrogate pair; FromUtf8 drops a byte-order mark at the start.
std::string ToUtf8(std::wstring_view text);
std::wstring FromUtf8(std::string_view bytes);

// Text files. Half surrogate pairs, which UTF-16 files may contain, go through both functions unharmed (in between as
// their three-byte form); else WideFromUtf8 is as FromUtf8, but keeps a byte-order mark. Of UTF-16 bytes a last odd one
// is dropped.
enum class ByteOrder { kLittleEndian, kBigEndian };
std::string Utf8FromUtf16(std::string_view bytes, ByteOrder order);
std::wstring WideFromUtf8(std::string_view bytes);

}  // namespace v5
