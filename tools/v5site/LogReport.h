// What the command `log` prints; unlike the others it prints as it goes, since logs are large.
#pragma once

#include "Report.h"

namespace v5site {

// Throws Error.
ExitStatus PrintLogs(const CommandLine& line);

}  // namespace v5site
