// What the command `security` prints: what an auditor asks for.
#pragma once

#include "Report.h"

namespace v5site {

// Throws Error.
Report ShowSecurity(const CommandLine& line, const SecuritySite& site);

}  // namespace v5site
