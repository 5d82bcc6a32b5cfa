// The collection that automation clients know: Item (the default member), Add, Count, Remove and for-each, late-bound,
// with items of any kind, addressed by position from 1 or by a key.
#pragma once

#include <windows.h>

#include <comutil.h>
#include <oaidl.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "com/DispatchTable.h"
#include "com/SimpleObject.h"

namespace v5 {

class AutomationCollection final : public SimpleObject<IDispatch> {
  public:
    // Adds an item without a key at the end. Throws std::bad_alloc.
    void Append(const _variant_t& item) { mEntries.push_back({item, {}}); }

    // It has no type information.
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return DispatchIdsOfNames(kMembers, names, count, ids);
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override {
        return DispatchInvoke(kMembers, this, id, flags, arguments, result, exception, badArgument);
    }

  private:
    struct Entry {
        _variant_t value;
        std::optional<std::wstring> key;
    };

    // The members. An index is a position or the text of a key; keys are compared without case. They fail with the
    // run-time errors 5 (no such key, or Before and After together), 9 (no such position), 13 (a key that is not text)
    // and 457 (a key that is taken).
    STDMETHODIMP Item(VARIANT Index, VARIANT* Result);
    STDMETHODIMP Add(VARIANT Item, VARIANT Key, VARIANT Before, VARIANT After);
    STDMETHODIMP Count(long* Result);
    STDMETHODIMP Remove(VARIANT Index);
    STDMETHODIMP NewEnum(IUnknown** Result);
    static const DispatchMember kMembers[5];

    std::vector<Entry>::iterator At(const VARIANT& index);
    std::vector<Entry>::iterator FindKey(std::wstring_view key);

    std::vector<Entry> mEntries;
};

}  // namespace v5
