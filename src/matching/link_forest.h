// What is tied together so far, as disjoint sets.
#pragma once

#include <cstddef>
#include <numeric>
#include <vector>

namespace ZOR::reg {

/// Disjoint sets of indices, at first one for each index, with path halving (R. E. Tarjan and
/// J. van Leeuwen, 1984). The lower root survives, which needs no ranks.
class LinkForest {
 public:
  using Index = std::size_t;

  explicit LinkForest(std::size_t count) : parents(count) { std::iota(parents.begin(), parents.end(), Index{0}); }

  bool areTied(Index a, Index b) { return a == b || rootOf(a) == rootOf(b); }

  void tie(Index a, Index b) {
    const Index rootOfA = rootOf(a);
    const Index rootOfB = rootOf(b);
    if (rootOfA == rootOfB) return;
    if (rootOfA < rootOfB) {
      parents[rootOfB] = rootOfA;
    } else {
      parents[rootOfA] = rootOfB;
    }
    ++tieCount;
  }

  bool allAreTied() const { return tieCount + 1 >= parents.size(); }

  /// The lowest index of the set.
  Index rootOf(Index index) {
    while (parents[index] != index) {
      parents[index] = parents[parents[index]];
      index = parents[index];
    }
    return index;
  }

 private:
  std::vector<Index> parents;
  std::size_t tieCount = 0;
};

}  // namespace ZOR::reg
