// The base of every automation class: identity, lifetime, late binding, class information and error information.
// See docs/architecture.md, "How to write an automation class".
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <wrl/client.h>

#include <atomic>
#include <new>
#include <span>
#include <type_traits>
#include <utility>

#include "com/Adopt.h"
#include "com/Component.h"
#include "com/DispatchTable.h"
#include "com/Guard.h"
#include "com/Values.h"

namespace v5 {

// The type library's description of an interface, as script engines ask for it. Throws AutomationError.
ComPtr<ITypeInfo> TypeInfoOf(REFIID iid);

// The coclass's type information (IProvideClassInfo) and the identifier of its default source interface.
HRESULT ClassInfoOf(REFCLSID clsid, ITypeInfo** info) noexcept;
HRESULT DefaultSourceOf(REFCLSID clsid, GUID* iid) noexcept;

// The four members of IDispatch over the contract's description of `Interface`, a dual interface; its generated header
// (see com/DispatchMember.h) is to be included too.
template <class Interface>
class DualInterface : public Interface {
  public:
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) {
            return E_POINTER;
        }
        *count = 1;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        if (info == nullptr) {
            return E_POINTER;
        }
        *info = nullptr;
        if (index != 0) {
            return DISP_E_BADINDEX;
        }
        return Guarded(IID_NULL, L"", [&] {
            static const ComPtr<ITypeInfo> description = TypeInfoOf(__uuidof(Interface));
            Check(description.CopyTo(info));
        });
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return DispatchIdsOfNames(kMembers, names, count, ids);
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override {
        return DispatchInvoke(kMembers, static_cast<Interface*>(this), id, flags, arguments, result, exception,
                              badArgument);
    }

  protected:
    virtual ~DualInterface() = default;

  private:
    static constexpr std::span<const DispatchMember> kMembers = DispatchMembers<Interface>::kAll;
};

// A new object of an automation class, its only reference held by the result. Throws std::bad_alloc and what the
// constructor throws.
template <class Class, class... Arguments>
ComPtr<Class> MakeObject(Arguments&&... arguments) {
    return Adopt(new Class(std::forward<Arguments>(arguments)...));
}

// `Self`      the class itself; it names its programmatic identifier in `static constexpr wchar_t kProgId[]`
// `Interface` its dual interface, from the generated header
// `CoClass`   its coclass, from the generated header
// `More`      further interfaces that it implements, each derived from IUnknown directly
template <class Self, class Interface, class CoClass, class... More>
class AutomationObject : public DualInterface<Interface>,
                         public ISupportErrorInfo,
                         public IProvideClassInfo2,
                         public More... {
  public:
    AutomationObject(const AutomationObject&) = delete;
    AutomationObject& operator=(const AutomationObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = Find(iid);
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++mReferences; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --mReferences;
        if (left == 0) {
            mReferences = 1;  // code that runs while the object ends may take and release references to it
            delete static_cast<Self*>(this);
        }
        return left;
    }

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override { return iid == __uuidof(Interface) ? S_OK : S_FALSE; }
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override { return ClassInfoOf(__uuidof(CoClass), info); }
    STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override {
        if (guid == nullptr) {
            return E_POINTER;
        }
        return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? DefaultSourceOf(__uuidof(CoClass), guid) : E_INVALIDARG;
    }

    // The class table's creator: makes an object and answers the interface asked for.
    static HRESULT Create(REFIID iid, void** object) {
        HRESULT status = S_OK;
        const HRESULT guarded = Guarded(__uuidof(Interface), Self::kProgId,
                                        [&] { status = MakeObject<Self>()->QueryInterface(iid, object); });
        return FAILED(guarded) ? guarded : status;
    }

  protected:
    AutomationObject() { AddComponentUse(); }
    ~AutomationObject() override { ReleaseComponentUse(); }

    // Every member under way holds its object: a listener or message sink may release the client's last reference.
    class Alive {
      public:
        explicit Alive(AutomationObject& object) : mObject(object) { mObject.AddRef(); }
        ~Alive() { mObject.Release(); }
        Alive(const Alive&) = delete;
        Alive& operator=(const Alive&) = delete;

      private:
        AutomationObject& mObject;
    };

    // A further interface that is not among `More` (a facet with an identity of its own); null when there is none.
    virtual void* FindMore(REFIID) { return nullptr; }

    // A member that returns a value and raises what goes wrong. `work` gives a value that Pack accepts.
    template <class Out, class Work>
    HRESULT Return(Out* out, Work&& work) noexcept {
        if (out == nullptr) {
            return E_POINTER;
        }
        const Alive alive(*this);
        return Guarded(__uuidof(Interface), Self::kProgId, [&] {
            *out = Out{};
            Pack(std::forward<Work>(work)(), out);
        });
    }

    // A property that answers a stored value, which Pack accepts.
    template <class Out, class Value>
    HRESULT Get(Out* out, const Value& value) noexcept {
        return Return(out, [&value]() -> const Value& { return value; });
    }

    // A member that returns a value and never raises: on failure the caller gets `fallback`.
    template <class Out, class Fallback, class Work>
    HRESULT ReturnQuietly(Out* out, Fallback&& fallback, Work&& work) noexcept {
        if (out == nullptr) {
            return E_POINTER;
        }
        const Alive alive(*this);
        *out = Out{};
        bool done = false;
        GuardedQuietly([&] {
            Pack(std::forward<Work>(work)(), out);
            done = true;
        });
        return done ? S_OK : GuardedQuietly([&] { Pack(std::forward<Fallback>(fallback), out); });
    }

    // A member that returns nothing: raising, or never raising.
    template <class Work>
    HRESULT Do(Work&& work) noexcept {
        const Alive alive(*this);
        return Guarded(__uuidof(Interface), Self::kProgId, std::forward<Work>(work));
    }
    template <class Work>
    HRESULT DoQuietly(Work&& work) noexcept {
        const Alive alive(*this);
        return GuardedQuietly(std::forward<Work>(work));
    }

  private:
    template <class Candidate>
    void* FindIn(REFIID iid) {
        return iid == __uuidof(Candidate) ? static_cast<Candidate*>(this) : nullptr;
    }

    void* Find(REFIID iid) {
        if (iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(Interface)) {
            return static_cast<Interface*>(this);
        }
        if (iid == IID_ISupportErrorInfo) {
            return static_cast<ISupportErrorInfo*>(this);
        }
        if (iid == IID_IProvideClassInfo || iid == IID_IProvideClassInfo2) {
            return static_cast<IProvideClassInfo2*>(this);
        }
        void* found = nullptr;
        ((found = found != nullptr ? found : FindIn<More>(iid)), ...);
        return found != nullptr ? found : FindMore(iid);
    }

    std::atomic<ULONG> mReferences = 1;
};

}  // namespace v5
