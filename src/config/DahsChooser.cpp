#include "config/DahsChooser.h"

#include <algorithm>
#include <string_view>

#include "base/Text.h"

namespace v5 {

namespace {

std::wstring RowText(const DahsEntry& entry) {
    std::wstring text = entry.site_id;
    if (!entry.description.empty() && !EqualsIgnoreCase(entry.description, entry.site_id)) {
        text += L" - " + entry.description;
    }
    if (entry.role == RedundantDasRole::kPrimary) {
        text += L" (primary)";
    } else if (entry.role == RedundantDasRole::kSecondary) {
        text += L" (secondary - use primary instead)";
    }
    return text;
}

std::wstring Counted(std::wstring_view sentence, int count) {
    return L" " + ReplaceAll(sentence, L"$COUNT$", std::to_wstring(count));
}

template <typename Test>
std::optional<size_t> FindRow(const std::vector<DahsChooserRow>& rows, Test test) {
    const auto found = std::find_if(rows.begin(), rows.end(), test);
    return found == rows.end() ? std::nullopt : std::optional(static_cast<size_t>(found - rows.begin()));
}

}  // namespace

DahsChooser::DahsChooser(const DahsEntryList& entries, bool allow_secondary, bool allow_remote,
                         const RemoteTest& is_remote) {
    for (const DahsEntryPtr& entry : entries) {
        const bool is_secondary = entry->role == RedundantDasRole::kSecondary;
        const bool refused_as_secondary = is_secondary && !allow_secondary;
        const bool refused_as_remote = !allow_remote && is_remote(*entry);
        left_out_secondary_ += refused_as_secondary ? 1 : 0;
        left_out_remote_ += refused_as_remote ? 1 : 0;
        if (!refused_as_secondary && !refused_as_remote) {
            rows_.push_back({entry->dahs_id, RowText(*entry), is_secondary});
        }
    }
}

std::optional<size_t> DahsChooser::FirstChoice() const {
    return FindRow(rows_, [](const DahsChooserRow& row) { return !row.is_secondary; });
}

std::optional<size_t> DahsChooser::RowOf(std::int32_t dahs_id) const {
    return FindRow(rows_, [dahs_id](const DahsChooserRow& row) { return row.dahs_id == dahs_id; });
}

std::wstring DahsChooser::EmptyListMessage() const {
    if (!rows_.empty() || left_out_secondary_ + left_out_remote_ == 0) {
        return L"";
    }
    std::wstring message = L"No DAHS entries are available to choose from.";
    if (left_out_secondary_ > 0) {
        message += Counted(L"$COUNT$ secondary DASes cannot be included in the list.", left_out_secondary_);
    }
    if (left_out_remote_ > 0) {
        message += Counted(L"$COUNT$ remote DASes cannot be included in the list.", left_out_remote_);
    }
    return message;
}

}  // namespace v5
