// Which DAHS entries the chooser dialog offers, how they read, and what it says when there is none.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "config/DahsEntryList.h"

namespace v5 {

struct DahsChooserRow {
    std::int32_t dahsID = 0;
    std::wstring text;
    bool isSecondary = false;  // drawn in grey, and never selected by the dialog itself
};

class DahsChooser {
  public:
    using RemoteTest = std::function<bool(const DahsEntry&)>;

    // The choice among `entries`, in their order, without the secondary or the remote DASes where these are not
    // allowed.
    DahsChooser(const DahsEntryList& entries, bool allowSecondary, bool allowRemote, const RemoteTest& isRemote);

    // The choice among nothing, for a site that cannot be read.
    DahsChooser() = default;

    const std::vector<DahsChooserRow>& Rows() const { return mRows; }

    // The row that is selected at first: the first that is not grey; nullopt when all are.
    std::optional<size_t> FirstChoice() const;

    // The row of an entry; nullopt when it is not offered.
    std::optional<size_t> RowOf(std::int32_t dahsID) const;

    // What to tell the user before an empty list is shown: how many entries were left out, and why. Empty when there
    // are rows, or when nothing was left out.
    std::wstring EmptyListMessage() const;

  private:
    std::vector<DahsChooserRow> mRows;
    int mLeftOutSecondary = 0;
    int mLeftOutRemote = 0;
};

}  // namespace v5
