// The about box and the support information box, each shown modally by one call: the window belongs to the calling
// thread's active window and the call returns when the user has closed it. Each call may throw std::system_error when
// the system has no room for a window and AutomationError when it has none for the picture.
#pragma once

#include <string_view>

#include "productinfo/SupportInfo.h"
#include "productinfo/WindowsInstallerFunctions.h"

namespace v5 {

// `appTitle` is the calling program's. `sink` (null: nobody listens) gets STR-0146 when the main product is not
// installed; the box then shows no release.
void ShowAboutBox(InstallerQueries& installer, MessageSink* sink, std::wstring_view appTitle);

// A click on the mail address, when it is a link, starts a support request in the user's mail program.
void ShowSupportBox(const SupportInfo& info);

}  // namespace v5
