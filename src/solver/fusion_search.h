// Which two groups fuse next.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <queue>
#include <vector>

#include "solver/name_ownership.h"

namespace ZOR::reg {

/// Gives the fusions in the order of a scan over all pairs of groups that starts again from the
/// smallest group after each fusion.
///
/// The scan isn't repeated. When it comes to a pair (a, b), no pair before it can fuse, and the
/// fusion changes only what a shares with others. So the next pair is a with the smallest group
/// that it links to by then, be it before or after a, and only where there is none the scan goes
/// on with the first group that it hasn't reached. All links at any moment are those of one group.
class FusionSearch {
 public:
  /// In ascending order of the groups.
  using Index = std::uint32_t;
  struct Fusion {
    Index survivor = 0;
    Index absorbed = 0;
  };

  explicit FusionSearch(const GroupNameSets& groupNamesSets);

  /// The next fusion, by the groups' indices, or nothing when no two groups are left that link.
  std::optional<Fusion> next();

 private:
  using Set = NameOwnership::Set;
  using Name = NameOwnership::Name;

  bool reachNextGroup();
  void linkReachedGroup();
  Fusion fuseWith(Index partnerIndex);
  void linkThroughGained(const std::vector<Name>& gained);

  void touchOwners(Name name);
  void touchTouchedOwners(Name name);
  template <typename Test>
  void linkTouched(Test isLinked);

  NameOwnership names;
  /// A fused group bears the smaller index of the two, whichever of their sets lives on.
  std::vector<Index> indexOfSet;
  std::vector<Set> setAtIndex;

  /// Groups from this index on haven't been compared yet.
  Set reached = 0;
  Set current = 0;
  /// The indices of the groups that link to the current one, the smallest on top, and by set
  /// whether it is among them.
  std::priority_queue<Index, std::vector<Index>, std::greater<>> links;
  std::vector<bool> isLink;

  /// The sets met while some of the current one's names are looked up, and how often each was.
  std::vector<Set> touched;
  std::vector<std::uint32_t> touches;
};

}  // namespace ZOR::reg
