// The release of the installed product, in the words of the callers' title bars, logs and about boxes.
#pragma once

#include <cstdint>
#include <string>

#include "productinfo/WindowsInstallerFunctions.h"

namespace v5 {

// Which package's release, in which form (the values of VantorReleaseEnum; callers may pass any other number, which
// names no package).
enum class ReleaseKind : std::int32_t {
    Short = 1,         // "Release 5.3"
    Full = 2,          // "Release 5.3.12"
    SupportFiles = 4,  // the support files' own name
    Web = 5,           // always "VantorWeb ??" when the web product is installed
    FullNoPrefix = 6,  // "5.3.12"
};

// The release text for `kind`. Empty when the package is not installed (`sink`, when not null, then gets STR-0146),
// when the installer fails and for a kind that names no package. Never throws for what the installer does.
std::wstring ReleaseNumber(InstallerQueries& installer, MessageSink* sink, ReleaseKind kind);

}  // namespace v5
