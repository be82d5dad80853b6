// What is tied together so far: disjoint sets, and the links that tied them.
#pragma once

#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace ZOR::reg {

/// Disjoint sets of places, first one for each place, with path halving (R. E. Tarjan and
/// J. van Leeuwen, 1984). The lower root survives, which needs no ranks.
class LinkForest {
 public:
  using Place = std::size_t;
  using Link = std::pair<Place, Place>;

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
    kept.emplace_back(a, b);
  }

  /// The links that tied two sets; with all places in one set there are one fewer than places.
  const std::vector<Link>& links() const { return kept; }
  bool allAreTied() const { return kept.size() + 1 >= parents.size(); }

 private:
  Place rootOf(Place place) {
    while (parents[place] != place) {
      parents[place] = parents[parents[place]];
      place = parents[place];
    }
    return place;
  }

  std::vector<Place> parents;
  std::vector<Link> kept;
};

}  // namespace ZOR::reg
