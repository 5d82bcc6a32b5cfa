#include "config/IniNames.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace v5 {

namespace {

char Fold(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

bool SameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return x == y || Fold(x) == Fold(y); });
}

// Eight letters at a time. Setting bit 5 of every byte makes letters of either case alike (and some other characters,
// which only costs a comparison).
size_t Hash(std::string_view name) {
    constexpr std::uint64_t kFold = 0x2020202020202020u;
    constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15u;  // 2^64 divided by the golden ratio
    std::uint64_t hash = name.size();
    for (size_t at = 0; at < name.size(); at += sizeof(std::uint64_t)) {
        std::uint64_t letters = 0;
        std::memcpy(&letters, name.data() + at, std::min(sizeof letters, name.size() - at));
        hash = std::rotl((hash ^ (letters | kFold)) * kMix, 32);
    }
    return static_cast<size_t>(hash);
}

}  // namespace

IniNames::IniNames(std::span<const std::string_view> names)
    : mNames(names.begin(), names.end()), mSlots(std::bit_ceil(names.size() * 4 + 1)) {
    for (size_t i = 0; i < mNames.size(); ++i) {
        size_t slot = Hash(mNames[i]) & (mSlots.size() - 1);
        while (mSlots[slot] != 0) {
            slot = (slot + 1) & (mSlots.size() - 1);
        }
        mSlots[slot] = static_cast<std::uint8_t>(i + 1);
    }
}

size_t IniNames::Find(std::string_view name) const {
    for (size_t slot = Hash(name) & (mSlots.size() - 1); mSlots[slot] != 0; slot = (slot + 1) & (mSlots.size() - 1)) {
        const size_t position = mSlots[slot] - 1u;
        if (SameName(mNames[position], name)) {
            return position;
        }
    }
    return kNone;
}

}  // namespace v5
