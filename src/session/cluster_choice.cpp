// The clusters that a refused registration found.
#include "session/multi_registrator.h"

namespace ZOR::reg {

void MultiRegistrator::getGroupClusters(std::map<std::uint64_t, GroupIdSet>& clusters) { clusters = groupClusters; }

void MultiRegistrator::keepGroupCluster(std::uint64_t cluster, RefPointIdSet& excludedPoints,
                                        GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  if (groupClusters.count(cluster) == 0) return;
  GroupIdSet others;
  for (const auto& [number, groups] : groupClusters) {
    if (number != cluster) others.insert(groups.begin(), groups.end());
  }
  excludeGroups(others, excludedPoints, inactiveGroups, inactivePoints);
}

}  // namespace ZOR::reg
