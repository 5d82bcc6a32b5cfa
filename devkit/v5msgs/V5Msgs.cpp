// V5Msgs.dll: the devkit's messages component.
#include "v5msgs/MessageList.h"

namespace v5 {

namespace {

constexpr ClassEntry kClasses[] = {
    {&CLSID_MessageList, devkit::MessageList::kProgId, L"V5 message list (devkit)", &devkit::MessageList::Create},
};

}  // namespace

const Component& ThisComponent() {
    static const Component component{&LIBID_V5Msgs, 1, 0, kClasses};
    return component;
}

}  // namespace v5
