// UTF-8 and UTF-16 bytes as text files hold them. Half surrogate pairs, which UTF-16 files may contain, go through
// both functions unharmed (in between as their three-byte form).
#pragma once

#include <string>
#include <string_view>

namespace v5 {

// Text from UTF-8. Bytes that are not UTF-8 become U+FFFD, one for each.
std::wstring WideFromUtf8(std::string_view bytes);

// UTF-8 from UTF-16 bytes of either byte order. A last odd byte is dropped.
enum class ByteOrder { kLittleEndian, kBigEndian };
std::string Utf8FromUtf16(std::string_view bytes, ByteOrder order);

}  // namespace v5
