// A registry that holds what a test puts into it.
#pragma once

#include <map>
#include <string>
#include <tuple>

#include "productinfo/RegistryReader.h"

namespace v5 {

class FakeRegistry : public RegistryReader {
  public:
    std::map<std::tuple<RegistryRoot, std::wstring, std::wstring>, std::wstring> values;

    std::optional<std::wstring> ReadText(RegistryRoot root, std::wstring_view key,
                                         std::wstring_view value) const override {
        const auto found = values.find({root, std::wstring(key), std::wstring(value)});
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
};

}  // namespace v5
