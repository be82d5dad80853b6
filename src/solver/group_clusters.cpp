#include "solver/group_clusters.h"

#include <vector>

#include "solver/fusion_search.h"

namespace ZOR::reg {

namespace {

GroupMerges findMerges(const GroupNameSets& groupNamesSets) {
  std::vector<GroupId> groupAtPlace;
  groupAtPlace.reserve(groupNamesSets.size());
  for (const auto& entry : groupNamesSets) groupAtPlace.push_back(entry.first);

  GroupMerges merges;
  FusionSearch search(groupNamesSets);
  while (const auto fusion = search.next()) {
    merges.push_back({groupAtPlace[fusion->survivor], groupAtPlace[fusion->absorbed]});
  }
  return merges;
}

/// For each group that was fused, the survivor that its cluster ends with. Taken from the last
/// fusion back: what became of a survivor is known by the time its own fusion is met.
std::map<GroupId, GroupId> lastSurvivors(const GroupMerges& merges) {
  std::map<GroupId, GroupId> lastSurvivorOf;
  for (auto merge = merges.rbegin(); merge != merges.rend(); ++merge) {
    const GroupId lastSurvivor = lastSurvivorOf.emplace(merge->survivor, merge->survivor).first->second;
    lastSurvivorOf.emplace(merge->absorbed, lastSurvivor);
  }
  return lastSurvivorOf;
}

}  // namespace

void findGroupClusters(const GroupNameSets& groupNamesSets, GroupClusters& clusters,
                       std::map<GroupId, GroupMerges>& mergeLists) {
  clusters.clear();
  mergeLists.clear();

  const GroupMerges merges = findMerges(groupNamesSets);
  const std::map<GroupId, GroupId> lastSurvivorOf = lastSurvivors(merges);

  std::map<GroupId, GroupIdSet> linked;
  for (const auto& [group, lastSurvivor] : lastSurvivorOf) linked[lastSurvivor].insert(group);
  for (auto& entry : linked) clusters.emplace(clusters.size(), std::move(entry.second));
  for (const GroupMerge& merge : merges) mergeLists[lastSurvivorOf.at(merge.survivor)].push_back(merge);
}

GroupNameSets collectGroupNames(const RefPointList& points) {
  GroupNameSets groupNamesSets;
  auto group = groupNamesSets.end();
  for (const RefPoint& point : points) {
    // The points of a group mostly come together, and their names in ascending order.
    if (group == groupNamesSets.end() || group->first != point.groupId) {
      group = groupNamesSets.try_emplace(point.groupId).first;
    }
    group->second.insert(group->second.end(), point.commonId);
  }
  return groupNamesSets;
}

bool formOneCluster(const GroupNameSets& groupNamesSets, const GroupClusters& clusters) {
  return clusters.size() == 1 && clusters.begin()->second.size() == groupNamesSets.size();
}

}  // namespace ZOR::reg
