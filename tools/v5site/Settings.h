// The settings of a site as names and values.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "config/Site.h"

namespace v5site {

// A value of one of the types that the published properties have.
using Value = std::variant<std::wstring, long, bool>;

struct Setting {
    const wchar_t* name;  // the property's
    Value value;
};

// For people: a switch as "yes" or "no".
std::wstring Display(const Value& value);

// The published properties of the current DAHS.
std::vector<Setting> SettingsOf(const v5::Site& site);
std::vector<Setting> FoldersOf(const v5::Site& site);
std::vector<Setting> ConnectionsOf(const v5::ConnectionStrings& connections);

// The same with *** in place of every password.
std::vector<Setting> Masked(std::vector<Setting> settings);

}  // namespace v5site
