// The published class NimboSecurity and the database interface, as v5site uses them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "config/Site.h"

namespace v5site {

// A level or a restriction: its number and its published name ("" when the number has none).
struct NamedNumber {
    long number = 0;
    std::wstring name;
};

struct Minimum {
    NamedNumber restriction;
    NamedNumber level;
};

// A record of the site's event log.
struct Change {
    std::wstring time;  // yyyy-MM-dd HH:mm:ss
    std::wstring tag;
    std::wstring text;
};

struct SecurityFacts {
    bool isOpen = false;  // whether the databases could be opened; else only `messages` means something
    NamedNumber status;
    std::wstring user;
    NamedNumber userLevel;
    std::wstring lists[3];               // levels 1, 2 and 3
    std::vector<Minimum> minimums;       // of every published restriction, and of those that programs have defined
    bool isTrailRead = false;            // whether the event log could be read; else the changes are unknown
    std::vector<Change> changes;         // all that the event log holds, oldest first
    std::vector<std::wstring> messages;  // what the component reported meanwhile
};

// Reads the security of the site of the current DAHS. Throws Error when a component is not registered.
// `also`: a restriction whose minimum is wanted in any case.
SecurityFacts ReadSecurity(const v5::Site& site, std::optional<long> also);

}  // namespace v5site
