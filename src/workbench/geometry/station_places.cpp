#include "workbench/geometry/station_places.h"

#include <Eigen/Geometry>

namespace tiepoint::workbench {

namespace {

/// How far outside of its targets' box an instrument may stand, as a share of the box's diagonal.
constexpr double shareOutside = 0.25;

}  // namespace

bool originIsAmongItsPoints(const SessionState& state, ZOR::reg::GroupId group) {
  Eigen::AlignedBox3d box;
  for (const SessionPoint& point : state.points) {
    if (point.record.groupId != group) continue;
    const Eigen::Vector3d position(point.record.position.x, point.record.position.y, point.record.position.z);
    if (position.allFinite()) box.extend(position);
  }
  if (box.isEmpty()) return false;
  return box.exteriorDistance(Eigen::Vector3d::Zero().eval()) <= shareOutside * box.diagonal().norm();
}

}  // namespace tiepoint::workbench
