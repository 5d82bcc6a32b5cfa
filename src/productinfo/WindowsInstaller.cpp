#include "productinfo/WindowsInstaller.h"

namespace v5 {
namespace {

_variant_t Text(std::wstring_view text) {
    return {std::wstring(text).c_str()};
}

}  // namespace

const LateBound& WindowsInstaller::Installer() {
    if (!mInstaller) {
        mInstaller.emplace(L"WindowsInstaller.Installer");
    }
    return *mInstaller;
}

std::vector<std::wstring> WindowsInstaller::RelatedProducts(std::wstring_view upgradeCode) {
    const LateBound list(Installer().Call(L"RelatedProducts", {Text(upgradeCode)}));
    std::vector<std::wstring> products;
    for (long i = 0, count = list.CallLong(L"Count"); i < count; ++i) {
        products.push_back(list.CallText(L"Item", {i}));
    }
    return products;
}

std::wstring WindowsInstaller::ProductInfo(std::wstring_view productCode, std::wstring_view attribute) {
    return Installer().CallText(L"ProductInfo", {Text(productCode), Text(attribute)});
}

std::wstring WindowsInstaller::ComponentPath(std::wstring_view productCode, std::wstring_view componentCode) {
    return Installer().CallText(L"ComponentPath", {Text(productCode), Text(componentCode)});
}

}  // namespace v5
