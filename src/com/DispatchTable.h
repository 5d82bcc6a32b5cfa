// IDispatch of a dual interface over the descriptions of its members.
//
// The platform's own ITypeInfo::Invoke does most of this, but slower; it hands an omitted optional by-reference
// argument to the method as a pointer into an error value, and refuses script variables (VT_BYREF|VT_VARIANT) for typed
// in/out parameters. Here every such parameter gets a real temporary of its own type, and the client's variable gets
// the value back after the call. Nothing is allocated but copies of texts that the platform makes.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <span>

#include "com/DispatchMember.h"

namespace v5 {

// IDispatch::GetIDsOfNames: the identifiers of a member and of its parameters (their positions), whatever the case of
// the names.
HRESULT DispatchIdsOfNames(std::span<const DispatchMember> members, LPOLESTR* names, UINT count, DISPID* ids) noexcept;

// IDispatch::Invoke for `object`, a pointer to the interface itself. An argument that does not fit is refused before
// the call, and so is an in/out argument whose variable could not hold what comes back; a number that is too large for
// the variable is only known after the call, and is refused then.
HRESULT DispatchInvoke(std::span<const DispatchMember> members, void* object, DISPID id, WORD flags,
                       DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept;

}  // namespace v5
