// A client's message object that keeps what it is told.
#pragma once

#include <string>
#include <vector>

#include "V5Msgs.h"
#include "component/Sink.h"

namespace v5::test {

class MessageRecorder final : public Sink<IRaiseMsg> {
  public:
    std::vector<std::wstring> texts;
    std::vector<long> types;
    HRESULT answer = S_OK;  // what the object answers to each message

    STDMETHODIMP RaiseMsg(long type, BSTR text) override {
        types.push_back(type);
        texts.emplace_back(text, SysStringLen(text));
        return answer;
    }
};

}  // namespace v5::test
