#include "solver/solve_input.h"

#include <map>

#include "solver/point_distance.h"

namespace ZOR::reg {

namespace {

GroupIdSet activeBaseGroups(const RefPointList& sessionPoints) {
  GroupIdSet baseGroups;
  for (const RefPoint& point : sessionPoints) {
    if (point.active && point.inBase) baseGroups.insert(point.groupId);
  }
  return baseGroups;
}

/// The base points, in list order, as points of the one group that the base becomes.
RefPointList removeBase(const RefPointList& sessionPoints, GroupId baseGroup, RefPointList& others) {
  RefPointList base;
  for (const RefPoint& point : sessionPoints) {
    if (!point.active) continue;
    RefPointList& destination = point.inBase ? base : others;
    destination.push_back(point);
    if (point.inBase) destination.back().groupId = baseGroup;
  }
  return base;
}

/// One target of the base that was measured more than once.
RefPoint mergeToMean(const RefPointList& points) {
  double weightSum = 0.0;
  OdGeVector3d sum;
  for (const RefPoint& point : points) {
    weightSum += point.weight;
    sum.x += point.weight * point.position.x;
    sum.y += point.weight * point.position.y;
    sum.z += point.weight * point.position.z;
  }
  const double reciprocal = 1.0 / weightSum;

  RefPoint merged = points.front();
  merged.position = {sum.x * reciprocal, sum.y * reciprocal, sum.z * reciprocal};
  merged.weight = weightSum / static_cast<double>(points.size());
  return merged;
}

void mergeBase(const RefPointList& base, RefPointList& workingPoints, PointDiscrepancies& pointDiscrepancies) {
  std::map<CommonPointId, std::size_t> uses;
  for (const RefPoint& point : base) ++uses[point.commonId];

  std::map<CommonPointId, RefPointList> repeated;
  for (const RefPoint& point : base) {
    RefPointList& destination = uses[point.commonId] == 1 ? workingPoints : repeated[point.commonId];
    destination.push_back(point);
  }
  for (const auto& [commonId, points] : repeated) {
    const RefPoint merged = mergeToMean(points);
    workingPoints.push_back(merged);
    for (const RefPoint& point : points) pointDiscrepancies[point.id] = distance(point.position, merged.position);
  }
}

}  // namespace

void prepareSolvePoints(const RefPointList& sessionPoints, RefPointList& workingPoints,
                        PointDiscrepancies& pointDiscrepancies) {
  workingPoints.clear();
  pointDiscrepancies.clear();

  const GroupIdSet baseGroups = activeBaseGroups(sessionPoints);
  if (baseGroups.size() < 2) {
    for (const RefPoint& point : sessionPoints) {
      if (point.active) workingPoints.push_back(point);
    }
    return;
  }
  const RefPointList base = removeBase(sessionPoints, *baseGroups.begin(), workingPoints);
  mergeBase(base, workingPoints, pointDiscrepancies);
}

std::optional<GroupId> baseGroupOf(const RefPointList& workingPoints) {
  for (const RefPoint& point : workingPoints) {
    if (point.inBase) return point.groupId;
  }
  return std::nullopt;
}

RefPointIdSet basePointsOf(const RefPointList& workingPoints) {
  RefPointIdSet ids;
  for (const RefPoint& point : workingPoints) {
    if (point.inBase) ids.insert(point.id);
  }
  return ids;
}

}  // namespace ZOR::reg
