#include "solver/name_ownership.h"

#include <algorithm>
#include <boost/unordered/unordered_flat_map.hpp>

namespace ZOR::reg {

NameOwnership::NameOwnership(const GroupNameSets& groupNamesSets)
    : namesOfSet(groupNamesSets.size()), live(groupNamesSets.size(), true) {
  boost::unordered_flat_map<CommonPointId, Name> nameOfId;
  Set set = 0;
  for (const auto& [groupId, ids] : groupNamesSets) {
    namesOfSet[set].reserve(ids.size());
    for (const CommonPointId id : ids) {
      const auto [entry, isNew] = nameOfId.try_emplace(id, ownersOfName.size());
      if (isNew) ownersOfName.emplace_back();
      ownersOfName[entry->second].push_back(set);
      namesOfSet[set].insert(entry->second);
    }
    ++set;
  }
}

const std::vector<NameOwnership::Set>& NameOwnership::ownersOf(Name name) {
  std::vector<Set>& owners = ownersOfName[name];
  owners.erase(std::remove_if(owners.begin(), owners.end(), [&](Set set) { return !live[set]; }), owners.end());
  return owners;
}

bool NameOwnership::areLinked(Set a, Set b) const {
  const bool aIsSmaller = namesOfSet[a].size() < namesOfSet[b].size();
  const Names& smaller = namesOfSet[aIsSmaller ? a : b];
  const Names& larger = namesOfSet[aIsSmaller ? b : a];
  std::size_t common = 0;
  for (const Name name : smaller) {
    if (larger.contains(name) && ++common == minCommonPoints) return true;
  }
  return false;
}

std::vector<NameOwnership::Name> NameOwnership::absorb(Set survivor, Set absorbed) {
  std::vector<Name> gained;
  for (const Name name : namesOfSet[absorbed]) {
    if (!namesOfSet[survivor].insert(name).second) continue;
    ownersOfName[name].push_back(survivor);
    gained.push_back(name);
  }
  namesOfSet[absorbed] = Names();
  live[absorbed] = false;
  return gained;
}

}  // namespace ZOR::reg
