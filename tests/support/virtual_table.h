// The places of virtual functions in the table of their class, for interfaces whose callers are built
// apart: a place is what such a caller has, and the order of the declarations fixes it.
#pragma once

// Not with Microsoft's compiler, whose pointers to member functions don't tell the place.
#if !defined(_MSC_VER)

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <type_traits>
#include <vector>

namespace tiepoint::testing {

/// Counted from 0. By the Itanium C++ ABI, which g++ and clang follow on every platform, the pointer to
/// a virtual member function holds 1 + its offset in the table. A virtual destructor takes two places.
/// Throws std::invalid_argument for a function that isn't virtual.
template <class MemberFunction>
std::size_t placeOf(MemberFunction function) {
  static_assert(std::is_member_function_pointer_v<MemberFunction>);
  std::uintptr_t pointer = 0;
  static_assert(sizeof(function) >= sizeof(pointer));
  std::memcpy(&pointer, &function, sizeof(pointer));
  if (pointer % 2 == 0) throw std::invalid_argument("This function isn't virtual");
  return (pointer - 1) / sizeof(void*);
}

template <class... MemberFunctions>
std::vector<std::size_t> placesOf(MemberFunctions... functions) {
  return {placeOf(functions)...};
}

/// `count` places, one behind the other.
inline std::vector<std::size_t> inTurn(std::size_t first, std::size_t count) {
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < count; ++i) places.push_back(first + i);
  return places;
}

/// The first place behind a destructor that stands at the head of a table.
inline constexpr std::size_t behindDestructor = 2;

}  // namespace tiepoint::testing

#endif
