// What the command `why` prints: which file, which library, which DAHS, and why.
#pragma once

#include "Report.h"
#include "SiteReader.h"

namespace v5site {

Report ShowWhy(const CommandLine& line, SiteReader& reader);

}  // namespace v5site
