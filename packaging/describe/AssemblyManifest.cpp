#include <map>

#include "Describe.h"

namespace v5describe {

namespace {

// The entries of one branch as key -> value, by paths below the branch; the value of "Key\@Name" is a named one.
using Branch = std::map<std::wstring, std::wstring>;

// The objects of a branch (CLSID, Interface, TypeLib), by identifier.
std::map<std::wstring, Branch> Objects(const Subject& subject, const std::wstring& branch) {
    std::map<std::wstring, Branch> objects;
    for (const RegistryEntry& entry : subject.entries) {
        if (entry.key.compare(0, branch.size() + 1, branch + L'\\') == 0) {
            const std::wstring path = entry.key.substr(branch.size() + 1);
            const size_t end = path.find(L'\\');
            std::wstring below = end == std::wstring::npos ? L"" : path.substr(end + 1);
            if (!entry.name.empty()) {
                below += L"\\@" + entry.name;
            }
            objects[path.substr(0, end)][below] = entry.value;
        }
    }
    return objects;
}

std::wstring Attribute(const wchar_t* name, const std::wstring& value) {
    return std::wstring(L" ") + name + L"=\"" + Xml(value) + L"\"";
}

std::wstring ClassElements(const Subject& subject) {
    std::wstring text;
    for (auto& [clsid, values] : Objects(subject, L"CLSID")) {
        Branch found = values;
        text += L"    <comClass" + Attribute(L"clsid", clsid) + Attribute(L"progid", found[L"ProgID"]) +
                Attribute(L"description", found[L""]) + Attribute(L"tlbid", found[L"TypeLib"]) +
                Attribute(L"threadingModel", found[L"InprocServer32\\@ThreadingModel"]) + L"/>\n";
    }
    return text;
}

// The library's version is the only key directly below the library's own.
std::wstring TypeLibraryElement(const Subject& subject) {
    std::wstring text;
    for (auto& [id, values] : Objects(subject, L"TypeLib")) {
        const std::wstring version = values.begin()->first.substr(0, values.begin()->first.find(L'\\'));
        text += L"    <typelib" + Attribute(L"tlbid", id) + Attribute(L"version", version) +
                Attribute(L"helpdir", L"") + L"/>\n";
    }
    return text;
}

std::wstring ProxyElements(const Subject& subject) {
    std::wstring text;
    for (auto& [iid, values] : Objects(subject, L"Interface")) {
        Branch found = values;
        text += L"  <comInterfaceExternalProxyStub" + Attribute(L"name", found[L""]) + Attribute(L"iid", iid) +
                Attribute(L"proxyStubClsid32", found[L"ProxyStubClsid32"]) + Attribute(L"tlbid", found[L"TypeLib"]) +
                L"/>\n";
    }
    return text;
}

}  // namespace

std::wstring Xml(const std::wstring& text) {
    std::wstring escaped;
    for (const wchar_t c : text) {
        switch (c) {
            case L'&':
                escaped += L"&amp;";
                break;
            case L'<':
                escaped += L"&lt;";
                break;
            case L'"':
                escaped += L"&quot;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

std::wstring AssemblyManifest(const Subject& subject) {
    return L"<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
           L"<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n"
           L"  <assemblyIdentity type=\"win32\" name=\"V5Strings.Component\"" +
           Attribute(L"version", subject.version) +
           Attribute(L"processorArchitecture", subject.is64Bit ? L"amd64" : L"x86") +
           L"/>\n"
           L"  <file name=\"V5Strings.dll\">\n" +
           ClassElements(subject) + TypeLibraryElement(subject) + L"  </file>\n" + ProxyElements(subject) +
           L"</assembly>\n";
}

}  // namespace v5describe
