#include "security/MachineSecurityHost.h"

#include <windows.h>

#include "security/DbilDatabase.h"
#include "security/MsxmlDocument.h"
#include "security/NetUtilAccounts.h"

namespace v5 {

std::unique_ptr<SiteDatabase> MachineSecurityHost::NewDatabase(MessageSink& messages) {
    return NewDbilDatabase(messages);
}

std::unique_ptr<Accounts> MachineSecurityHost::NewAccounts() {
    return std::make_unique<NetUtilAccounts>();
}

std::unique_ptr<XmlDocument> MachineSecurityHost::ParseXml(std::wstring_view text) {
    return ParseWithMsxml(text);
}

void MachineSecurityHost::Pause(std::uint32_t milliseconds) {
    Sleep(milliseconds);
}

std::int16_t MachineSecurityHost::AnsiCode(wchar_t character) const {
    char bytes[2] = {};
    const int length = WideCharToMultiByte(CP_ACP, 0, &character, 1, bytes, sizeof bytes, nullptr, nullptr);
    const auto first = static_cast<unsigned char>(bytes[0]);
    const auto second = static_cast<unsigned char>(bytes[1]);
    return length == 2 ? static_cast<std::int16_t>(first << 8 | second) : static_cast<std::int16_t>(first);
}

}  // namespace v5
