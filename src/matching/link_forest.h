// What is tied together so far, as disjoint sets.
#pragma once

#include <cstddef>
#include <numeric>
#include <vector>

namespace ZOR::reg {

/// Disjoint sets of places, first one for each place, with path halving (R. E. Tarjan and
/// J. van Leeuwen, 1984). The lower root survives, which needs no ranks.
class LinkForest {
 public:
  using Place = std::size_t;

  explicit LinkForest(std::size_t placeCount) : parents(placeCount) {
    std::iota(parents.begin(), parents.end(), Place{0});
  }

  bool areTied(Place a, Place b) { return a == b || rootOf(a) == rootOf(b); }

  void tie(Place a, Place b) {
    const Place rootOfA = rootOf(a);
    const Place rootOfB = rootOf(b);
    if (rootOfA == rootOfB) return;
    if (rootOfA < rootOfB) {
      parents[rootOfB] = rootOfA;
    } else {
      parents[rootOfA] = rootOfB;
    }
    ++tieCount;
  }

  bool allAreTied() const { return tieCount + 1 >= parents.size(); }

  /// The lowest place of the set.
  Place rootOf(Place place) {
    while (parents[place] != place) {
      parents[place] = parents[parents[place]];
      place = parents[place];
    }
    return place;
  }

 private:
  std::vector<Place> parents;
  std::size_t tieCount = 0;
};

}  // namespace ZOR::reg
