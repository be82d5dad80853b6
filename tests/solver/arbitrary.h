// Values of full spread for the laws.
#pragma once

#include <rapidcheck.h>

namespace tiepoint::testing {

/// From `first` to `last`, both included. The library starts with small cases, which for ranges means
/// hardly more than `first`; here each case draws from the whole range.
template <typename Integer>
Integer arbitraryBetween(Integer first, Integer last) {
  return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange<Integer>(first, static_cast<Integer>(last + 1)));
}

/// Once in `cases` on average.
inline bool onceIn(int cases) { return arbitraryBetween(1, cases) == cases; }

}  // namespace tiepoint::testing
