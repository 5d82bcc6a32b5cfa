// Late-bound calls on a dual interface, decided from the type library.
//
// The platform's own ITypeInfo::Invoke does most of this, but hands an omitted optional by-reference argument to the
// method as a pointer into an error value, and refuses script variables (VT_BYREF|VT_VARIANT) for typed in/out
// parameters. Here every such parameter gets a real temporary of its own type, and the script's variable gets the
// value back after the call.
#pragma once

#include <windows.h>

#include <comutil.h>
#include <oaidl.h>
#include <wrl/client.h>

#include <string>
#include <vector>

namespace v5 {

// One parameter of a member, without the one that carries the return value.
struct DispatchParameter {
    VARTYPE type = VT_EMPTY;  // what the method gets, VT_BYREF left off
    bool byReference = false;
    bool optional = false;
    IID iid = IID_NULL;  // of an interface pointer
    _variant_t defaultValue;
};

struct DispatchMember {
    DISPID id = 0;
    INVOKEKIND kind = INVOKE_FUNC;
    ULONG_PTR vtableOffset = 0;
    std::vector<DispatchParameter> parameters;
    VARTYPE result = VT_EMPTY;  // VT_EMPTY: the member returns nothing
};

class DispatchTable {
  public:
    // Reads the members of the dual interface from the component's type library. Throws AutomationError.
    explicit DispatchTable(REFIID iid);

    // The interface's type information, as script engines ask for it.
    ITypeInfo* TypeInfo() const { return mDispatchInfo.Get(); }

    HRESULT GetIDsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const;

    // IDispatch::Invoke for `object`, a pointer to the interface itself.
    HRESULT Invoke(void* object, DISPID id, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                   UINT* badArgument) const;

  private:
    const DispatchMember* Find(DISPID id, WORD flags) const;

    Microsoft::WRL::ComPtr<ITypeInfo> mDispatchInfo;
    std::vector<DispatchMember> mMembers;
};

// The table of an interface, read once and kept while the DLL is loaded.
template <class Interface>
const DispatchTable& DispatchTableOf() {
    static const DispatchTable table(__uuidof(Interface));
    return table;
}

}  // namespace v5
