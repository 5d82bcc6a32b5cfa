// The entry points that every in-process server has, over the component's class table.
#include <olectl.h>

#include <cwchar>
#include <new>

#include "com/Component.h"
#include "com/Guard.h"
#include "com/Registration.h"
#include "com/SimpleObject.h"

namespace __gnu_cxx {
void __freeres();  // NOLINT(bugprone-reserved-identifier,cert-dcl*): the C++ run-time's own name
}

namespace v5 {

namespace {

// The C++ run-time keeps 70 KB for exceptions when memory is out, and leaves it behind when the DLL is unloaded.
struct RuntimeReserve {
    ~RuntimeReserve() { __gnu_cxx::__freeres(); }
};
const RuntimeReserve kRuntimeReserve;

// The compiler's thread library takes one of the process's 1,088 thread-local slots for each time that the DLL is
// loaded and used, and keeps it when the DLL goes: a program that loads it again and again would have none left one
// day, and be ended. Once most of them are taken, the DLL stays loaded instead.
void StayWhereSlotsAreScarce() {
    constexpr DWORD kMostSlots = 768;  // the rest is the program's
    const DWORD next = TlsAlloc();     // the system gives the first that is free
    if (next != TLS_OUT_OF_INDEXES) {
        TlsFree(next);
    }
    if (next > kMostSlots) {
        HMODULE self = nullptr;
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                           reinterpret_cast<LPCWSTR>(&kRuntimeReserve), &self);
    }
}

class ClassFactory final : public SimpleObject<IClassFactory> {
  public:
    explicit ClassFactory(const ClassEntry& entry) : mEntry(entry) {}

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = nullptr;
        return outer != nullptr ? CLASS_E_NOAGGREGATION : mEntry.create(iid, object);
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
    const ClassEntry& mEntry;
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
    v5::StayWhereSlotsAreScarce();
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
