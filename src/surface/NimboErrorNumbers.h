// NimboErrorNumbers: a class without members. It exists so that its enumeration stands in the type library.
#pragma once

#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "com/AutomationObject.h"

namespace v5 {

class NimboErrorNumbers final : public AutomationObject<NimboErrorNumbers, _NimboErrorNumbers, ::NimboErrorNumbers> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.NimboErrorNumbers";
};

}  // namespace v5
