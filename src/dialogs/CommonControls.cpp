#include "dialogs/CommonControls.h"

#include <windows.h>

#include <commctrl.h>

#include "platform/Module.h"
#include "platform/SystemFunction.h"

namespace v5 {

namespace {

constexpr WORD kManifestResource = 100;

HANDLE CreateModuleContext() {
    ACTCTXW request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    request.hModule = ThisModule();
    request.lpResourceName = MAKEINTRESOURCEW(kManifestResource);
    return CreateActCtxW(&request);
}

}  // namespace

CommonControlsScope::CommonControlsScope() : mContext(CreateModuleContext()) {
    mActive = mContext != INVALID_HANDLE_VALUE && ActivateActCtx(mContext, &mCookie) != FALSE;
    const INITCOMMONCONTROLSEX classes{sizeof classes,
                                       ICC_STANDARD_CLASSES | ICC_UPDOWN_CLASS | ICC_LISTVIEW_CLASSES | ICC_LINK_CLASS};
    SystemFunction<decltype(InitCommonControlsEx)>(L"comctl32.dll", "InitCommonControlsEx")(&classes);
}

CommonControlsScope::~CommonControlsScope() {
    if (mActive) {
        DeactivateActCtx(0, mCookie);
    }
    if (mContext != INVALID_HANDLE_VALUE) {
        ReleaseActCtx(mContext);
    }
}

}  // namespace v5
