#include "config/IniNames.h"

#include <algorithm>

namespace v5 {

namespace {

wchar_t Fold(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c | 0x20) : c;
}

}  // namespace

// The length and a few letters tell our names apart well enough; each line of a file is hashed.
size_t IniNames::Hash::operator()(std::wstring_view name) const {
    size_t hash = name.size();
    if (!name.empty()) {
        for (const size_t at : {name.size() / 5, name.size() / 3, name.size() / 2, name.size() - 1}) {
            hash = hash * 31 + static_cast<size_t>(Fold(name[at]));
        }
    }
    return hash;
}

bool IniNames::Equal::operator()(std::wstring_view a, std::wstring_view b) const {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](wchar_t x, wchar_t y) { return Fold(x) == Fold(y); });
}

IniNames::IniNames(std::span<const std::wstring_view> names) {
    for (size_t i = 0; i < names.size(); ++i) {
        mPositions.emplace(names[i], i);
    }
}

size_t IniNames::Find(std::wstring_view name) const {
    const auto found = mPositions.find(name);
    return found == mPositions.end() ? kNone : found->second;
}

}  // namespace v5
