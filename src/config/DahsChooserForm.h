// The dialog in which the user picks a DAHS of the site.
#pragma once

#include <cstdint>

#include "config/SiteFile.h"
#include "config/SiteHost.h"

namespace v5 {

struct DahsChooserSettings {
    BlankConnections blankConnections = BlankConnections::IgnoreEntry;
    bool allowSecondary = true;
    bool allowRemote = true;
    std::int32_t initialDahsId = 0;  // selected at first when it is offered
};

struct DahsChoice {
    bool Cancelled = true;
    std::int32_t DahsID = 0;  // of the selected row; 0 when none is
};

// Reads the site file through `host` as it is now and shows the dialog modally. A site that cannot be read, or has
// no entry to offer, is first reported in a message box; the list is then empty.
DahsChoice ShowDahsChooser(const DahsChooserSettings& settings, SiteHost& host);

}  // namespace v5
