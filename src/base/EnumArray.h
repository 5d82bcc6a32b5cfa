// An array whose elements are found by the enumerators of an enumeration that counts from 0.
#pragma once

#include <array>
#include <cstddef>

namespace v5 {

template <class Enumeration, class Value, std::size_t count>
struct EnumArray : std::array<Value, count> {
    constexpr Value& operator[](Enumeration at) { return this->begin()[static_cast<std::size_t>(at)]; }
    constexpr const Value& operator[](Enumeration at) const { return this->begin()[static_cast<std::size_t>(at)]; }
};

}  // namespace v5
