// Events of an automation class: one outgoing dispatch interface and the clients that listen to it.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <wrl/client.h>

#include <initializer_list>
#include <utility>
#include <vector>

#include "com/AutomationObject.h"

namespace v5 {

// The connection point of one source interface. It is a part of its owner: it lives as long and shares its count.
class ConnectionPoint final : public IConnectionPoint {
  public:
    // `owner` is the object that raises the events; `iid` its source interface, a dispatch interface.
    ConnectionPoint(IConnectionPointContainer& owner, REFIID iid) : mOwner(owner), mIid(iid) {}
    virtual ~ConnectionPoint() = default;
    ConnectionPoint(const ConnectionPoint&) = delete;
    ConnectionPoint& operator=(const ConnectionPoint&) = delete;

    // Raises one event to every client that listens now. A client that fails, unadvises or releases the owner in
    // its handler does not disturb the others or the caller. Arguments are in the order of the declaration.
    void Raise(DISPID id, std::initializer_list<_variant_t> arguments) noexcept;

    REFIID SourceInterface() const { return mIid; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return mOwner.AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return mOwner.Release(); }

    STDMETHODIMP GetConnectionInterface(IID* iid) override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

  private:
    struct Listener {
        DWORD cookie;
        ComPtr<IDispatch> sink;
    };

    IConnectionPointContainer& mOwner;
    IID mIid;
    DWORD mLastCookie = 0;
    std::vector<Listener> mListeners;
};

// An enumerator over the one connection point of a container. Throws std::bad_alloc.
ComPtr<IEnumConnectionPoints> NewConnectionPointEnumerator(IConnectionPoint& point);

// The base of an automation class that raises events through `Source`, its default source interface.
template <class Self, class Interface, class CoClass, class Source, class... More>
class EventfulObject : public AutomationObject<Self, Interface, CoClass, IConnectionPointContainer, More...> {
  public:
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override {
        if (points == nullptr) {
            return E_POINTER;
        }
        *points = nullptr;
        return Guarded(IID_NULL, L"", [&] { *points = NewConnectionPointEnumerator(mPoint).Detach(); });
    }
    STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
        if (point == nullptr) {
            return E_POINTER;
        }
        *point = nullptr;
        if (iid != __uuidof(Source)) {
            return CONNECT_E_NOCONNECTION;
        }
        *point = &mPoint;
        mPoint.AddRef();
        return S_OK;
    }

  protected:
    EventfulObject() : mPoint(*this, __uuidof(Source)) {}

    void RaiseEvent(DISPID id, std::initializer_list<_variant_t> arguments) noexcept { mPoint.Raise(id, arguments); }

  private:
    ConnectionPoint mPoint;
};

}  // namespace v5
