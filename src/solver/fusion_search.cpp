#include "solver/fusion_search.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace ZOR::reg {

namespace {

using Name = NameOwnership::Name;

/// Whoever has three names of a set has at least one besides any two of them. So two can be left
/// out of the look-up and asked for afterwards: the two with the most owners.
struct SplitNames {
  std::vector<Name> lookedUp;
  std::vector<Name> leftOut;
};

constexpr std::size_t namesToLeaveOut = minCommonPoints - 1;

SplitNames splitByOwners(const NameOwnership& names, NameOwnership::Set set) {
  const NameOwnership::Names& all = names.namesOf(set);
  SplitNames split{{all.begin(), all.end()}, {}};
  const std::size_t leaveOut = std::min(namesToLeaveOut, split.lookedUp.size());
  const auto middle = split.lookedUp.begin() + static_cast<std::ptrdiff_t>(leaveOut);
  std::partial_sort(split.lookedUp.begin(), middle, split.lookedUp.end(),
                    [&](Name a, Name b) { return names.ownerBound(a) > names.ownerBound(b); });
  split.leftOut.assign(split.lookedUp.begin(), middle);
  split.lookedUp.erase(split.lookedUp.begin(), middle);
  return split;
}

}  // namespace

FusionSearch::FusionSearch(const GroupNameSets& groupNamesSets)
    : names(groupNamesSets),
      placeOfSet(names.setCount()),
      setAtPlace(names.setCount()),
      isLink(names.setCount(), false),
      touches(names.setCount(), 0) {
  std::iota(placeOfSet.begin(), placeOfSet.end(), std::size_t{0});
  std::iota(setAtPlace.begin(), setAtPlace.end(), Set{0});
}

std::optional<FusionSearch::Fusion> FusionSearch::next() {
  while (links.empty()) {
    if (!reachNextGroup()) return std::nullopt;
    linkReachedGroup();
  }
  const std::size_t partnerPlace = links.top();
  links.pop();
  return fuseWith(partnerPlace);
}

bool FusionSearch::reachNextGroup() {
  while (reached < names.setCount()) {
    current = reached++;
    if (names.isLive(current)) return true;
  }
  return false;
}

void FusionSearch::linkReachedGroup() {
  const SplitNames split = splitByOwners(names, current);
  for (const Name name : split.lookedUp) touchOwners(name);
  linkTouched([&](Set set) {
    std::size_t common = touches[set];
    for (const Name name : split.leftOut) common += names.owns(set, name) ? 1 : 0;
    return common >= minCommonPoints;
  });
}

FusionSearch::Fusion FusionSearch::fuseWith(std::size_t partnerPlace) {
  const Set partner = setAtPlace[partnerPlace];
  const std::size_t currentPlace = placeOfSet[current];
  const Fusion fusion{std::min(currentPlace, partnerPlace), std::max(currentPlace, partnerPlace)};
  isLink[partner] = false;

  // The larger set lives on, so that a name moves seldom. But the links of a group that wasn't
  // reached yet are unknown, while one that was has none but those to the current group.
  const bool partnerWasReached = partner < reached;
  const bool partnerLivesOn = partnerWasReached && names.namesOf(partner).size() > names.namesOf(current).size();
  const Set absorbed = partnerLivesOn ? current : partner;
  current = partnerLivesOn ? partner : current;

  const std::vector<Name> gained = names.absorb(current, absorbed);
  placeOfSet[current] = fusion.survivor;
  setAtPlace[fusion.survivor] = current;
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

template <typename Test>
void FusionSearch::linkTouched(Test isLinked) {
  for (const Set set : touched) {
    if (isLinked(set)) {
      isLink[set] = true;
      links.push(placeOfSet[set]);
    }
    touches[set] = 0;
  }
  touched.clear();
}

}  // namespace ZOR::reg
