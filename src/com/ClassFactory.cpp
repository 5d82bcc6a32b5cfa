// The entry points that every in-process server has, over the component's class table.
#include <olectl.h>

#include <atomic>
#include <cwchar>
#include <new>

#include "com/Component.h"
#include "com/Guard.h"
#include "com/Registration.h"

namespace v5 {

namespace {

class ClassFactory final : public IClassFactory {
  public:
    explicit ClassFactory(const ClassEntry& entry) : entry_(entry) { AddComponentUse(); }
    ClassFactory(const ClassFactory&) = delete;
    ClassFactory& operator=(const ClassFactory&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        if (iid != IID_IUnknown && iid != IID_IClassFactory) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<IClassFactory*>(this);
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

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = nullptr;
        return outer != nullptr ? CLASS_E_NOAGGREGATION : entry_.create(iid, object);
    }
    STDMETHODIMP LockServer(BOOL lock) override {
        if (lock != FALSE) {
            AddComponentUse();
        } else {
            ReleaseComponentUse();
        }
        return S_OK;
    }

  private:
    virtual ~ClassFactory() { ReleaseComponentUse(); }

    const ClassEntry& entry_;
    std::atomic<ULONG> references_ = 1;
};

HRESULT Install(Registration registration, bool install) noexcept {
    return install ? registration.Register() : registration.Unregister();
}

}  // namespace

}  // namespace v5

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = nullptr;
    for (const v5::ClassEntry& entry : v5::ThisComponent().classes) {
        if (*entry.clsid == clsid) {
            auto* factory = new (std::nothrow) v5::ClassFactory(entry);
            if (factory == nullptr) {
                return E_OUTOFMEMORY;
            }
            const HRESULT status = factory->QueryInterface(iid, object);
            factory->Release();
            return status;
        }
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    return v5::IsComponentInUse() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
    return v5::Install(v5::Registration::ForMachine(), true);
}

STDAPI DllUnregisterServer() {
    return v5::Install(v5::Registration::ForMachine(), false);
}

// `regsvr32 /n /i:user` registers for the current user only, without administrator rights; `regsvr32 /n /i` and
// `regsvr32 /i` for the machine. Any other word is refused.
STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
    if (commandLine == nullptr || *commandLine == L'\0') {
        return v5::Install(v5::Registration::ForMachine(), install != FALSE);
    }
    if (_wcsicmp(commandLine, L"user") == 0) {
        return v5::Install(v5::Registration::ForCurrentUser(), install != FALSE);
    }
    return E_INVALIDARG;
}
