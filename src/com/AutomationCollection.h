// The collection that automation clients know: Item (the default member), Add, Count, Remove and for-each, late-bound,
// with items of any kind, addressed by position from 1 or by a key.
#pragma once

#include <windows.h>

#include <comutil.h>
#include <oaidl.h>

#include <atomic>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace v5 {

class AutomationCollection final : public IDispatch {
  public:
    AutomationCollection();
    AutomationCollection(const AutomationCollection&) = delete;
    AutomationCollection& operator=(const AutomationCollection&) = delete;

    // Adds an item without a key at the end. Throws std::bad_alloc.
    void Append(const _variant_t& item) { mEntries.push_back({item, {}}); }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;

    // Item(Index), Add(Item, Key, Before, After), Count, Remove(Index), _NewEnum. An index is a position or the text
    // of a key; keys are compared without case. Fails with the run-time errors 5 (no such key, or Before and After
    // together), 9 (no such position), 13 (a key that is not text) and 457 (a key that is taken).
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override;

  private:
    struct Entry {
        _variant_t value;
        std::optional<std::wstring> key;
    };

    ~AutomationCollection();
    _variant_t Call(DISPID id, const DISPPARAMS& arguments);
    void Add(const DISPPARAMS& arguments);
    _variant_t NewEnum() const;
    size_t PositionAt(const VARIANT* index) const;
    std::optional<size_t> FindKey(std::wstring_view key) const;

    std::vector<Entry> mEntries;
    std::atomic<ULONG> mReferences = 1;
};

}  // namespace v5
