// The names that a reader of an INI file looks for, found without regard to the case of the letters A to Z.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <unordered_map>

namespace v5 {

class IniNames {
  public:
    static constexpr size_t kNone = static_cast<size_t>(-1);

    // `names` are ASCII and all different. The texts must outlive this object.
    explicit IniNames(std::span<const std::wstring_view> names);

    size_t size() const { return mPositions.size(); }

    // The position of `name` in the list, or kNone.
    size_t Find(std::wstring_view name) const;

  private:
    struct Hash {
        size_t operator()(std::wstring_view name) const;
    };
    struct Equal {
        bool operator()(std::wstring_view a, std::wstring_view b) const;
    };

    std::unordered_map<std::wstring_view, size_t, Hash, Equal> mPositions;
};

}  // namespace v5
