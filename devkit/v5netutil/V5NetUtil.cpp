// V5NetUtil.dll: the devkit's account-information component.
#include "v5netutil/AccountInfo.h"

namespace v5 {

namespace {

constexpr ClassEntry kClasses[] = {
    {&CLSID_AccountInfo, devkit::AccountInfo::kProgId, L"V5 account information (devkit)",
     &devkit::AccountInfo::Create},
};

}  // namespace

const Component& ThisComponent() {
    static const Component component{&LIBID_V5NetUtil, 1, 0, kClasses};
    return component;
}

}  // namespace v5
