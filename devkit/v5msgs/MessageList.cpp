#include "v5msgs/MessageList.h"

#include "com/Enumerator.h"

namespace v5::devkit {

STDMETHODIMP MessageList::get_Item(long index, BSTR* description) {
    return Return(description, [&] { return At(index).text; });
}

STDMETHODIMP MessageList::get_Type(long index, long* type) {
    return Return(type, [&] { return At(index).type; });
}

STDMETHODIMP MessageList::get_Count(long* count) {
    return Return(count, [&] { return static_cast<std::int32_t>(mMessages.size()); });
}

STDMETHODIMP MessageList::Clear() {
    return Do([&] { mMessages.clear(); });
}

STDMETHODIMP MessageList::RaiseMsg(long type, BSTR description) {
    return Do([&] { mMessages.push_back({static_cast<std::int32_t>(type), std::wstring(View(description))}); });
}

STDMETHODIMP MessageList::get__NewEnum(IUnknown** enumerator) {
    return Return(enumerator, [&] {
        std::vector<_variant_t> texts;
        texts.reserve(mMessages.size());
        for (const Message& message : mMessages) {
            texts.push_back(TextVariant(message.text));
        }
        return NewEnumerator(std::move(texts));
    });
}

void* MessageList::FindMore(REFIID iid) {
    return iid == __uuidof(IRaiseMsg) ? static_cast<IRaiseMsg*>(&mSink) : nullptr;
}

const MessageList::Message& MessageList::At(long index) const {
    if (index < 0 || static_cast<size_t>(index) >= mMessages.size()) {
        throw AutomationError::RunTime(9, L"Subscript out of range");
    }
    return mMessages[static_cast<size_t>(index)];
}

}  // namespace v5::devkit
