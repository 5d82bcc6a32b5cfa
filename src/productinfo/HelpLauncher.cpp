#include "productinfo/HelpLauncher.h"

#include "ProductConstants.h"
#include "base/Text.h"

namespace v5 {
namespace {

void Report(MessageSink* sink, const std::wstring& text) {
    if (sink) {
        sink->RaiseMessage(kMessageTypeProblem, text);
    }
}

std::wstring FindHelpFile(InstallerQueries& installer, MessageSink* sink) {
    const std::wstring code = FirstRelatedProduct(installer, sink, L"STR-0165", product::kUpgradeCodeMain);
    return code.empty() ? std::wstring() : installer.ComponentPath(code, product::kHelpComponentCode);
}

std::wstring OpenOrExplain(InstallerQueries& installer, HelpViewer& viewer, MessageSink* sink) {
    const std::wstring path = FindHelpFile(installer, sink);
    if (path.empty()) {
        Report(sink, L"Cannot find component path for Vantor help file. Vantor help may not be installed. [STR-0167]");
        return ReplaceAll(
            L"Cannot find path for Vantor help file '$file$'. Vantor help may not be installed. [STR-0168]", L"$file$",
            product::kHelpFileName);
    }
    if (!viewer.FileExists(path)) {
        Report(sink, L"Cannot find '" + path + L"'. Vantor help may not be installed. [STR-0169]");
        return ReplaceAll(L"Cannot find file '$file$'. [STR-0170]", L"$file$", path);
    }
    viewer.Open(path);
    return {};
}

}  // namespace

std::wstring OpenHelp(InstallerQueries& installer, HelpViewer& viewer, MessageSink* sink) {
    try {
        return OpenOrExplain(installer, viewer, sink);
    } catch (...) {
        return L"[STR-0171] " + CurrentFailureText();
    }
}

}  // namespace v5
