// NimboHelp: opens the product's help file.
#pragma once

#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "com/AutomationObject.h"

namespace v5 {

class NimboHelp final : public AutomationObject<NimboHelp, _NimboHelp, ::NimboHelp> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.NimboHelp";

    // Never raises: what goes wrong is shown to the user.
    STDMETHODIMP ShowHelp(IRaiseMsg* irm, long hwndOwner) override;
};

}  // namespace v5
