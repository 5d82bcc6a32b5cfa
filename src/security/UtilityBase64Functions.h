// Base64 with the standard alphabet ("A"-"Z", "a"-"z", "0"-"9", "+", "/") and "=" padding.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace v5 {

// Thrown for text that is not Base64. what() is the published text of the error.
class Base64Error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The bytes as Base64, in one line; always a multiple of 4 characters, empty for no bytes.
std::wstring EncodeBase64(std::string_view bytes);

// The bytes that `text` stands for. Throws Base64Error when the length is not a multiple of 4, and for a character
// outside the alphabet: blanks and line breaks are such characters, and so is "=" anywhere but as the last one or two.
std::string DecodeBase64(std::wstring_view text);

}  // namespace v5
