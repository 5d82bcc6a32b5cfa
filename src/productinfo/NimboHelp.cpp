#include "productinfo/NimboHelp.h"

#include "com/RaiseMsgSink.h"
#include "productinfo/HelpLauncher.h"
#include "productinfo/HtmlHelpViewer.h"
#include "productinfo/WindowsInstaller.h"

namespace v5 {

STDMETHODIMP NimboHelp::ShowHelp(IRaiseMsg* irm, long hwndOwner) {
    return DoQuietly([&] {
        auto* owner = reinterpret_cast<HWND>(static_cast<LONG_PTR>(hwndOwner));
        RaiseMsgSink sink(irm);
        WindowsInstaller installer;
        HtmlHelpViewer viewer(owner);
        const std::wstring problem = OpenHelp(installer, viewer, &sink);
        if (!problem.empty()) {
            MessageBoxW(IsWindow(owner) ? owner : GetActiveWindow(), problem.c_str(), L"Vantor",
                        MB_OK | MB_ICONEXCLAMATION);
        }
    });
}

}  // namespace v5
