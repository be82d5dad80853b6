// Who has which names, asked from both sides.
#pragma once

#include <boost/core/span.hpp>
#include <boost/unordered/unordered_flat_set.hpp>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "solver/group_names.h"

namespace ZOR::reg {

/// Sets of names and, for each name, the sets that own it. One set can absorb another, which is
/// then no longer live. Sets are numbered in the order of their groups. Names that only one group
/// has link nothing and are left out.
class NameOwnership {
 public:
  using Set = std::uint32_t;
  using Name = std::uint32_t;

  explicit NameOwnership(const GroupNameSets& groupNamesSets);

  Set setCount() const { return static_cast<Set>(live.size()); }
  bool isLive(Set set) const { return live[set]; }

  boost::span<const Name> namesOf(Set set) const;
  bool owns(Set set, Name name) const;

  /// The live sets that own the name. Sets that were absorbed since the last call are dropped on
  /// the way, so that none is passed over twice.
  boost::span<const Set> ownersOf(Name name);
  /// At least as many as ownersOf gives, without the way.
  std::size_t ownerBound(Name name) const { return owners[name].count; }

  /// They have at least minCommonPoints names in common.
  bool areLinked(Set a, Set b) const;

  /// Puts the names of `absorbed` into `survivor` and gives those that it lacked. Costs what
  /// `absorbed` holds, and the first time what `survivor` does.
  std::vector<Name> absorb(Set survivor, Set absorbed);

 private:
  /// A part of one of the long vectors below.
  struct Slice {
    std::uint32_t first = 0;
    std::uint32_t count = 0;
  };
  /// The names of a set that has absorbed others.
  struct Union {
    std::vector<Name> names;
    boost::unordered_flat_set<Name> lookup;
  };

  static constexpr Name notShared = std::numeric_limits<Name>::max();

  std::vector<Name> layOutOwners(const std::vector<Name>& uses, Name nameCount);
  Union& unionOf(Set set);
  void addOwner(Name name, Set set);

  std::vector<bool> live;
  /// What the groups came with, ascending within each set.
  std::vector<Slice> ownNames;
  std::vector<Name> allNames;
  std::vector<std::unique_ptr<Union>> unions;
  /// An owner that joins takes the room of one that it absorbed.
  std::vector<Slice> owners;
  std::vector<Set> allOwners;
};

}  // namespace ZOR::reg
