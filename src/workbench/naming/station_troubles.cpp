#include "workbench/naming/station_troubles.h"

#include <algorithm>

#include "workbench/geometry/certainty.h"
#include "workbench/geometry/links.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// A station of no more points may share no more than three.
constexpr std::size_t fewPoints = 5;
/// Fewer fit a mirror image by chance.
constexpr std::size_t minMirrored = 5;

bool hasPointsToPlace(const Station& station) { return station.shape.points.size() >= namesThatLink; }

/// No other station has enough points.
bool isAlone(GroupId group, const Stations& stations) {
  return std::none_of(stations.begin(), stations.end(),
                      [&](const auto& other) { return other.first != group && hasPointsToPlace(other.second); });
}

/// How many points each of several ways explains; 0 when there aren't several.
std::size_t ambiguousPoints(GroupId group, const SessionState& start, const Stations& stations, double reach) {
  const StationShape& shape = stations.at(group).shape;
  const std::size_t atLeast = shape.points.size() > fewPoints ? namesThatLink + 1 : namesThatLink;
  for (const auto& [other, station] : stations) {
    if (other == group) continue;
    const NamedField named = fieldOf(start, stations, {other}, {});
    const std::size_t points = pointsOfSeveralWays(named.field, shape, reach, atLeast);
    if (points > 0) return points;
  }
  return 0;
}

StationShape mirrorImage(StationShape shape) {
  for (Eigen::Vector3d& point : shape.points) point.x() = -point.x();
  return shape;
}

/// How many points the way explains that explains the most, `atLeast` or more; else 0.
std::size_t maxPointsLaid(const TargetField& field, const StationShape& shape, double reach, std::size_t atLeast) {
  const auto ways = alignments(field, shape, reach, atLeast, 1);
  return ways.empty() ? 0 : ways.front().size();
}

/// How many points of the station its mirror image lays onto another one; 0 when the station itself
/// lays nearly as many, as one with all targets in a plane does.
std::size_t mirroredPoints(GroupId group, const SessionState& start, const Stations& stations, double reach) {
  const StationShape& shape = stations.at(group).shape;
  for (const auto& [other, station] : stations) {
    if (other == group) continue;
    const NamedField named = fieldOf(start, stations, {other}, {});
    const std::size_t points = maxPointsLaid(named.field, mirrorImage(shape), reach, minMirrored);
    if (points > 0 && maxPointsLaid(named.field, shape, reach, points - 1) == 0) return points;
  }
  return 0;
}

bool hasEqualTriangle(GroupId group, const Stations& stations, double tolerance) {
  const StationShape& shape = stations.at(group).shape;
  return std::any_of(stations.begin(), stations.end(), [&](const auto& other) {
    return other.first != group && countEqualPairs(shape.triangles, other.second.shape.triangles, tolerance, 1) > 0;
  });
}

bool isInThreePointLink(GroupId group, const PairLinks& pairs) {
  return std::any_of(pairs.links.begin(), pairs.links.end(), [&](const PairLink& link) {
    return (link.first == group || link.second == group) && link.shared.size() <= namesThatLink;
  });
}

}  // namespace

UnplacedStation ambiguousStation(GroupId group, const SessionState& start, const Stations& stations,
                                 std::size_t points) {
  UnplacedStation unplaced{group, StationTrouble::ambiguous, points, 0.0};
  const NamesByGroup names = namesByGroup(start);
  for (const auto& [other, station] : stations) {
    if (other != group) unplaced.sharedNames = std::max(unplaced.sharedNames, countSharedNames(names, group, other));
  }
  return unplaced;
}

UnplacedStation troubleOf(GroupId group, const SessionState& start, const Stations& stations, const PairLinks& pairs,
                          const NamingLimits& limits) {
  if (!hasPointsToPlace(stations.at(group))) return {group, StationTrouble::tooFewPoints, 0, 0.0};
  if (isAlone(group, stations)) return {group, StationTrouble::alone, 0, 0.0};
  const std::size_t mirrored = mirroredPoints(group, start, stations, limits.reach());
  if (mirrored > 0) return {group, StationTrouble::mirrored, mirrored, 0.0};
  const std::size_t ambiguous = ambiguousPoints(group, start, stations, limits.reach());
  if (ambiguous > 0) return ambiguousStation(group, start, stations, ambiguous);
  if (isInThreePointLink(group, pairs)) return {group, StationTrouble::threePoints, 0, 0.0};
  const auto above = pairs.aboveLimit.find(group);
  if (above != pairs.aboveLimit.end()) return {group, StationTrouble::aboveLimit, 0, above->second};
  const bool hasEqual = hasEqualTriangle(group, stations, limits.side);
  return {group, hasEqual ? StationTrouble::contradiction : StationTrouble::noEqualTriangle, 0, 0.0};
}

}  // namespace tiepoint::workbench
