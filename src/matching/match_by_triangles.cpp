#include "matching/match_by_triangles.h"

#include <algorithm>
#include <set>

#include "matching/row_clusters.h"
#include "matching/triangle_table.h"

namespace ZOR::reg {

namespace {

/// Two triangles have six corners.
constexpr std::size_t minPoints = 6;
constexpr std::size_t minGroups = 2;

bool canStart(const RefPointList& points) {
  if (points.size() < minPoints) return false;
  std::set<GroupId> groups;
  bool anyUnnamed = false;
  for (const RefPoint& point : points) {
    groups.insert(point.groupId);
    anyUnnamed = anyUnnamed || !point.named;
  }
  return groups.size() >= minGroups && anyUnnamed;
}

/// The corners of equal triangles, opposite the shortest, the middle and the longest side.
bool uniteCorners(const std::vector<std::uint64_t>& equalTriangles, const TriangleTable& triangles,
                  NamingState& state) {
  for (std::size_t corner = 0; corner < 3; ++corner) {
    std::list<RefPointId> members;
    for (std::uint64_t triangle : equalTriangles) members.push_back(triangles.corners[triangle][corner]);
    if (!state.uniteCorrespondence(members)) return false;
  }
  return true;
}

}  // namespace

void matchByTriangles(const RefPointList& points, double sideTolerance, double minSideDifference,
                      NamingChanges& changes) {
  changes.clear();
  if (!canStart(points)) return;
  const TriangleTable triangles = buildTriangles(points, minSideDifference);
  RowClusters clusters;
  clusterRowsByTag(triangles.sides, triangles.groups, sideTolerance, clusters);

  NamingState state(points);
  for (const auto& equalTriangles : clusters) {
    if (!uniteCorners(equalTriangles, triangles, state)) return;
  }
  state.collectChanges(changes);
}

}  // namespace ZOR::reg
