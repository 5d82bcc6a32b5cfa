// A Windows Installer with packages as a test wants them, and a sink that keeps what it is told.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "productinfo/WindowsInstallerFunctions.h"

namespace v5 {

class FakeInstaller : public InstallerQueries {
  public:
    struct Product {
        std::map<std::wstring, std::wstring, std::less<>> attributes;  // an attribute that is missing fails
        std::wstring componentPath;
    };

    // Installs one product for an upgrade code.
    void Install(std::wstring_view upgradeCode, std::wstring name, std::wstring date = L"20140305") {
        mProducts[std::wstring(upgradeCode)] = {
            {{L"InstalledProductName", std::move(name)}, {L"InstallDate", std::move(date)}}, {}};
    }
    Product& operator[](std::wstring_view upgradeCode) { return mProducts[std::wstring(upgradeCode)]; }

    bool broken = false;           // every query fails
    bool hasComponentPath = true;  // false: that query fails

    std::wstring RelatedProduct(std::wstring_view upgradeCode) override {
        FailIf(broken);
        return mProducts.contains(upgradeCode) ? L"product of " + std::wstring(upgradeCode) : L"";
    }

    std::wstring ProductInfo(std::wstring_view productCode, std::wstring_view attribute) override {
        const Product& product = Find(productCode);
        const auto found = product.attributes.find(attribute);
        FailIf(found == product.attributes.end());
        return found->second;
    }

    std::wstring ComponentPath(std::wstring_view productCode, std::wstring_view) override {
        FailIf(!hasComponentPath);
        return Find(productCode).componentPath;
    }

  private:
    static void FailIf(bool condition) {
        if (condition) {
            throw AutomationError(0x80020003u, L"Member not found.");
        }
    }

    const Product& Find(std::wstring_view productCode) {
        const auto found = mProducts.find(productCode.substr(std::wstring_view(L"product of ").size()));
        FailIf(broken || found == mProducts.end());
        return found->second;
    }

    std::map<std::wstring, Product, std::less<>> mProducts;
};

class RecordingSink : public MessageSink {
  public:
    void RaiseMessage(long type, std::wstring_view text) override {
        texts.emplace_back(type == kMessageTypeProblem ? text : L"wrong type");
    }
    std::vector<std::wstring> texts;
};

inline std::wstring NotFound146(std::wstring_view upgradeCode) {
    return L"STR-0146: Cannot find installed product code for upgrade code '" + std::wstring(upgradeCode) + L"'";
}

}  // namespace v5
