// V5Msgs.MessageList: a message sink for tests, examples and scripts.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "V5MessageList.h"
#include "V5MessageListMembers.h"
#include "V5MsgsMembers.h"
#include "com/AutomationObject.h"

namespace v5::devkit {

class MessageList final : public AutomationObject<MessageList, IMessageList, ::MessageList> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Msgs.MessageList";

    STDMETHODIMP get_Item(long index, BSTR* description) override;
    STDMETHODIMP get_Type(long index, long* type) override;
    STDMETHODIMP get_Count(long* count) override;
    STDMETHODIMP Clear() override;
    STDMETHODIMP RaiseMsg(long type, BSTR description) override;
    STDMETHODIMP get__NewEnum(IUnknown** enumerator) override;

  protected:
    void* FindMore(REFIID iid) override;

  private:
    struct Message {
        std::int32_t type;
        std::wstring text;
    };

    // The same object seen as a plain sink. It is a part of the list: it lives as long and shares its count.
    class Sink final : public DualInterface<IRaiseMsg> {
      public:
        explicit Sink(MessageList& list) : mList(list) {}
        STDMETHODIMP QueryInterface(REFIID iid, void** object) override { return mList.QueryInterface(iid, object); }
        STDMETHODIMP_(ULONG) AddRef() override { return mList.AddRef(); }
        STDMETHODIMP_(ULONG) Release() override { return mList.Release(); }
        STDMETHODIMP RaiseMsg(long type, BSTR description) override { return mList.RaiseMsg(type, description); }

      private:
        MessageList& mList;
    };

    const Message& At(long index) const;

    std::vector<Message> mMessages;
    Sink mSink{*this};
};

}  // namespace v5::devkit
