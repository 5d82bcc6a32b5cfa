// DahsIniEntries: the DAHS entries of a site for automation clients. A created one is empty.
#pragma once

#include <map>
#include <memory>
#include <utility>

#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "com/AutomationObject.h"
#include "config/DahsEntryList.h"
#include "config/DahsIniEntry.h"

namespace v5 {

class DahsIniEntries final : public AutomationObject<DahsIniEntries, _DahsIniEntries, ::DahsIniEntries> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.DahsIniEntries";

    explicit DahsIniEntries(std::shared_ptr<const DahsEntryList> list = std::make_shared<const DahsEntryList>())
        : mList(std::move(list)) {}

    STDMETHODIMP get_Count(long* Result) override {
        return Return(Result, [&] { return mList->Count(); });
    }
    STDMETHODIMP get_CountOfNonSecondaryDahsEntries(long* Result) override {
        return Return(Result, [&] { return mList->CountOfNonSecondary(); });
    }
    STDMETHODIMP Item(long lngIndex1, VARIANT_BOOL blnDahsID, _DahsIniEntry** Result) override;
    STDMETHODIMP Item0(long lngIndex0, _DahsIniEntry** Result) override;
    STDMETHODIMP NewEnum(IUnknown** Result) override;

  private:
    // The one object of an entry, however and how often clients ask for it.
    ComPtr<DahsIniEntry> ObjectOf(const DahsEntryPtr& entry);

    const std::shared_ptr<const DahsEntryList> mList;
    std::map<const DahsEntry*, ComPtr<DahsIniEntry>> mObjects;
};

}  // namespace v5
