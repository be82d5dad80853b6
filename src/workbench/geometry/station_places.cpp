#include "workbench/geometry/station_places.h"

#include <Eigen/Geometry>
#include <map>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// How far outside of its targets' box an instrument may stand, as a share of the box's diagonal.
constexpr double shareOutside = 0.25;

/// Of the groups that have a finite point.
std::map<GroupId, Eigen::AlignedBox3d> boxesOf(const SessionState& state) {
  std::map<GroupId, Eigen::AlignedBox3d> boxes;
  for (const SessionPoint& point : state.points) {
    const Eigen::Vector3d position(point.record.position.x, point.record.position.y, point.record.position.z);
    if (position.allFinite()) boxes[point.record.groupId].extend(position);
  }
  return boxes;
}

}  // namespace

GroupIdSet groupsAroundTheirOrigin(const SessionState& state) {
  GroupIdSet groups;
  for (const auto& [group, box] : boxesOf(state)) {
    const double outside = box.exteriorDistance(Eigen::Vector3d::Zero().eval());
    if (outside <= shareOutside * box.diagonal().norm()) groups.insert(groups.end(), group);
  }
  return groups;
}

}  // namespace tiepoint::workbench
