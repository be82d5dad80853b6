#include "matching/match_by_distance.h"

#include <algorithm>
#include <vector>

#include "matching/row_clusters.h"

namespace ZOR::reg {

namespace {

using Candidates = std::vector<RefPoint>;
using Spot = std::vector<std::uint64_t>;

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

/// The names on a spot, and how many of its points have none.
struct SpotNames {
  std::set<CommonPointId> binding;
  std::set<CommonPointId> all;
  std::size_t unnamed = 0;
};

SpotNames namesOn(const Spot& spot, const Candidates& candidates) {
  SpotNames names;
  for (std::uint64_t row : spot) {
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

void joinOneName(const Spot& spot, const Candidates& candidates, CommonPointId name, NamingChanges& changes) {
  for (std::uint64_t row : spot) {
    if (!isBinding(candidates[row])) changes.existingAssignments.emplace(candidates[row].id, name);
  }
}

void nameAnew(const Spot& spot, const Candidates& candidates, std::uint64_t label, NamingChanges& changes) {
  for (std::uint64_t row : spot) changes.newAssignments.emplace(candidates[row].id, label);
}

}  // namespace

void matchByDistance(const RefPointList& points, const GroupTransforms& groupTransforms, double tolerance,
                     NamingChanges& changes) {
  changes.clear();
  if (groupTransforms.empty()) return;
  const Candidates candidates = registeredPoints(points, groupTransforms);
  if (std::all_of(candidates.begin(), candidates.end(), isBinding)) return;

  RowClusters spots;
  clusterRows(registeredPositions(candidates, groupTransforms), tolerance, spots);
  std::uint64_t label = 0;
  for (const Spot& spot : spots) {
    const SpotNames names = namesOn(spot, candidates);
    if (names.binding.size() > 1) {
      changes.clear();
      return;
    }
    // A spot whose points all have a name stays as it is, also with several automatic ones on it.
    if (names.unnamed == 0) continue;
    if (names.all.size() == 1) {
      joinOneName(spot, candidates, *names.all.begin(), changes);
    } else {
      nameAnew(spot, candidates, label++, changes);
    }
  }
}

}  // namespace ZOR::reg
