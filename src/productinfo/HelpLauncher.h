// Opens the product's help file, wherever the installer has put it.
#pragma once

#include <string>
#include <string_view>

#include "productinfo/WindowsInstallerFunctions.h"

namespace v5 {

// Port: the help viewer and the file that it opens.
class HelpViewer {
  public:
    virtual ~HelpViewer() = default;

    virtual bool FileExists(std::wstring_view path) const = 0;

    // Opens the help file at its default topic and returns at once. Throws AutomationError when the viewer itself is
    // missing.
    virtual void Open(std::wstring_view path) = 0;
};

// Opens the help file. Returns what the user must be told, empty when help was opened. `sink` (null: nobody listens)
// gets the reason in the product's own terms. Never throws for what the ports do: an unexpected failure becomes the
// message "[STR-0171] <number>, <description>".
std::wstring OpenHelp(InstallerQueries& installer, HelpViewer& viewer, MessageSink* sink);

}  // namespace v5
