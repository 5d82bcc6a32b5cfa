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

}  // namespace v5
