#include "com/AutomationCollection.h"

#include <algorithm>
#include <utility>

#include "base/Text.h"
#include "com/Enumerator.h"
#include "com/Guard.h"
#include "com/Values.h"

namespace v5 {

namespace {

AutomationError InvalidArgument() {
    return AutomationError::RunTime(5, L"Invalid procedure call or argument");
}
AutomationError TypeMismatch() {
    return AutomationError::RunTime(13, L"Type mismatch");
}

bool IsGiven(const VARIANT& argument) {
    return V_VT(&argument) != VT_ERROR || V_ERROR(&argument) != DISP_E_PARAMNOTFOUND;
}

template <class Work>
HRESULT Answer(const Work& work) {
    return Guarded(IID_NULL, L"V5Strings.Collection", work);
}

constexpr WORD kMethodOrGet = INVOKE_FUNC | INVOKE_PROPERTYGET;
constexpr DispatchParameter kIndex[] = {{"Index", TypeInVariant<VARIANT>()}};
constexpr DispatchParameter kAdd[] = {{"Item", TypeInVariant<VARIANT>()},
                                      {"Key", TypeInVariant<VARIANT>(), false, true},
                                      {"Before", TypeInVariant<VARIANT>(), false, true},
                                      {"After", TypeInVariant<VARIANT>(), false, true}};

}  // namespace

// The identifiers that the run-time's own collection has.
constexpr DispatchMember AutomationCollection::kMembers[5] = {
    {"Item", DISPID_VALUE, kMethodOrGet, kIndex, TypeInVariant<VARIANT>(),
     &DispatchCall<&AutomationCollection::Item>::Call},
    {"Add", 1, kMethodOrGet, kAdd, {}, &DispatchCall<&AutomationCollection::Add>::Call},
    {"Count", 2, kMethodOrGet, {}, TypeInVariant<long>(), &DispatchCall<&AutomationCollection::Count>::Call},
    {"Remove", 3, kMethodOrGet, kIndex, {}, &DispatchCall<&AutomationCollection::Remove>::Call},
    {"_NewEnum",
     DISPID_NEWENUM,
     kMethodOrGet,
     {},
     TypeInVariant<IUnknown*>(),
     &DispatchCall<&AutomationCollection::NewEnum>::Call},
};

STDMETHODIMP AutomationCollection::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) {
        return E_POINTER;
    }
    *count = 0;
    return S_OK;
}

STDMETHODIMP AutomationCollection::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info == nullptr) {
        return E_POINTER;
    }
    *info = nullptr;
    return DISP_E_BADINDEX;
}

STDMETHODIMP AutomationCollection::Item(VARIANT Index, VARIANT* Result) {
    return Answer([&] { *Result = _variant_t(At(Index)->value).Detach(); });
}

STDMETHODIMP AutomationCollection::Add(VARIANT Item, VARIANT Key, VARIANT Before, VARIANT After) {
    return Answer([&] {
        if (IsGiven(Before) && IsGiven(After)) {
            throw InvalidArgument();
        }
        Entry entry{Item, {}};
        if (IsGiven(Key)) {
            if (V_VT(&Key) != VT_BSTR) {
                throw TypeMismatch();
            }
            entry.key = View(V_BSTR(&Key));
            if (FindKey(*entry.key) != mEntries.end()) {
                throw AutomationError::RunTime(457,
                                               L"This key is already associated with an element of this collection");
            }
        }
        const auto position = IsGiven(Before) ? At(Before) : IsGiven(After) ? At(After) + 1 : mEntries.end();
        mEntries.insert(position, std::move(entry));
    });
}

STDMETHODIMP AutomationCollection::Count(long* Result) {
    *Result = static_cast<long>(mEntries.size());
    return S_OK;
}

STDMETHODIMP AutomationCollection::Remove(VARIANT Index) {
    return Answer([&] {
        const auto position = At(Index);
        const Entry removed = std::move(*position);  // an item that ends here may call back into us
        mEntries.erase(position);
    });
}

STDMETHODIMP AutomationCollection::NewEnum(IUnknown** Result) {
    return Answer([&] {
        std::vector<_variant_t> values;
        values.reserve(mEntries.size());
        for (const Entry& entry : mEntries) {
            values.push_back(entry.value);
        }
        *Result = NewEnumerator(std::move(values)).Detach();
    });
}

// The entry that an Index, Before or After argument means.
std::vector<AutomationCollection::Entry>::iterator AutomationCollection::At(const VARIANT& index) {
    if (V_VT(&index) == VT_BSTR) {
        const auto found = FindKey(View(V_BSTR(&index)));
        return found != mEntries.end() ? found : throw InvalidArgument();
    }
    _variant_t position;
    if (FAILED(VariantChangeType(&position, const_cast<VARIANT*>(&index), 0, VT_I4))) {
        throw TypeMismatch();
    }
    if (V_I4(&position) < 1 || static_cast<size_t>(V_I4(&position)) > mEntries.size()) {
        throw AutomationError::RunTime(9, L"Subscript out of range");
    }
    return mEntries.begin() + V_I4(&position) - 1;
}

std::vector<AutomationCollection::Entry>::iterator AutomationCollection::FindKey(std::wstring_view key) {
    return std::find_if(mEntries.begin(), mEntries.end(),
                        [&](const Entry& entry) { return entry.key && EqualsIgnoreCase(*entry.key, key); });
}

}  // namespace v5
