// What the command `security` prints: what an auditor asks for.
#pragma once

#include "Report.h"

namespace v5site {

// Of the site of the current DAHS. Throws Error.
Report ShowSecurity(const CommandLine& line, const v5::Site& site);

}  // namespace v5site
