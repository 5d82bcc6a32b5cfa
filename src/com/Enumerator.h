// The standard automation enumerator (IEnumVARIANT) over a fixed list of values, for for-each.
#pragma once

#include <windows.h>

#include <comutil.h>
#include <oaidl.h>
#include <wrl/client.h>

#include <vector>

namespace v5 {

// A new enumerator over `items` (values or objects) as they are now, from the first. Throws std::bad_alloc.
Microsoft::WRL::ComPtr<IUnknown> NewEnumerator(std::vector<_variant_t> items);
Microsoft::WRL::ComPtr<IUnknown> NewEnumerator(const std::vector<Microsoft::WRL::ComPtr<IDispatch>>& objects);

}  // namespace v5
