// A type of a type library, as automation describes it, with its attributes and names at hand.
#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <functional>
#include <string>

#include "component/Client.h"

namespace v5::test {

class TypeDescription {
  public:
    explicit TypeDescription(ComPtr<ITypeInfo> info) : mInfo(std::move(info)) { mInfo->GetTypeAttr(&mAttributes); }
    ~TypeDescription() { mInfo->ReleaseTypeAttr(mAttributes); }
    TypeDescription(const TypeDescription&) = delete;
    TypeDescription& operator=(const TypeDescription&) = delete;

    const TYPEATTR* operator->() const { return mAttributes; }
    ITypeInfo* Info() const { return mInfo.Get(); }
    std::wstring Name(MEMBERID member = MEMBERID_NIL) const {
        BSTR name = nullptr;
        mInfo->GetDocumentation(member, &name, nullptr, nullptr, nullptr);
        return Taken(name);
    }
    std::string Help(MEMBERID member = MEMBERID_NIL) const {
        BSTR help = nullptr;
        mInfo->GetDocumentation(member, nullptr, &help, nullptr, nullptr);
        return Narrow(Taken(help));
    }
    ComPtr<ITypeInfo> Referenced(HREFTYPE reference) const {
        ComPtr<ITypeInfo> info;
        mInfo->GetRefTypeInfo(reference, &info);
        return info;
    }
    ComPtr<ITypeInfo> Implemented(UINT index) const {
        HREFTYPE reference = 0;
        mInfo->GetRefTypeOfImplType(index, &reference);
        return Referenced(reference);
    }
    // With the virtual functions, for a dual interface; the type itself otherwise.
    ComPtr<ITypeInfo> View() const {
        return (mAttributes->wTypeFlags & TYPEFLAG_FDUAL) != 0 ? Implemented(static_cast<UINT>(-1)) : mInfo;
    }
    void ForEachFunction(const std::function<void(const FUNCDESC&)>& look) const {
        for (UINT i = 0; i < mAttributes->cFuncs; ++i) {
            FUNCDESC* function = nullptr;
            mInfo->GetFuncDesc(i, &function);
            look(*function);
            mInfo->ReleaseFuncDesc(function);
        }
    }

  private:
    ComPtr<ITypeInfo> mInfo;
    TYPEATTR* mAttributes = nullptr;
};

inline void ForEachType(ITypeLib& library, const std::function<void(const TypeDescription&)>& look) {
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        library.GetTypeInfo(i, &info);
        look(TypeDescription(info));
    }
}

}  // namespace v5::test
