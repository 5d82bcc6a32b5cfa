#include "com/AutomationCollection.h"

#include <algorithm>
#include <array>

#include "base/Text.h"
#include "com/Component.h"
#include "com/Enumerator.h"
#include "com/Guard.h"
#include "com/Values.h"

namespace v5 {

namespace {

// The identifiers that the run-time's own collection has.
enum Member : DISPID { kItem = DISPID_VALUE, kAdd = 1, kCount = 2, kRemove = 3, kNewEnum = DISPID_NEWENUM };

// The members, and the names of their parameters in order.
struct MemberRow {
    const wchar_t* name;
    DISPID id;
    UINT required;
    UINT allowed;
    std::array<const wchar_t*, 4> parameters;
};
constexpr MemberRow kMembers[] = {
    {L"Item", kItem, 1, 1, {L"Index"}}, {L"Add", kAdd, 1, 4, {L"Item", L"Key", L"Before", L"After"}},
    {L"Count", kCount, 0, 0, {}},       {L"Remove", kRemove, 1, 1, {L"Index"}},
    {L"_NewEnum", kNewEnum, 0, 0, {}},
};

AutomationError SubscriptOutOfRange() {
    return AutomationError::RunTime(9, L"Subscript out of range");
}
AutomationError InvalidArgument() {
    return AutomationError::RunTime(5, L"Invalid procedure call or argument");
}
AutomationError TypeMismatch() {
    return AutomationError::RunTime(13, L"Type mismatch");
}
AutomationError KeyTaken() {
    return AutomationError::RunTime(457, L"This key is already associated with an element of this collection");
}

// The argument at a position of the declaration, by place or by name; null when it was left out.
const VARIANT* ArgumentAt(const DISPPARAMS& arguments, UINT position) {
    const VARIANT* found = nullptr;
    if (position < arguments.cArgs - arguments.cNamedArgs) {
        found = &arguments.rgvarg[arguments.cArgs - 1 - position];
    }
    for (UINT i = 0; i < arguments.cNamedArgs; ++i) {
        if (arguments.rgdispidNamedArgs[i] == static_cast<DISPID>(position)) {
            found = &arguments.rgvarg[i];
        }
    }
    if (found != nullptr && V_VT(found) == (VT_BYREF | VT_VARIANT)) {
        found = V_VARIANTREF(found);  // a script's variable
    }
    const bool omitted = found != nullptr && V_VT(found) == VT_ERROR && V_ERROR(found) == DISP_E_PARAMNOTFOUND;
    return omitted ? nullptr : found;
}

// A copy of what an argument stands for, references resolved.
_variant_t ValueOf(const VARIANT& argument) {
    _variant_t value;
    Check((V_VT(&argument) & VT_BYREF) != 0 && V_BYREF(&argument) == nullptr ? E_POINTER : S_OK);
    Check(VariantCopyInd(&value, const_cast<VARIANT*>(&argument)));
    return value;
}

const MemberRow* FindMember(DISPID id) {
    for (const MemberRow& member : kMembers) {
        if (member.id == id) {
            return &member;
        }
    }
    return nullptr;
}

std::wstring KeyFrom(const _variant_t& key) {
    if (V_VT(&key) != VT_BSTR) {
        throw TypeMismatch();
    }
    return std::wstring(View(V_BSTR(&key)));
}

// Tells a late-bound caller about the exception that is being handled.
HRESULT Explain(EXCEPINFO* exception) noexcept {
    if (exception != nullptr) {
        *exception = {};
        exception->scode = E_OUTOFMEMORY;
        GuardedQuietly([&] {
            const AutomationError error = CurrentError();
            exception->scode = static_cast<SCODE>(error.Status());
            exception->bstrSource = NewBstr(L"V5Strings.Collection");
            exception->bstrDescription = NewBstr(error.Description());
        });
    }
    return DISP_E_EXCEPTION;
}

}  // namespace

AutomationCollection::AutomationCollection() {
    AddComponentUse();
}

AutomationCollection::~AutomationCollection() {
    ReleaseComponentUse();
}

STDMETHODIMP AutomationCollection::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    if (iid != IID_IUnknown && iid != IID_IDispatch) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) AutomationCollection::AddRef() {
    return ++mReferences;
}

STDMETHODIMP_(ULONG) AutomationCollection::Release() {
    const ULONG left = --mReferences;
    if (left == 0) {
        delete this;
    }
    return left;
}

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

STDMETHODIMP AutomationCollection::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (names == nullptr || ids == nullptr || count == 0) {
        return E_INVALIDARG;
    }
    std::fill(ids, ids + count, DISPID_UNKNOWN);
    const MemberRow* found = nullptr;
    for (const MemberRow& member : kMembers) {
        if (EqualsIgnoreCase(member.name, names[0])) {
            found = &member;
            ids[0] = member.id;
        }
    }
    for (UINT name = 1; found != nullptr && name < count; ++name) {
        for (UINT parameter = 0; parameter < found->allowed; ++parameter) {
            if (EqualsIgnoreCase(found->parameters[parameter], names[name])) {
                ids[name] = static_cast<DISPID>(parameter);
            }
        }
    }
    return std::find(ids, ids + count, DISPID_UNKNOWN) == ids + count ? S_OK : DISP_E_UNKNOWNNAME;
}

STDMETHODIMP AutomationCollection::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                                          EXCEPINFO* exception, UINT*) {
    const MemberRow* const member = FindMember(id);
    if (member == nullptr || (flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) == 0) {
        return DISP_E_MEMBERNOTFOUND;
    }
    if (arguments == nullptr || arguments->cArgs < member->required || arguments->cArgs > member->allowed) {
        return DISP_E_BADPARAMCOUNT;
    }
    try {
        _variant_t value = Call(id, *arguments);
        if (result != nullptr) {
            *result = value.Detach();
        }
        return S_OK;
    } catch (...) {
        return Explain(exception);
    }
}

_variant_t AutomationCollection::Call(DISPID id, const DISPPARAMS& arguments) {
    switch (id) {
        case kItem:
            return mEntries[PositionAt(ArgumentAt(arguments, 0))].value;
        case kAdd:
            Add(arguments);
            return {};
        case kCount:
            return static_cast<long>(mEntries.size());
        case kRemove: {
            const auto position = mEntries.begin() + static_cast<std::ptrdiff_t>(PositionAt(ArgumentAt(arguments, 0)));
            const Entry removed = std::move(*position);  // an item that ends here may call back into us
            mEntries.erase(position);
            return {};
        }
        default:
            return NewEnum();
    }
}

void AutomationCollection::Add(const DISPPARAMS& arguments) {
    const VARIANT* const item = ArgumentAt(arguments, 0);
    const VARIANT* const key = ArgumentAt(arguments, 1);
    const VARIANT* const before = ArgumentAt(arguments, 2);
    const VARIANT* const after = ArgumentAt(arguments, 3);
    if (item == nullptr || (before != nullptr && after != nullptr)) {
        throw InvalidArgument();
    }
    Entry entry{ValueOf(*item), {}};
    if (key != nullptr) {
        entry.key = KeyFrom(ValueOf(*key));
        if (FindKey(*entry.key)) {
            throw KeyTaken();
        }
    }
    size_t position = mEntries.size();
    if (before != nullptr) {
        position = PositionAt(before);
    } else if (after != nullptr) {
        position = PositionAt(after) + 1;
    }
    mEntries.insert(mEntries.begin() + static_cast<std::ptrdiff_t>(position), std::move(entry));
}

_variant_t AutomationCollection::NewEnum() const {
    std::vector<_variant_t> values;
    values.reserve(mEntries.size());
    for (const Entry& entry : mEntries) {
        values.push_back(entry.value);
    }
    return NewEnumerator(std::move(values)).Get();
}

// Where the item is that an Index, Before or After argument means.
size_t AutomationCollection::PositionAt(const VARIANT* index) const {
    if (index == nullptr) {
        throw InvalidArgument();
    }
    _variant_t value = ValueOf(*index);
    if (V_VT(&value) == VT_BSTR) {
        if (const auto position = FindKey(View(V_BSTR(&value)))) {
            return *position;
        }
        throw InvalidArgument();
    }
    if (FAILED(VariantChangeType(&value, &value, 0, VT_I4))) {
        throw TypeMismatch();
    }
    const auto position = static_cast<size_t>(V_I4(&value)) - 1;
    if (V_I4(&value) < 1 || position >= mEntries.size()) {
        throw SubscriptOutOfRange();
    }
    return position;
}

std::optional<size_t> AutomationCollection::FindKey(std::wstring_view key) const {
    for (size_t i = 0; i < mEntries.size(); ++i) {
        if (mEntries[i].key && EqualsIgnoreCase(*mEntries[i].key, key)) {
            return i;
        }
    }
    return std::nullopt;
}

}  // namespace v5
