#include "workbench/geometry/close_points.h"

#include <algorithm>
#include <cstddef>

#include "workbench/geometry/target_field.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// Gathers one cluster after the other. Points with a finite position are sorted along x, so that only
/// those within the tolerance are looked at; the others, which have no order, stand behind them.
class ClusterSearch {
 public:
  ClusterSearch(std::vector<PlacedPoint> placed_, double tolerance_)
      : placed(std::move(placed_)), tolerance(tolerance_), isTaken(placed.size(), false) {
    const auto isFinite = [](const PlacedPoint& point) { return point.position.allFinite(); };
    const auto firstLost = std::stable_partition(placed.begin(), placed.end(), isFinite);
    std::stable_sort(placed.begin(), firstLost,
                     [](const PlacedPoint& a, const PlacedPoint& b) { return a.position.x() < b.position.x(); });
    finiteCount = static_cast<std::size_t>(firstLost - placed.begin());
  }

  std::vector<PointCluster> run() {
    std::vector<PointCluster> clusters;
    for (std::size_t i = 0; i < placed.size(); ++i) {
      if (isTaken[i]) continue;
      PointCluster cluster = clusterFrom(i);
      if (cluster.size() > 1) clusters.push_back(std::move(cluster));
    }
    return clusters;
  }

 private:
  PointCluster clusterFrom(std::size_t first) {
    members = {first};
    isTaken[first] = true;
    for (std::size_t k = 0; k < members.size(); ++k) addNeighbours(members[k]);
    PointCluster cluster;
    for (const std::size_t member : members) cluster.push_back(placed[member]);
    std::sort(cluster.begin(), cluster.end(),
              [](const PlacedPoint& a, const PlacedPoint& b) { return a.point->record.id < b.point->record.id; });
    return cluster;
  }

  void addNeighbours(std::size_t member) {
    const bool isLost = member >= finiteCount;
    const auto isBeyond = [&](std::size_t other) {
      return std::abs(placed[other].position.x() - placed[member].position.x()) >= tolerance;
    };
    for (std::size_t i = isLost ? finiteCount : member; i-- > 0 && (isLost || !isBeyond(i));) addIfClose(member, i);
    for (std::size_t i = isLost ? finiteCount : member + 1; i < finiteCount && !isBeyond(i); ++i) {
      addIfClose(member, i);
    }
    for (std::size_t i = finiteCount; i < placed.size(); ++i) addIfClose(member, i);
  }

  void addIfClose(std::size_t member, std::size_t other) {
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
  return !((a.position - b.position).norm() >= tolerance);
}

std::vector<PointCluster> closePointClusters(std::vector<PlacedPoint> placed, double tolerance) {
  return ClusterSearch(std::move(placed), tolerance).run();
}

}  // namespace tiepoint::workbench
