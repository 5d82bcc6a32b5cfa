#include "config/DahsEntryList.h"

#include <algorithm>

namespace v5 {

std::int32_t DahsEntryList::CountOfNonSecondary() const {
    return static_cast<std::int32_t>(std::count_if(
        begin(), end(), [](const DahsEntryPtr& entry) { return entry->role != RedundantDasRole::kSecondary; }));
}

DahsEntryPtr DahsEntryList::At(std::int64_t position) const {
    return position >= 0 && position < Count() ? entries_[static_cast<size_t>(position)] : nullptr;
}

DahsEntryPtr DahsEntryList::Find(std::int32_t dahsId) const {
    const auto found = std::find_if(begin(), end(), [&](const DahsEntryPtr& entry) { return entry->dahsId == dahsId; });
    return found == end() ? nullptr : *found;
}

}  // namespace v5
