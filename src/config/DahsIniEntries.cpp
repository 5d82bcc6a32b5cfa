#include "config/DahsIniEntries.h"

#include <vector>

#include "com/Enumerator.h"

namespace v5 {

namespace {

// The entry at a 0-based position; raises what the run-time's collections raise for an index that is out of range.
DahsEntryPtr AtPosition(const DahsEntryList& list, std::int64_t position) {
    DahsEntryPtr entry = list.At(position);
    if (!entry) {
        throw AutomationError::RunTime(9, L"Subscript out of range");
    }
    return entry;
}

// The entry with an identifier; raises what the run-time's collections raise for an unknown key.
DahsEntryPtr WithDahsId(const DahsEntryList& list, std::int32_t dahsID) {
    DahsEntryPtr entry = list.Find(dahsID);
    if (!entry) {
        throw AutomationError::RunTime(5, L"Invalid procedure call or argument");
    }
    return entry;
}

}  // namespace

STDMETHODIMP DahsIniEntries::Item(long lngIndex1, VARIANT_BOOL blnDahsID, _DahsIniEntry** Result) {
    return Return(Result, [&] {
        return ObjectOf(ToBool(blnDahsID) ? WithDahsId(*mList, lngIndex1)
                                          : AtPosition(*mList, std::int64_t{lngIndex1} - 1));
    });
}

STDMETHODIMP DahsIniEntries::Item0(long lngIndex0, _DahsIniEntry** Result) {
    return Return(Result, [&] { return ObjectOf(AtPosition(*mList, lngIndex0)); });
}

ComPtr<DahsIniEntry> DahsIniEntries::ObjectOf(const DahsEntryPtr& entry) {
    ComPtr<DahsIniEntry>& object = mObjects[entry.get()];
    if (!object) {
        object = MakeObject<DahsIniEntry>(entry);
    }
    return object;
}

STDMETHODIMP DahsIniEntries::NewEnum(IUnknown** Result) {
    return Return(Result, [&] {
        std::vector<ComPtr<IDispatch>> objects;
        for (const DahsEntryPtr& entry : *mList) {
            objects.emplace_back(ObjectOf(entry));
        }
        return NewEnumerator(objects);
    });
}

}  // namespace v5
