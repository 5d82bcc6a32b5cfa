// The mark of the maker's own build and test machines.
#pragma once

#include "productinfo/RegistryReader.h"

namespace v5 {

// Whether the text value "Factory" under Software\Nimbo is exactly "1", for the machine or else for the user.
bool IsFactoryComputer(const RegistryReader& registry);

}  // namespace v5
