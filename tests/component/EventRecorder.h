// A client that listens to an object's events and remembers them.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <string>
#include <vector>

#include "component/Client.h"
#include "component/Sink.h"

namespace v5::test {

// One `Message(lngMsgType, strDescription)` event.
struct RecordedMessage {
    long type = 0;
    std::wstring text;
    bool operator==(const RecordedMessage&) const = default;
};

// Listens to the dispatch interface `source` of `object` while it lives. Make it a local variable: nobody else's
// reference keeps it alive.
class EventRecorder final : public Sink<> {
  public:
    EventRecorder(IUnknown* object, REFIID source) {
        ComPtr<IConnectionPointContainer> container;
        if (FAILED(object->QueryInterface(IID_PPV_ARGS(&container))) ||
            FAILED(container->FindConnectionPoint(source, &mPoint)) || FAILED(mPoint->Advise(this, &mCookie))) {
            ADD_FAILURE() << "the object does not raise these events";
        }
    }
    ~EventRecorder() override {
        if (mCookie != 0) {
            mPoint->Unadvise(mCookie);
        }
    }

    std::vector<RecordedMessage> messages;

    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*, UINT*) override {
        EXPECT_EQ(id, 1);
        EXPECT_EQ(arguments->cArgs, 2u);
        messages.push_back({_variant_t(arguments->rgvarg[1]), Text(_variant_t(arguments->rgvarg[0]))});
        return S_OK;
    }

  private:
    ComPtr<IConnectionPoint> mPoint;
    DWORD mCookie = 0;
};

}  // namespace v5::test
