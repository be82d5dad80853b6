#include "workbench/geometry/close_spots.h"

#include <algorithm>
#include <cstddef>

#include "workbench/geometry/target_field.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// Gathers one spot after the other. Points with a finite place are sorted along x, so that only
/// those within the tolerance are looked at; the others, which no order can place, stand behind them.
class SpotSearch {
 public:
  SpotSearch(std::vector<PlacedPoint> placed_, double tolerance_)
      : placed(std::move(placed_)), tolerance(tolerance_), isTaken(placed.size(), false) {
    const auto isFinite = [](const PlacedPoint& point) { return point.place.allFinite(); };
    const auto firstLost = std::stable_partition(placed.begin(), placed.end(), isFinite);
    std::stable_sort(placed.begin(), firstLost,
                     [](const PlacedPoint& a, const PlacedPoint& b) { return a.place.x() < b.place.x(); });
    finiteCount = static_cast<std::size_t>(firstLost - placed.begin());
  }

  std::vector<Spot> run() {
    std::vector<Spot> spots;
    for (std::size_t i = 0; i < placed.size(); ++i) {
      if (isTaken[i]) continue;
      Spot spot = spotFrom(i);
      if (spot.size() > 1) spots.push_back(std::move(spot));
    }
    return spots;
  }

 private:
  Spot spotFrom(std::size_t first) {
    members = {first};
    isTaken[first] = true;
    for (std::size_t k = 0; k < members.size(); ++k) takeNear(members[k]);
    Spot spot;
    for (const std::size_t member : members) spot.push_back(placed[member]);
    std::sort(spot.begin(), spot.end(),
              [](const PlacedPoint& a, const PlacedPoint& b) { return a.point->record.id < b.point->record.id; });
    return spot;
  }

  void takeNear(std::size_t member) {
    const bool isLost = member >= finiteCount;
    const auto isBeyond = [&](std::size_t other) {
      return std::abs(placed[other].place.x() - placed[member].place.x()) >= tolerance;
    };
    for (std::size_t i = isLost ? finiteCount : member; i-- > 0 && (isLost || !isBeyond(i));) takeIfClose(member, i);
    for (std::size_t i = isLost ? finiteCount : member + 1; i < finiteCount && !isBeyond(i); ++i) {
      takeIfClose(member, i);
    }
    for (std::size_t i = finiteCount; i < placed.size(); ++i) takeIfClose(member, i);
  }

  void takeIfClose(std::size_t member, std::size_t other) {
    if (isTaken[other] || !areClose(placed[member], placed[other], tolerance)) return;
    isTaken[other] = true;
    members.push_back(other);
  }

  std::vector<PlacedPoint> placed;
  double tolerance;
  std::size_t finiteCount = 0;
  std::vector<bool> isTaken;
  std::vector<std::size_t> members;
};

}  // namespace

std::vector<PlacedPoint> placedPoints(const SessionState& state, const std::map<GroupId, OdGeMatrix3d>& toCommon) {
  std::vector<PlacedPoint> placed;
  for (const SessionPoint& point : state.points) {
    if (toCommon.count(point.record.groupId) != 0) placed.push_back({inCommonSystem(point.record, toCommon), &point});
  }
  return placed;
}

bool areClose(const PlacedPoint& a, const PlacedPoint& b, double tolerance) {
  return !((a.place - b.place).norm() >= tolerance);
}

std::vector<Spot> closeSpots(std::vector<PlacedPoint> placed, double tolerance) {
  return SpotSearch(std::move(placed), tolerance).run();
}

}  // namespace tiepoint::workbench
