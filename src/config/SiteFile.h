// The rules of one [DahsN] section: what each key means, its default, and which message is due.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config/DahsEntryList.h"
#include "config/IniFile.h"

namespace v5 {

inline constexpr std::int32_t kMaxDahsId = 99;

// Whether entries whose connection strings are blank are kept. The values are published.
enum class BlankConnections : std::int32_t { IgnoreEntry = 0, AllowEntry = 1 };

// The sections that `ReadDahsEntries` asks the file for: Dahs1 to Dahs99 and AffinityMasks.
const IniNames& SiteSections();

// The keys that a [DahsN] section and the section AffinityMasks may have.
std::span<const std::wstring_view> DahsKeys();
std::span<const std::wstring_view> AffinityMaskKeys();

// What a switch says, a number or a word; nothing when it is neither yes nor no, and its default counts.
std::optional<bool> SwitchFromText(std::wstring_view value);

// The processors of an affinity mask, decimal or hexadecimal; nothing when it is no number.
std::optional<std::int32_t> AffinityMaskFromText(std::wstring_view value);

// Adds the usable entries of a site file to `entries`, in ascending order of their identifiers, and every finding to
// `problems`, where `path` names the file.
void ReadDahsEntries(const IniFile& file, const std::wstring& path, BlankConnections option, DahsEntryList& entries,
                     std::vector<std::wstring>& problems);

}  // namespace v5
