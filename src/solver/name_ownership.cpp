#include "solver/name_ownership.h"

#include <algorithm>
#include <boost/unordered/unordered_flat_map.hpp>
#include <limits>

namespace ZOR::reg {

namespace {

/// Numbers ids from 0 in the order of their first use. A session hands out its ids nearly without
/// gaps, and for such a plain table does; others are hashed.
class NameNumbers {
 public:
  using Name = NameOwnership::Name;

  NameNumbers(std::size_t useCount, CommonPointId largestId) {
    if (largestId / roomPerUse < useCount) {
      table.assign(static_cast<std::size_t>(largestId) + 1, unused);
    } else {
      hashed.reserve(useCount);
    }
  }

  Name numberOf(CommonPointId id) {
    Name& number = table.empty() ? hashed.try_emplace(id, unused).first->second : table[id];
    if (number == unused) number = numbered++;
    return number;
  }

  Name count() const { return numbered; }

 private:
  static constexpr std::size_t roomPerUse = 4;
  static constexpr Name unused = std::numeric_limits<Name>::max();

  std::vector<Name> table;
  boost::unordered_flat_map<CommonPointId, Name> hashed;
  Name numbered = 0;
};

/// Every use of a name, by its number, set after set.
struct NameUses {
  explicit NameUses(const GroupNameSets& groupNamesSets) {
    std::size_t useCount = 0;
    CommonPointId largestId = 0;
    for (const auto& [groupId, ids] : groupNamesSets) {
      useCount += ids.size();
      if (!ids.empty()) largestId = std::max(largestId, *ids.rbegin());
    }
    names.reserve(useCount);
    NameNumbers numbers(useCount, largestId);
    for (const auto& [groupId, ids] : groupNamesSets) {
      for (const CommonPointId id : ids) names.push_back(numbers.numberOf(id));
    }
    nameCount = numbers.count();
  }

  std::vector<NameOwnership::Name> names;
  NameOwnership::Name nameCount = 0;
};

}  // namespace

NameOwnership::NameOwnership(const GroupNameSets& groupNamesSets)
    : live(groupNamesSets.size(), true), unions(groupNamesSets.size()) {
  const NameUses uses(groupNamesSets);
  const std::vector<Name> shared = layOutOwners(uses.names, uses.nameCount);

  ownNames.reserve(groupNamesSets.size());
  auto use = uses.names.begin();
  for (const auto& [groupId, ids] : groupNamesSets) {
    const auto end = use + static_cast<std::ptrdiff_t>(ids.size());
    const std::size_t first = allNames.size();
    for (; use != end; ++use) {
      const Name name = shared[*use];
      if (name == notShared) continue;
      allNames.push_back(name);
      allOwners[owners[name].first + owners[name].count++] = static_cast<Set>(ownNames.size());
    }
    std::sort(allNames.begin() + static_cast<std::ptrdiff_t>(first), allNames.end());
    ownNames.push_back({static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(allNames.size() - first)});
  }
}

/// Makes room for the owners of each name that has two or more, and numbers those names anew.
std::vector<NameOwnership::Name> NameOwnership::layOutOwners(const std::vector<Name>& uses, Name nameCount) {
  std::vector<std::uint32_t> ownerCounts(nameCount, 0);
  for (const Name name : uses) ++ownerCounts[name];

  std::vector<Name> shared(nameCount, notShared);
  std::uint32_t room = 0;
  for (Name name = 0; name < nameCount; ++name) {
    if (ownerCounts[name] < 2) continue;
    shared[name] = static_cast<Name>(owners.size());
    owners.push_back({room, 0});
    room += ownerCounts[name];
  }
  allOwners.resize(room);
  allNames.reserve(room);
  return shared;
}

boost::span<const NameOwnership::Name> NameOwnership::namesOf(Set set) const {
  if (unions[set]) return unions[set]->names;
  return {allNames.data() + ownNames[set].first, std::size_t{ownNames[set].count}};
}

bool NameOwnership::owns(Set set, Name name) const {
  if (unions[set]) return unions[set]->lookup.contains(name);
  const boost::span<const Name> names = namesOf(set);
  return std::binary_search(names.begin(), names.end(), name);
}

boost::span<const NameOwnership::Set> NameOwnership::ownersOf(Name name) {
  Slice& slice = owners[name];
  Set* const first = allOwners.data() + slice.first;
  Set* const last = std::remove_if(first, first + slice.count, [&](Set set) { return !live[set]; });
  slice.count = static_cast<std::uint32_t>(last - first);
  return {first, std::size_t{slice.count}};
}

bool NameOwnership::areLinked(Set a, Set b) const {
  const bool aIsSmaller = namesOf(a).size() < namesOf(b).size();
  const Set smaller = aIsSmaller ? a : b;
  const Set larger = aIsSmaller ? b : a;
  std::size_t common = 0;
  for (const Name name : namesOf(smaller)) {
    if (owns(larger, name) && ++common == minCommonPoints) return true;
  }
  return false;
}

std::vector<NameOwnership::Name> NameOwnership::absorb(Set survivor, Set absorbed) {
  Union& united = unionOf(survivor);
  live[absorbed] = false;
  std::vector<Name> gained;
  for (const Name name : namesOf(absorbed)) {
    if (!united.lookup.insert(name).second) continue;
    united.names.push_back(name);
    gained.push_back(name);
    addOwner(name, survivor);
  }
  unions[absorbed].reset();
  return gained;
}

NameOwnership::Union& NameOwnership::unionOf(Set set) {
  if (!unions[set]) {
    const boost::span<const Name> names = namesOf(set);
    auto united = std::make_unique<Union>();
    united->names.assign(names.begin(), names.end());
    united->lookup.insert(names.begin(), names.end());
    unions[set] = std::move(united);
  }
  return *unions[set];
}

/// To be called when one of the name's owners has been absorbed: that one makes the room.
void NameOwnership::addOwner(Name name, Set set) {
  const std::size_t count = ownersOf(name).size();
  allOwners[owners[name].first + count] = set;
  ++owners[name].count;
}

}  // namespace ZOR::reg
