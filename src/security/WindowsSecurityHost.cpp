#include "security/WindowsSecurityHost.h"

#include <windows.h>

#include "security/DbilDatabase.h"
#include "security/MsxmlDocument.h"
#include "security/NetUtilAccounts.h"

namespace v5 {

std::unique_ptr<SiteDatabase> WindowsSecurityHost::NewDatabase(MessageSink& messages) {
    return NewDbilDatabase(messages);
}

std::unique_ptr<Accounts> WindowsSecurityHost::NewAccounts() {
    return std::make_unique<NetUtilAccounts>();
}

std::unique_ptr<XmlDocument> WindowsSecurityHost::ParseXml(std::wstring_view text) {
    return ParseWithMsxml(text);
}

void WindowsSecurityHost::Pause(std::uint32_t milliseconds) {
    Sleep(milliseconds);
}

}  // namespace v5
