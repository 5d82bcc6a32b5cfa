// The rules that turn one connection string into another.
#pragma once

#include <string>
#include <string_view>

namespace v5 {

// The string for the .NET data provider: without the first Provider and the first DataTypeCompatibility setting.
// A keyword counts wherever it stands, inside a value too.
std::wstring DotNetConnection(std::wstring_view oleDb);

// The string of the Ostra database, which stands beside the Data database on the same server.
std::wstring OstraConnection(std::wstring_view data);

}  // namespace v5
