// A site's databases through the database interface component, V5DBIL, early-bound.
#pragma once

#include <memory>

#include "base/MessageSink.h"
#include "security/SiteDatabase.h"

namespace v5 {

// Where a site's documents stand: its own rows of the table of lookups.
inline constexpr long kOwnRows = 1;
inline constexpr wchar_t kLookupTable[] = L"V5LOOKUP";

// A new database interface object, its Message events connected to `messages` until the object is destroyed, which
// closes nothing by itself. Throws AutomationError when the component cannot be created or raises no events.
std::unique_ptr<SiteDatabase> NewDbilDatabase(MessageSink& messages);

}  // namespace v5
