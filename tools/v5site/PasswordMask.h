// Connection strings fit for other people's eyes.
#pragma once

#include <string>
#include <string_view>

namespace v5site {

// The connection string with the value of every setting whose name ends in "pwd" or "password" (in any case) replaced
// by ***. Values may be quoted and then hold semicolons; a quote that is never closed hides the rest of the text.
std::wstring MaskPasswords(std::wstring_view connection);

}  // namespace v5site
