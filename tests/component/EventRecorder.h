// A client that listens to an object's events and remembers them.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <string>
#include <vector>

#include "component/Client.h"

namespace v5::test {

// One `Message(lngMsgType, strDescription)` event.
struct RecordedMessage {
    long type = 0;
    std::wstring text;
    bool operator==(const RecordedMessage&) const = default;
};

// Listens to the dispatch interface `source` of `object` while it lives. Make it a local variable: nobody else's
// reference keeps it alive.
class EventRecorder final : public IDispatch {
  public:
    EventRecorder(IUnknown* object, REFIID source) : source_(source) {
        ComPtr<IConnectionPointContainer> container;
        if (FAILED(object->QueryInterface(IID_PPV_ARGS(&container))) ||
            FAILED(container->FindConnectionPoint(source, &point_)) || FAILED(point_->Advise(this, &cookie_))) {
            ADD_FAILURE() << "the object does not raise these events";
        }
    }
    virtual ~EventRecorder() {
        if (cookie_ != 0) {
            point_->Unadvise(cookie_);
        }
    }
    EventRecorder(const EventRecorder&) = delete;
    EventRecorder& operator=(const EventRecorder&) = delete;

    std::vector<RecordedMessage> messages;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == source_;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*, UINT*) override {
        EXPECT_EQ(id, 1);
        EXPECT_EQ(arguments->cArgs, 2u);
        messages.push_back({_variant_t(arguments->rgvarg[1]), Text(_variant_t(arguments->rgvarg[0]))});
        return S_OK;
    }

  private:
    IID source_;
    ComPtr<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};

}  // namespace v5::test
