// The caller's message object (`irm`) as the rules' message sink.
#pragma once

#include <windows.h>

#include "V5Msgs.h"
#include "base/MessageSink.h"
#include "com/Guard.h"
#include "com/Values.h"

namespace v5 {

// Holds the caller's object for the length of one call. A null object is allowed: messages then go nowhere, and a
// sink that fails does not disturb the call.
class RaiseMsgSink final : public MessageSink {
  public:
    explicit RaiseMsgSink(IRaiseMsg* sink) : mSink(sink) {}

    void RaiseMessage(long type, std::wstring_view text) override {
        if (mSink == nullptr) {
            return;
        }
        GuardedQuietly([&] { mSink->RaiseMsg(type, ToBstr(text)); });
    }

  private:
    ComPtr<IRaiseMsg> mSink;
};

}  // namespace v5
