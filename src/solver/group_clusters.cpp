#include "solver/group_clusters.h"

#include <limits>
#include <vector>

#include "solver/fusion_search.h"

namespace ZOR::reg {

namespace {

using Fusion = FusionSearch::Fusion;
using Index = FusionSearch::Index;

constexpr Index notFused = std::numeric_limits<Index>::max();

std::vector<Fusion> findFusions(const GroupNameSets& groupNamesSets) {
  std::vector<Fusion> fusions;
  FusionSearch search(groupNamesSets);
  while (const auto fusion = search.next()) fusions.push_back(*fusion);
  return fusions;
}

/// For each group that was fused, the survivor that its cluster ends with. Taken from the last
/// fusion back: what became of a survivor is known by the time its own fusion is met.
std::vector<Index> lastSurvivors(const std::vector<Fusion>& fusions, std::size_t groupCount) {
  std::vector<Index> lastSurvivorOf(groupCount, notFused);
  for (auto fusion = fusions.rbegin(); fusion != fusions.rend(); ++fusion) {
    Index& lastSurvivor = lastSurvivorOf[fusion->survivor];
    if (lastSurvivor == notFused) lastSurvivor = fusion->survivor;
    lastSurvivorOf[fusion->absorbed] = lastSurvivor;
  }
  return lastSurvivorOf;
}

std::vector<GroupId> groupsInOrder(const GroupNameSets& groupNamesSets) {
  std::vector<GroupId> groups;
  groups.reserve(groupNamesSets.size());
  for (const auto& entry : groupNamesSets) groups.push_back(entry.first);
  return groups;
}

}  // namespace

void findGroupClusters(const GroupNameSets& groupNamesSets, GroupClusters& clusters,
                       std::map<GroupId, GroupMerges>& mergeLists) {
  clusters.clear();
  mergeLists.clear();

  const std::vector<GroupId> groups = groupsInOrder(groupNamesSets);
  const std::vector<Fusion> fusions = findFusions(groupNamesSets);
  const std::vector<Index> lastSurvivorOf = lastSurvivors(fusions, groups.size());

  std::map<Index, GroupIdSet> linked;
  for (std::size_t index = 0; index < groups.size(); ++index) {
    if (lastSurvivorOf[index] == notFused) continue;
    GroupIdSet& members = linked[lastSurvivorOf[index]];
    members.insert(members.end(), groups[index]);
  }
  for (auto& entry : linked) clusters.emplace(clusters.size(), std::move(entry.second));
  for (const Fusion& fusion : fusions) {
    mergeLists[groups[lastSurvivorOf[fusion.survivor]]].push_back({groups[fusion.survivor], groups[fusion.absorbed]});
  }
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
