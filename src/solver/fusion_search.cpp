#include "solver/fusion_search.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace ZOR::reg {

namespace {

/// Whoever has three names of a set has at least one besides any two of them. So two can be left
/// out when the owners of each are looked up, and counted afterwards for those that were met.
using LeftOutNames = std::array<NameOwnership::Name, minCommonPoints - 1>;

/// The names with the most owners; the set has more names than that.
LeftOutNames mostWidelyOwned(const NameOwnership& names, NameOwnership::Set set) {
  const auto all = names.namesOf(set);
  LeftOutNames leftOut{};
  std::partial_sort_copy(all.begin(), all.end(), leftOut.begin(), leftOut.end(),
                         [&](auto a, auto b) { return names.ownerBound(a) > names.ownerBound(b); });
  return leftOut;
}

}  // namespace

FusionSearch::FusionSearch(const GroupNameSets& groupNamesSets)
    : names(groupNamesSets),
      indexOfSet(names.setCount()),
      setAtIndex(names.setCount()),
      isLink(names.setCount(), false),
      touches(names.setCount(), 0) {
  std::iota(indexOfSet.begin(), indexOfSet.end(), Index{0});
  std::iota(setAtIndex.begin(), setAtIndex.end(), Set{0});
}

std::optional<FusionSearch::Fusion> FusionSearch::next() {
  while (links.empty()) {
    if (!reachNextGroup()) return std::nullopt;
    linkReachedGroup();
  }
  const Index partnerIndex = links.top();
  links.pop();
  return fuseWith(partnerIndex);
}

bool FusionSearch::reachNextGroup() {
  while (reached < names.setCount()) {
    current = reached++;
    if (names.isLive(current)) return true;
  }
  return false;
}

void FusionSearch::linkReachedGroup() {
  if (names.namesOf(current).size() < minCommonPoints) return;
  const LeftOutNames leftOut = mostWidelyOwned(names, current);
  for (const Name name : names.namesOf(current)) {
    if (std::find(leftOut.begin(), leftOut.end(), name) == leftOut.end()) touchOwners(name);
  }
  for (const Name name : leftOut) touchTouchedOwners(name);
  linkTouched([&](Set set) { return touches[set] >= minCommonPoints; });
}

FusionSearch::Fusion FusionSearch::fuseWith(Index partnerIndex) {
  const Set partner = setAtIndex[partnerIndex];
  const Index currentIndex = indexOfSet[current];
  const Fusion fusion{std::min(currentIndex, partnerIndex), std::max(currentIndex, partnerIndex)};
  isLink[partner] = false;

  // The larger set lives on, so that a name moves seldom. But the links of a group that wasn't
  // reached yet are unknown, while one that was has none but those to the current group.
  const bool partnerWasReached = partner < reached;
  const bool partnerLivesOn = partnerWasReached && names.namesOf(partner).size() > names.namesOf(current).size();
  const Set absorbed = partnerLivesOn ? current : partner;
  current = partnerLivesOn ? partner : current;

  const std::vector<Name> gained = names.absorb(current, absorbed);
  indexOfSet[current] = fusion.survivor;
  setAtIndex[fusion.survivor] = current;
  linkThroughGained(gained);
  return fusion;
}

/// A group that didn't link to the set before has one of the gained names if it does now.
void FusionSearch::linkThroughGained(const std::vector<Name>& gained) {
  for (const Name name : gained) touchOwners(name);
  linkTouched([&](Set set) { return touches[set] >= minCommonPoints || names.areLinked(current, set); });
}

void FusionSearch::touchOwners(Name name) {
  for (const Set set : names.ownersOf(name)) {
    if (set == current || isLink[set]) continue;
    if (touches[set]++ == 0) touched.push_back(set);
  }
}

/// By the shorter way: from the name's owners or from the sets met.
void FusionSearch::touchTouchedOwners(Name name) {
  if (names.ownerBound(name) < touched.size()) {
    for (const Set set : names.ownersOf(name)) touches[set] += touches[set] > 0 ? 1 : 0;
  } else {
    for (const Set set : touched) touches[set] += names.owns(set, name) ? 1 : 0;
  }
}

template <typename Test>
void FusionSearch::linkTouched(Test isLinked) {
  for (const Set set : touched) {
    if (isLinked(set)) {
      isLink[set] = true;
      links.push(indexOfSet[set]);
    }
    touches[set] = 0;
  }
  touched.clear();
}

}  // namespace ZOR::reg
