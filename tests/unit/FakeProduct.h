// What product information needs from the machine: installer, registry and help viewer. Any operation can be made to
// fail, by its name.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <tuple>

#include "FailCall.h"
#include "productinfo/HelpLauncher.h"
#include "productinfo/RegistryReader.h"
#include "productinfo/WindowsInstallerFunctions.h"

namespace v5 {

struct FakeProduct : InstallerQueries, RegistryReader, HelpViewer, MessageSink {
    struct Package {
        std::wstring name, date = L"20140305", componentPath = {};
    };
    mutable Operations machine;
    std::map<std::wstring, Package, std::less<>> packages;  // by upgrade code
    std::map<std::tuple<RegistryRoot, std::wstring, std::wstring>, std::wstring> values;
    std::set<std::wstring, std::less<>> files;
    std::wstring opened;  // in the viewer
    std::wstring told;    // messages, a line for each

    std::wstring RelatedProduct(std::wstring_view upgradeCode) override {
        return machine.Answer("RelatedProduct", std::wstring(packages.contains(upgradeCode) ? upgradeCode : L""));
    }
    std::wstring ProductInfo(std::wstring_view code, std::wstring_view attribute) override {
        const Package& package = packages.find(code)->second;
        return machine.Answer("ProductInfo", attribute == L"InstallDate"            ? package.date
                                             : attribute == L"InstalledProductName" ? package.name
                                                                                    : L"no such attribute");
    }
    std::wstring ComponentPath(std::wstring_view code, std::wstring_view) override {
        return machine.Answer("ComponentPath", packages.find(code)->second.componentPath);
    }
    std::optional<std::wstring> ReadText(RegistryRoot root, std::wstring_view key,
                                         std::wstring_view value) const override {
        const auto found = values.find({root, std::wstring(key), std::wstring(value)});
        return machine.Succeeds("ReadText") && found != values.end() ? std::optional(found->second) : std::nullopt;
    }
    bool FileExists(std::wstring_view path) const override {
        return machine.Succeeds("FileExists") && files.contains(path);
    }
    void Open(std::wstring_view path) override {
        machine.Require("Open");
        opened = path;
    }
    void RaiseMessage(long type, std::wstring_view text) override {
        told.append(type == kMessageTypeProblem ? L"" : L"wrong type: ").append(text).append(L"\n");
    }
};

}  // namespace v5
