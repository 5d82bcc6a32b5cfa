// What product information asks of the registry.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace v5 {

enum class RegistryRoot { ClassesRoot, LocalMachine, CurrentUser };

// Port: the registry.
class RegistryReader {
  public:
    virtual ~RegistryReader() = default;

    // A text value of a key (an empty `value`: the key's default value). No value when the key or value is missing,
    // is no text, or cannot be read. Never throws.
    virtual std::optional<std::wstring> ReadText(RegistryRoot root, std::wstring_view key,
                                                 std::wstring_view value) const = 0;
};

}  // namespace v5
