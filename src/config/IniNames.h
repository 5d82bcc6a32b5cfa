// The names that a reader of an INI file looks for, found without regard to the case of the letters A to Z.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace v5 {

class IniNames {
  public:
    static constexpr size_t kNone = static_cast<size_t>(-1);

    // `names` are ASCII, all different, at most 255. The texts must outlive this object.
    explicit IniNames(std::span<const std::string_view> names);

    size_t size() const { return mNames.size(); }

    // The position of `name` in the list, or kNone.
    size_t Find(std::string_view name) const;

  private:
    std::vector<std::string_view> mNames;
    std::vector<std::uint8_t> mSlots;  // position + 1 of the name that hashes here, 0 where there is none
};

}  // namespace v5
