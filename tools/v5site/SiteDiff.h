// What differs in effect between two site files.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "config/Site.h"

namespace v5site {

// A setting that a program gets otherwise from the one file than from the other. Passwords are compared, never told.
struct Difference {
    std::int32_t dahsID = 0;
    std::wstring name;  // of the setting; empty: one file has no usable DAHS of this identifier
    std::wstring first, second;
};

// Compares every usable DAHS of two sites that have been read: settings, folders, affinity masks and the connection
// strings of all four forms. The sites' current DAHSes change.
std::vector<Difference> Differences(v5::Site& first, v5::Site& second);

}  // namespace v5site
