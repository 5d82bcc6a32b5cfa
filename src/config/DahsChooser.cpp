#include "config/DahsChooser.h"

#include <algorithm>
#include <string_view>

#include "base/Text.h"

namespace v5 {

namespace {

std::wstring RowText(const DahsEntry& entry) {
    std::wstring text = entry.siteID;
    if (!entry.description.empty() && !EqualsIgnoreCase(entry.description, entry.siteID)) {
        text += L" - " + entry.description;
    }
    if (entry.role == RedundantDasRole::Primary) {
        text += L" (primary)";
    } else if (entry.role == RedundantDasRole::Secondary) {
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

DahsChooser::DahsChooser(const DahsEntryList& entries, bool allowSecondary, bool allowRemote,
                         const RemoteTest& isRemote) {
    for (const DahsEntryPtr& entry : entries) {
        const bool isSecondary = entry->role == RedundantDasRole::Secondary;
        const bool refusedAsSecondary = isSecondary && !allowSecondary;
        const bool refusedAsRemote = !allowRemote && isRemote(*entry);
        mLeftOutSecondary += refusedAsSecondary ? 1 : 0;
        mLeftOutRemote += refusedAsRemote ? 1 : 0;
        if (!refusedAsSecondary && !refusedAsRemote) {
            mRows.push_back({entry->dahsID, RowText(*entry), isSecondary});
        }
    }
}

std::optional<size_t> DahsChooser::FirstChoice() const {
    return FindRow(mRows, [](const DahsChooserRow& row) { return !row.isSecondary; });
}

std::optional<size_t> DahsChooser::RowOf(std::int32_t dahsID) const {
    return FindRow(mRows, [dahsID](const DahsChooserRow& row) { return row.dahsID == dahsID; });
}

std::wstring DahsChooser::EmptyListMessage() const {
    if (!mRows.empty() || mLeftOutSecondary + mLeftOutRemote == 0) {
        return L"";
    }
    std::wstring message = L"No DAHS entries are available to choose from.";
    if (mLeftOutSecondary > 0) {
        message += Counted(L"$COUNT$ secondary DASes cannot be included in the list.", mLeftOutSecondary);
    }
    if (mLeftOutRemote > 0) {
        message += Counted(L"$COUNT$ remote DASes cannot be included in the list.", mLeftOutRemote);
    }
    return message;
}

}  // namespace v5
