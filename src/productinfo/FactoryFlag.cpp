#include "productinfo/FactoryFlag.h"

namespace v5 {

bool IsFactoryComputer(const RegistryReader& registry) {
    const auto isSet = [&](RegistryRoot root) {
        return registry.ReadText(root, L"Software\\Nimbo", L"Factory").value_or(L"0") == L"1";
    };
    return isSet(RegistryRoot::LocalMachine) || isSet(RegistryRoot::CurrentUser);
}

}  // namespace v5
