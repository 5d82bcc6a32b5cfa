// A client's object that the component calls, for tests to derive from. It lives on the stack of a test: references are
// counted by nobody.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <functional>

namespace v5::test {

template <class Interface = IDispatch>
class Sink : public Interface {
  public:
    Sink() = default;
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;
    virtual ~Sink() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(Interface);
        *object = known ? this : nullptr;
        if (known) {
            this->AddRef();
        }
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }
};

// Counts its events and does `onEvent` in each.
class Listener final : public Sink<> {
  public:
    int events = 0;
    ULONG references = 1;
    std::function<HRESULT()> onEvent = [] { return S_OK; };

    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        ++events;
        return onEvent();
    }
};

}  // namespace v5::test
