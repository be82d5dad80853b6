#include "matching/match_by_distance.h"

#include <algorithm>
#include <vector>

#include "matching/row_clusters.h"

namespace ZOR::reg {

namespace {

using Candidates = std::vector<RefPoint>;
using Cluster = std::vector<std::uint64_t>;

bool isBinding(const RefPoint& point) { return point.named && !point.autoNamed; }

Candidates registeredPoints(const RefPointList& points, const GroupTransforms& transforms) {
  Candidates candidates;
  for (const RefPoint& point : points) {
    if (transforms.count(point.groupId) != 0) candidates.push_back(point);
  }
  return candidates;
}

RowTable registeredPositions(const Candidates& candidates, const GroupTransforms& transforms) {
  RowTable rows(static_cast<Eigen::Index>(candidates.size()), 3);
  Eigen::Index row = 0;
  for (const RefPoint& point : candidates) {
    const OdGePoint3d p = apply(transforms.at(point.groupId), point.position);
    rows.row(row++) << p.x, p.y, p.z;
  }
  return rows;
}

/// The names in a cluster, and how many of its points have none.
struct ClusterNames {
  std::set<CommonPointId> binding;
  std::set<CommonPointId> all;
  std::size_t unnamed = 0;
};

ClusterNames namesIn(const Cluster& cluster, const Candidates& candidates) {
  ClusterNames names;
  for (std::uint64_t row : cluster) {
    const RefPoint& point = candidates[row];
    if (!point.named) {
      ++names.unnamed;
      continue;
    }
    names.all.insert(point.commonId);
    if (isBinding(point)) names.binding.insert(point.commonId);
  }
  return names;
}

void assignName(const Cluster& cluster, const Candidates& candidates, CommonPointId name, NamingChanges& changes) {
  for (std::uint64_t row : cluster) {
    if (!isBinding(candidates[row])) changes.existingAssignments.emplace(candidates[row].id, name);
  }
}

void assignLabel(const Cluster& cluster, const Candidates& candidates, std::uint64_t label, NamingChanges& changes) {
  for (std::uint64_t row : cluster) changes.newAssignments.emplace(candidates[row].id, label);
}

}  // namespace

void matchByDistance(const RefPointList& points, const GroupTransforms& groupTransforms, double tolerance,
                     NamingChanges& changes) {
  changes.clear();
  if (groupTransforms.empty()) return;
  const Candidates candidates = registeredPoints(points, groupTransforms);
  if (std::all_of(candidates.begin(), candidates.end(), isBinding)) return;

  RowClusters clusters;
  clusterRows(registeredPositions(candidates, groupTransforms), tolerance, clusters);
  std::uint64_t label = 0;
  for (const Cluster& cluster : clusters) {
    const ClusterNames names = namesIn(cluster, candidates);
    if (names.binding.size() > 1) {
      changes.clear();
      return;
    }
    // A cluster whose points all have a name stays as it is, also with several automatic ones in it.
    if (names.unnamed == 0) continue;
    if (names.all.size() == 1) {
      assignName(cluster, candidates, *names.all.begin(), changes);
    } else {
      assignLabel(cluster, candidates, label++, changes);
    }
  }
}

}  // namespace ZOR::reg
