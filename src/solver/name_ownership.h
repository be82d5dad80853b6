// Who has which names, asked from both sides.
#pragma once

#include <boost/unordered/unordered_flat_set.hpp>
#include <cstddef>
#include <vector>

#include "solver/group_clusters.h"

namespace ZOR::reg {

/// Sets of names and, for each name, the sets that own it. One set can absorb another, which is
/// then no longer live. Sets are numbered in the order of their groups, names as they come.
class NameOwnership {
 public:
  using Set = std::size_t;
  using Name = std::size_t;
  using Names = boost::unordered_flat_set<Name>;

  explicit NameOwnership(const GroupNameSets& groupNamesSets);

  std::size_t setCount() const { return namesOfSet.size(); }
  bool isLive(Set set) const { return live[set]; }
  const Names& namesOf(Set set) const { return namesOfSet[set]; }
  bool owns(Set set, Name name) const { return namesOfSet[set].contains(name); }

  /// The live sets that own the name. Sets that were absorbed since the last call are forgotten on
  /// the way, so that none is passed over twice.
  const std::vector<Set>& ownersOf(Name name);
  /// At least as many as ownersOf gives, without the way.
  std::size_t ownerBound(Name name) const { return ownersOfName[name].size(); }

  /// They have at least minCommonPoints names in common.
  bool areLinked(Set a, Set b) const;

  /// Puts the names of `absorbed` into `survivor` and gives those that it lacked. Costs what
  /// `absorbed` holds.
  std::vector<Name> absorb(Set survivor, Set absorbed);

 private:
  std::vector<Names> namesOfSet;
  std::vector<std::vector<Set>> ownersOfName;
  std::vector<bool> live;
};

}  // namespace ZOR::reg
