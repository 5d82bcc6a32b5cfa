#include "com/EventSource.h"

#include <olectl.h>

#include <algorithm>

#include "com/LateBound.h"
#include "com/SimpleObject.h"

namespace v5 {

namespace {

void CopyItem(const CONNECTDATA& from, CONNECTDATA* to) {
    *to = from;
    to->pUnk->AddRef();
}

void CopyItem(const ComPtr<IConnectionPoint>& from, IConnectionPoint** to) {
    from.CopyTo(to);
}

// The connection enumerators of OLE controls, which differ only in what they enumerate. `Stored` is what is kept,
// `Item` what a client gets.
template <class Interface, class Item, class Stored>
class ConnectionEnumerator final : public SimpleEnumerator<Interface, Item, Stored> {
  public:
    ConnectionEnumerator(std::vector<Stored> items, std::vector<ComPtr<IUnknown>> kept, size_t next)
        : SimpleEnumerator<Interface, Item, Stored>(std::move(items), next), mKept(std::move(kept)) {}

    STDMETHODIMP Clone(Interface** copy) override {
        if (copy == nullptr) {
            return E_POINTER;
        }
        *copy = nullptr;
        return Guarded(IID_NULL, L"",
                       [&] { *copy = new ConnectionEnumerator(this->Items(), mKept, this->Position()); });
    }

  private:
    HRESULT CopyOut(const Stored* from, ULONG count, Item* to) override {
        for (ULONG i = 0; i < count; ++i) {
            CopyItem(from[i], &to[i]);
        }
        return S_OK;
    }

    std::vector<ComPtr<IUnknown>> mKept;  // keeps alive what the items point to
};

using ListenerEnumerator = ConnectionEnumerator<IEnumConnections, CONNECTDATA, CONNECTDATA>;
using PointEnumerator = ConnectionEnumerator<IEnumConnectionPoints, IConnectionPoint*, ComPtr<IConnectionPoint>>;

}  // namespace

void ConnectionPoint::Raise(DISPID id, std::initializer_list<_variant_t> arguments) noexcept {
    GuardedQuietly([&] {
        const ComPtr<IConnectionPointContainer> alive(&mOwner);
        const std::vector<Listener> listeners = mListeners;
        for (const Listener& listener : listeners) {
            Raised ignored;
            InvokeInOrder(*listener.sink.Get(), id, DISPATCH_METHOD, arguments, nullptr, ignored);
        }
    });
}

STDMETHODIMP ConnectionPoint::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    if (iid != IID_IUnknown && iid != IID_IConnectionPoint) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* iid) {
    if (iid == nullptr) {
        return E_POINTER;
    }
    *iid = mIid;
    return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr) {
        return E_POINTER;
    }
    *container = &mOwner;
    mOwner.AddRef();
    return S_OK;
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    if (sink == nullptr || cookie == nullptr) {
        return E_POINTER;
    }
    *cookie = 0;
    ComPtr<IDispatch> dispatch;
    if (FAILED(sink->QueryInterface(mIid, reinterpret_cast<void**>(dispatch.GetAddressOf()))) &&
        FAILED(sink->QueryInterface(IID_PPV_ARGS(&dispatch)))) {
        return CONNECT_E_CANNOTCONNECT;
    }
    return Guarded(IID_NULL, L"", [&] {
        mListeners.push_back({++mLastCookie, dispatch});
        *cookie = mLastCookie;
    });
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) {
    const auto found = std::find_if(mListeners.begin(), mListeners.end(),
                                    [&](const Listener& listener) { return listener.cookie == cookie; });
    if (found == mListeners.end()) {
        return CONNECT_E_NOCONNECTION;
    }
    const ComPtr<IDispatch> released = std::move(found->sink);  // its last release may call back into us
    mListeners.erase(found);
    return S_OK;
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** connections) {
    if (connections == nullptr) {
        return E_POINTER;
    }
    *connections = nullptr;
    return Guarded(IID_NULL, L"", [&] {
        std::vector<CONNECTDATA> items;
        std::vector<ComPtr<IUnknown>> kept;
        for (const Listener& listener : mListeners) {
            kept.emplace_back(listener.sink);
            items.push_back({listener.sink.Get(), listener.cookie});
        }
        *connections = new ListenerEnumerator(std::move(items), std::move(kept), 0);
    });
}

ComPtr<IEnumConnectionPoints> NewConnectionPointEnumerator(IConnectionPoint& point) {
    return Adopt(new PointEnumerator({ComPtr<IConnectionPoint>(&point)}, {}, 0));
}

}  // namespace v5
