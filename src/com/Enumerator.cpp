#include "com/Enumerator.h"

#include <oleauto.h>

#include <algorithm>
#include <utility>

#include "com/Adopt.h"
#include "com/Guard.h"
#include "com/SimpleObject.h"
#include "com/Values.h"

namespace v5 {

namespace {

class Enumerator final : public SimpleEnumerator<IEnumVARIANT, VARIANT, _variant_t> {
  public:
    Enumerator(std::vector<_variant_t> items, size_t next) : SimpleEnumerator(std::move(items), next) {}

    STDMETHODIMP Clone(IEnumVARIANT** copy) override {
        if (copy == nullptr) {
            return E_POINTER;
        }
        *copy = nullptr;
        return Guarded(IID_NULL, L"", [&] { *copy = new Enumerator(Items(), Position()); });
    }

  private:
    HRESULT CopyOut(const _variant_t* from, ULONG count, VARIANT* to) override {
        for (ULONG i = 0; i < count; ++i) {
            VariantInit(&to[i]);
            const HRESULT status = VariantCopy(&to[i], const_cast<_variant_t*>(&from[i]));
            if (FAILED(status)) {
                std::for_each(to, to + i, [](VARIANT& item) { VariantClear(&item); });
                return status;
            }
        }
        return S_OK;
    }
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
