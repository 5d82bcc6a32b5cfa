#include "productinfo/WindowsInstallerFunctions.h"

namespace v5 {
namespace {

std::wstring FirstProductInfo(InstallerQueries& installer, MessageSink* sink, std::wstring_view upgradeCode,
                              std::wstring_view attribute) {
    const std::wstring product = FirstRelatedProduct(installer, sink, L"STR-0146", upgradeCode);
    return product.empty() ? std::wstring() : installer.ProductInfo(product, attribute);
}

}  // namespace

std::wstring FirstRelatedProduct(InstallerQueries& installer, MessageSink* sink, std::wstring_view tag,
                                 std::wstring_view upgradeCode) {
    std::wstring product = installer.RelatedProduct(upgradeCode);
    if (product.empty() && sink) {
        sink->RaiseMessage(kMessageTypeProblem, std::wstring(tag) +
                                                    L": Cannot find installed product code for upgrade code '" +
                                                    std::wstring(upgradeCode) + L"'");
    }
    return product;
}

std::wstring InstalledProductName(InstallerQueries& installer, MessageSink* sink, std::wstring_view upgradeCode) {
    return FirstProductInfo(installer, sink, upgradeCode, L"InstalledProductName");
}

std::wstring InstallDate(InstallerQueries& installer, MessageSink* sink, std::wstring_view upgradeCode) {
    return FirstProductInfo(installer, sink, upgradeCode, L"InstallDate");
}

}  // namespace v5
