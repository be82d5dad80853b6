#include "workbench/cli/naming/station_troubles.h"

#include <algorithm>

#include "workbench/cli/links.h"
#include "workbench/cli/naming/certainty.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

/// A station of no more points may share no more than three.
constexpr std::size_t fewPoints = 5;

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

UnplacedStation troubleOf(GroupId group, const SessionState& start, const Stations& stations, const PairLinks& pairs,
                          const NamingLimits& limits) {
  UnplacedStation unplaced;
  unplaced.group = group;
  if (stations.at(group).shape.points.size() < namesThatLink) {
    unplaced.trouble = StationTrouble::tooFewPoints;
  } else if (const std::size_t points = ambiguousPoints(group, start, stations, limits.reach())) {
    unplaced.trouble = StationTrouble::ambiguous;
    unplaced.points = points;
  } else if (isInThreePointLink(group, pairs)) {
    unplaced.trouble = StationTrouble::threePoints;
  } else if (pairs.aboveLimit.count(group) != 0) {
    unplaced.trouble = StationTrouble::aboveLimit;
    unplaced.discrepancy = pairs.aboveLimit.at(group);
  } else if (hasEqualTriangle(group, stations, limits.side)) {
    unplaced.trouble = StationTrouble::contradiction;
  }
  return unplaced;
}

}  // namespace tiepoint::workbench::cli
