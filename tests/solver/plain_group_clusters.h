// The clusters by a scan that starts again after each fusion: slow, and plain enough to be believed.
#pragma once

#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

#include "solver/group_clusters.h"

namespace tiepoint::testing {

inline bool shareThreeNames(const ZOR::reg::CommonPointIdSet& a, const ZOR::reg::CommonPointIdSet& b) {
  std::vector<ZOR::reg::CommonPointId> common;
  std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(common));
  return common.size() >= 3;
}

inline std::optional<ZOR::reg::GroupMerge> firstLinkedPair(const ZOR::reg::GroupNameSets& pool) {
  for (const auto& [a, namesOfA] : pool) {
    for (const auto& [b, namesOfB] : pool) {
      if (a != b && shareThreeNames(namesOfA, namesOfB)) return ZOR::reg::GroupMerge{a, b};
    }
  }
  return std::nullopt;
}

inline void findGroupClustersPlainly(const ZOR::reg::GroupNameSets& groupNamesSets, ZOR::reg::GroupClusters& clusters,
                                     std::map<ZOR::reg::GroupId, ZOR::reg::GroupMerges>& mergeLists) {
  clusters.clear();
  mergeLists.clear();
  ZOR::reg::GroupNameSets pool = groupNamesSets;
  std::map<ZOR::reg::GroupId, ZOR::reg::GroupIdSet> linked;
  ZOR::reg::GroupMerges merges;

  while (const auto pair = firstLinkedPair(pool)) {
    const auto [a, b] = *pair;
    merges.push_back(*pair);
    pool[a].insert(pool[b].begin(), pool[b].end());
    pool.erase(b);
    linked[a].insert(a);
    if (linked.count(b) == 0) {
      linked[a].insert(b);
    } else {
      linked[a].insert(linked[b].begin(), linked[b].end());
      linked.erase(b);
    }
  }

  std::map<ZOR::reg::GroupId, ZOR::reg::GroupId> keyOf;
  for (const auto& [key, members] : linked) {
    clusters.emplace(clusters.size(), members);
    for (const ZOR::reg::GroupId member : members) keyOf[member] = key;
  }
  for (const ZOR::reg::GroupMerge& merge : merges) mergeLists[keyOf[merge.survivor]].push_back(merge);
}

}  // namespace tiepoint::testing
