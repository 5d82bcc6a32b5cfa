#include "com/AutomationObject.h"

namespace v5 {

ComPtr<ITypeInfo> TypeInfoOf(REFIID iid) {
    ComPtr<ITypeInfo> info;
    Check(ComponentTypeLibrary()->GetTypeInfoOfGuid(iid, &info));
    return info;
}

HRESULT ClassInfoOf(REFCLSID clsid, ITypeInfo** info) noexcept {
    if (info == nullptr) {
        return E_POINTER;
    }
    *info = nullptr;
    return Guarded(IID_NULL, L"", [&] { Check(ComponentTypeLibrary()->GetTypeInfoOfGuid(clsid, info)); });
}

HRESULT DefaultSourceOf(REFCLSID clsid, GUID* iid) noexcept {
    *iid = IID_NULL;
    return Guarded(IID_NULL, L"", [&] {
        ComPtr<ITypeInfo> info;
        TYPEATTR* attributes = nullptr;
        Check(ClassInfoOf(clsid, &info));
        Check(info->GetTypeAttr(&attributes));
        const UINT count = attributes->cImplTypes;
        info->ReleaseTypeAttr(attributes);
        for (UINT i = 0; i < count; ++i) {
            constexpr INT wanted = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;
            INT flags = 0;
            Check(info->GetImplTypeFlags(i, &flags));
            if ((flags & wanted) == wanted) {
                HREFTYPE reference = 0;
                ComPtr<ITypeInfo> source;
                Check(info->GetRefTypeOfImplType(i, &reference));
                Check(info->GetRefTypeInfo(reference, &source));
                Check(source->GetTypeAttr(&attributes));
                *iid = attributes->guid;
                source->ReleaseTypeAttr(attributes);
                return;
            }
        }
        throw AutomationError(static_cast<std::uint32_t>(E_NOTIMPL), L"This class raises no events.");
    });
}

}  // namespace v5
