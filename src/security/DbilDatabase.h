// A site's databases through the database interface component, V5DBIL, early-bound.
#pragma once

#include <memory>

#include "base/MessageSink.h"
#include "security/SiteDatabase.h"

namespace v5 {

// A new database interface object, its Message events connected to `messages` until the object is destroyed, which
// closes nothing by itself. Throws AutomationError when the component cannot be created or raises no events.
std::unique_ptr<SiteDatabase> NewDbilDatabase(MessageSink& messages);

}  // namespace v5
