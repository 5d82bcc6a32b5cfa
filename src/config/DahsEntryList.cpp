#include "config/DahsEntryList.h"

#include <algorithm>

namespace v5 {

std::int32_t DahsEntryList::CountOfNonSecondary() const {
    return static_cast<std::int32_t>(std::count_if(
        begin(), end(), [](const DahsEntryPtr& entry) { return entry->role != RedundantDasRole::Secondary; }));
}

DahsEntryPtr DahsEntryList::At(std::int64_t position) const {
    return position >= 0 && position < Count() ? mEntries[static_cast<size_t>(position)] : nullptr;
}

DahsEntryPtr DahsEntryList::Find(std::int32_t dahsID) const {
    const auto found = std::find_if(begin(), end(), [&](const DahsEntryPtr& entry) { return entry->dahsID == dahsID; });
    return found == end() ? nullptr : *found;
}

}  // namespace v5
