#include "Describe.h"

namespace v5describe {

namespace {

// Windows keeps one CLSID and one Interface branch for each width; every other entry is seen by both widths and is
// written by both packages, except for those that hold a DLL's own path.
bool IsShared(const Subject& subject, const RegistryEntry& entry) {
    return entry.value != subject.path && entry.key.compare(0, 6, L"CLSID\\") != 0 &&
           entry.key.compare(0, 10, L"Interface\\") != 0;
}

// As the entry stands in the package: the DLL's path is the installed file's, the width is the package's.
RegistryEntry ForPackage(const Subject& subject, RegistryEntry entry) {
    if (entry.value == subject.path) {
        entry.value = L"[#V5StringsDll]";
    }
    const std::wstring width = L"\\win64";
    if (!subject.is64Bit && entry.key.size() > width.size() &&
        entry.key.compare(entry.key.size() - width.size(), width.size(), width) == 0) {
        entry.key.replace(entry.key.size() - 2, 2, L"32");
    }
    return entry;
}

std::wstring Row(const RegistryEntry& entry, bool isKeyPath) {
    return L"        <RegistryValue Root=\"HKLM\" Key=\"" + Xml(L"Software\\Classes\\" + entry.key) + L"\"" +
           (entry.name.empty() ? L"" : L" Name=\"" + Xml(entry.name) + L"\"") + L" Type=\"string\" Value=\"" +
           Xml(entry.value) + L"\"" + (isKeyPath ? L" KeyPath=\"yes\"" : L"") + L"/>\n";
}

}  // namespace

std::wstring InstallerRows(const Subject& subject, bool shared) {
    std::wstring text;
    for (const RegistryEntry& entry : subject.entries) {
        if (IsShared(subject, entry) == shared) {
            text += Row(ForPackage(subject, entry), shared && text.empty());
        }
    }
    return L"<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<Include>\n" + text + L"</Include>\n";
}

}  // namespace v5describe
