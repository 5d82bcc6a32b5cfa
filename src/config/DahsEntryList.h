// The usable DAHS entries of a site, in ascending order of their identifiers.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "config/DahsEntry.h"

namespace v5 {

// Entries do not change once they are read and may be held longer than the list.
using DahsEntryPtr = std::shared_ptr<const DahsEntry>;

class DahsEntryList {
  public:
    void Add(DahsEntry entry) { mEntries.push_back(std::make_shared<const DahsEntry>(std::move(entry))); }

    std::int32_t Count() const { return static_cast<std::int32_t>(mEntries.size()); }
    std::int32_t CountOfNonSecondary() const;

    // The entry at a 0-based position, or the entry with an identifier; null when there is none.
    DahsEntryPtr At(std::int64_t position) const;
    DahsEntryPtr Find(std::int32_t dahsID) const;

    auto begin() const { return mEntries.begin(); }
    auto end() const { return mEntries.end(); }

  private:
    std::vector<DahsEntryPtr> mEntries;
};

}  // namespace v5
