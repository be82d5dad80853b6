// Which groups are connected through the names that they share, and in which order they fuse.
#pragma once

#include <list>
#include <map>

#include "records/tables.h"
#include "solver/group_names.h"

namespace ZOR::reg {

/// `absorbed` was fused into `survivor`.
struct GroupMerge {
  GroupId survivor = 0;
  GroupId absorbed = 0;
};

using GroupMerges = std::list<GroupMerge>;

/// Fuses, again and again, the pair with the smallest first and then the smallest second id among
/// the pairs that share at least minCommonPoints names; a fused group owns the union of the names.
/// `clusters` receives the sets of linked groups, numbered in ascending order of their smallest
/// id; a group that links to none is in no cluster. `mergeLists` receives, under the survivor that
/// ends each cluster, its fusions in order.
void findGroupClusters(const GroupNameSets& groupNamesSets, GroupClusters& clusters,
                       std::map<GroupId, GroupMerges>& mergeLists);

/// The names that each group has among `points`.
GroupNameSets collectGroupNames(const RefPointList& points);

/// There is one cluster and it holds every group.
bool formOneCluster(const GroupNameSets& groupNamesSets, const GroupClusters& clusters);

}  // namespace ZOR::reg
