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

std::wstring WindowsInstaller::RelatedProduct(std::wstring_view upgradeCode) {
    const LateBound list(Installer().Call(L"RelatedProducts", {Text(upgradeCode)}));
    return list.CallLong(L"Count") > 0 ? list.CallText(L"Item", {0L}) : std::wstring();
}

std::wstring WindowsInstaller::ProductInfo(std::wstring_view productCode, std::wstring_view attribute) {
    return Installer().CallText(L"ProductInfo", {Text(productCode), Text(attribute)});
}

std::wstring WindowsInstaller::ComponentPath(std::wstring_view productCode, std::wstring_view componentCode) {
    return Installer().CallText(L"ComponentPath", {Text(productCode), Text(componentCode)});
}

}  // namespace v5
