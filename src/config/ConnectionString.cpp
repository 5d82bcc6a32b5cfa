#include "config/ConnectionString.h"

#include "base/Text.h"

namespace v5 {

namespace {

// Without everything from the keyword to the next semicolon, or to the end where there is none.
void RemoveSetting(std::wstring& connection, std::wstring_view keyword) {
    const size_t start = FindIgnoreCase(connection, keyword);
    if (start == std::wstring::npos) {
        return;
    }
    const size_t end = connection.find(L';', start);
    connection.erase(start, end == std::wstring::npos ? end : end + 1 - start);
}

}  // namespace

std::wstring DotNetConnection(std::wstring_view oleDb) {
    std::wstring connection(oleDb);
    RemoveSetting(connection, L"Provider");
    RemoveSetting(connection, L"DataTypeCompatibility");
    return std::wstring(Trim(connection));
}

std::wstring OstraConnection(std::wstring_view data) {
    return ReplaceAll(data, L"Vantor5Data", L"Vantor5Ostra");
}

}  // namespace v5
