#include "config/IniNames.h"

#include <algorithm>
#include <cstdint>

namespace v5 {

namespace {

wchar_t Fold(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c | 0x20) : c;
}

}  // namespace

// FNV-1a, a character at a time: http://www.isthe.com/chongo/tech/comp/fnv/
size_t IniNames::Hash::operator()(std::wstring_view name) const {
    std::uint32_t hash = 0x811C9DC5;
    for (const wchar_t c : name) {
        hash = (hash ^ static_cast<std::uint32_t>(Fold(c))) * 0x01000193;
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
