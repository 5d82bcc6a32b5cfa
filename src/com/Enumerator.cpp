#include "com/Enumerator.h"

#include <oleauto.h>

#include <algorithm>
#include <atomic>
#include <utility>

#include "com/Component.h"
#include "com/Guard.h"
#include "com/Values.h"
#include "platform/Adopt.h"

namespace v5 {

namespace {

class Enumerator final : public IEnumVARIANT {
  public:
    Enumerator(std::vector<_variant_t> items, size_t next) : items_(std::move(items)), next_(next) {
        AddComponentUse();
    }
    Enumerator(const Enumerator&) = delete;
    Enumerator& operator=(const Enumerator&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        if (iid != IID_IUnknown && iid != IID_IEnumVARIANT) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<IEnumVARIANT*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }

    STDMETHODIMP Next(ULONG wanted, VARIANT* items, ULONG* fetched) override {
        if (items == nullptr || (fetched == nullptr && wanted != 1)) {
            return E_POINTER;
        }
        const auto given = static_cast<ULONG>(std::min<size_t>(wanted, items_.size() - next_));
        for (ULONG i = 0; i < given; ++i) {
            VariantInit(&items[i]);
            const HRESULT status = VariantCopy(&items[i], &items_[next_ + i]);
            if (FAILED(status)) {
                std::for_each(items, items + i, [](VARIANT& item) { VariantClear(&item); });
                return status;
            }
        }
        next_ += given;
        if (fetched != nullptr) {
            *fetched = given;
        }
        return given == wanted ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG count) override {
        const size_t skipped = std::min<size_t>(count, items_.size() - next_);
        next_ += skipped;
        return skipped == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override {
        next_ = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(IEnumVARIANT** copy) override {
        if (copy == nullptr) {
            return E_POINTER;
        }
        *copy = nullptr;
        return Guarded(IID_NULL, L"", [&] { *copy = new Enumerator(items_, next_); });
    }

  private:
    virtual ~Enumerator() { ReleaseComponentUse(); }

    std::vector<_variant_t> items_;
    size_t next_;
    std::atomic<ULONG> references_ = 1;
};

}  // namespace

ComPtr<IUnknown> NewEnumerator(std::vector<_variant_t> items) {
    return Adopt(new Enumerator(std::move(items), 0));
}

ComPtr<IUnknown> NewEnumerator(const std::vector<ComPtr<IDispatch>>& objects) {
    std::vector<_variant_t> items;
    items.reserve(objects.size());
    for (const ComPtr<IDispatch>& object : objects) {
        items.emplace_back(object.Get());
    }
    return NewEnumerator(std::move(items));
}

}  // namespace v5
