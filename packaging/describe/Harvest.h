// What a component is, as far as deployment is concerned: the registry entries that its own registration writes.
#pragma once

#include <string>
#include <vector>

namespace v5describe {

// One registry value below Software\Classes. `name` is empty for a key's default value.
struct RegistryEntry {
    std::wstring key;  // for example CLSID\{…}\InprocServer32
    std::wstring name;
    std::wstring value;
};

// Lets the component at `path` (an absolute path) register itself into a scratch key instead of the machine's registry
// and gives what it wrote, in the order of the keys. Throws std::runtime_error when the component cannot be loaded or
// refuses.
std::vector<RegistryEntry> HarvestRegistration(const std::wstring& path);

}  // namespace v5describe
