// The descriptions of the component that packages carry. Each gives a whole text; `\n` ends its lines.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>
#include <vector>

#include "Harvest.h"

namespace v5describe {

// What all descriptions start from.
struct Subject {
    std::vector<RegistryEntry> entries;
    std::wstring path;     // of the DLL, as the entries hold it
    std::wstring version;  // four numbers with dots
    bool is64Bit = true;   // the width of the package; the entries are those of the DLL that was harvested
};

// The side-by-side assembly manifest V5Strings.Component.manifest. A manifest in a file of its own has another name
// than the DLL: Windows looks into a DLL of the assembly's name first ("About Private Assemblies", Microsoft Learn).
std::wstring AssemblyManifest(const Subject& subject);

// The installer's registry rows, for inclusion in a component: those of one width, or those that the packages of both
// widths write into a component that they share, so that they stay until the last package is removed.
std::wstring InstallerRows(const Subject& subject, bool shared);

// The classes of the C++ client header V5Strings.hpp, one for each public class, from the type library.
std::wstring ClientClasses(ITypeLib& library);

// `text` with the characters that mean something in XML escaped.
std::wstring Xml(const std::wstring& text);

}  // namespace v5describe
