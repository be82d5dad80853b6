#include "workbench/geometry/certainty.h"

#include <algorithm>
#include <cmath>

#include "workbench/geometry/links.h"

namespace tiepoint::workbench {

namespace {

/// The share of chance fits tolerated among fits of three points.
constexpr double toleratedChance = 0.01;
/// Placements of a station that are considered.
constexpr std::size_t maxWays = 16;
/// Pairs of triangles that suffice to estimate their density.
constexpr std::size_t enoughSeen = 16;
/// How often the bound in which they are counted may be doubled.
constexpr int maxDoublings = 5;
constexpr double pi = 3.14159265358979323846;

/// Three points within the full reach of a target each are found by chance among any few dozen.
double reachFor(std::size_t points, double reach) { return points <= namesThatLink ? reach / 4.0 : reach; }

/// How far the sides between the placed points differ in the two systems: root of the sum of squares.
double sideDifference(const TargetField& field, const StationShape& station, const Placement& placement) {
  double squares = 0.0;
  for (auto a = placement.begin(); a != placement.end(); ++a) {
    for (auto b = std::next(a); b != placement.end(); ++b) {
      const double here = (station.points[a->first] - station.points[b->first]).norm();
      const double there = (field.targets[a->second] - field.targets[b->second]).norm();
      squares += (here - there) * (here - there);
    }
  }
  return std::sqrt(squares);
}

bool isPlaced(const Triangle& triangle, const Placement& placement) {
  return std::all_of(triangle.corners.begin(), triangle.corners.end(),
                     [&](std::uint32_t corner) { return placement.count(corner) != 0; });
}

bool holds(const Placement& placement, const StationShape& station) {
  return std::any_of(station.triangles.begin(), station.triangles.end(),
                     [&](const Triangle& triangle) { return isPlaced(triangle, placement); });
}

/// Equal triangles, each side to `wide`, without those whose corners are all placed.
std::size_t othersWithin(const TargetField& field, const StationShape& station, const Placement& own, double wide) {
  std::size_t seen = 0;
  for (const TargetField::Seen& other : field.stations) {
    forEachEqualPair(other.shape->triangles, station.triangles, wide, [&](const Triangle&, const Triangle& here) {
      if (!isPlaced(here, own)) ++seen;
      return true;
    });
  }
  return seen;
}

/// A ball of the difference's radius in the cube that was counted in.
double partOfCube(double difference, double wide) { return std::min(std::pow(difference / wide, 3) * pi / 6.0, 1.0); }

}  // namespace

double expectedByChance(const TargetField& field, const StationShape& station, const Placement& own, double reach) {
  double wide = 2.0 * reach;
  std::size_t seen = othersWithin(field, station, own, wide);
  for (int doubling = 0; doubling < maxDoublings && seen < enoughSeen; ++doubling) {
    wide *= 2.0;
    seen = othersWithin(field, station, own, wide);
  }
  return static_cast<double>(std::max(seen, enoughSeen)) * partOfCube(sideDifference(field, station, own), wide);
}

Certainty certaintyOf(const TargetField& field, const StationShape& station, const Placement& own, double reach,
                      double tries, const PlacementTest& isPossible) {
  if (!holds(own, station)) return Certainty::loose;
  const auto ways = alignments(field, station, reachFor(own.size(), reach), own.size(), maxWays);
  const auto isRival = [&](const Placement& way) { return areRivals(own, way) && isPossible(way); };
  if (std::any_of(ways.begin(), ways.end(), isRival)) return Certainty::rivalled;
  if (own.size() > namesThatLink) return Certainty::certain;
  return expectedByChance(field, station, own, reach) * tries > toleratedChance ? Certainty::maybeChance
                                                                                : Certainty::certain;
}

std::size_t pointsOfSeveralWays(const TargetField& field, const StationShape& station, double reach,
                                std::size_t atLeast) {
  const auto ways = alignments(field, station, reachFor(atLeast, reach), atLeast, 2);
  return ways.size() >= 2 && ways[0].size() == ways[1].size() ? ways[0].size() : 0;
}

}  // namespace tiepoint::workbench
