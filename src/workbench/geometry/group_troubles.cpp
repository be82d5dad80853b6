#include "workbench/geometry/group_troubles.h"

#include <Eigen/Dense>
#include <map>
#include <utility>
#include <vector>

#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// Points spread less than this part of their length to the side of a line count as lying on it: at
/// 20 m that is 2 cm, and a millimetre of noise turns the station by degrees.
constexpr double thinnestSpread = 1e-3;

bool lieOnOneLine(const std::vector<OdGePoint3d>& points) {
  Eigen::Matrix3Xd rows(3, static_cast<Eigen::Index>(points.size()));
  for (std::size_t i = 0; i < points.size(); ++i) {
    rows.col(static_cast<Eigen::Index>(i)) = Eigen::Vector3d(points[i].x, points[i].y, points[i].z);
  }
  const Eigen::Matrix3Xd centred = rows.colwise() - rows.rowwise().mean().eval();
  const Eigen::Matrix3d scatter = centred * centred.transpose();
  const Eigen::Vector3d spread =
      Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d>(scatter).eigenvalues().cwiseMax(0.0).cwiseSqrt();
  return spread(1) <= thinnestSpread * spread(2);
}

/// Of each group that has any, in the order of the list.
std::map<GroupId, std::vector<std::string>> namesInUseTwice(const SessionState& state) {
  std::map<std::pair<GroupId, CommonPointId>, std::size_t> counts;
  std::map<GroupId, std::vector<std::string>> names;
  for (const SessionPoint& point : state.points) {
    if (!point.record.active) continue;
    const std::size_t count = ++counts[{point.record.groupId, point.record.commonId}];
    if (count == 2) names[point.record.groupId].push_back(point.name);
  }
  return names;
}

Finding findingOf(FindingKind kind, const SessionState& state, GroupId group) {
  Finding finding{kind};
  finding.groups = {state.group(group).name};
  return finding;
}

}  // namespace

void requireFiniteCoordinates(const SessionState& state) {
  for (const SessionPoint& point : state.points) {
    if (!point.record.active || hasFinitePosition(point.record)) continue;
    Refusal refusal{RefusalKind::notFinite};
    refusal.name = state.group(point.record.groupId).name;
    refusal.point = point.name;
    throw Refused(std::move(refusal));
  }
}

std::vector<Finding> groupTroubles(const SessionState& state) {
  std::map<GroupId, std::vector<OdGePoint3d>> inUse;
  std::map<GroupId, std::size_t> oddWeights;
  for (const SessionPoint& point : state.points) {
    if (!point.record.active) continue;
    inUse[point.record.groupId].push_back(point.record.position);
    if (!(point.record.weight >= 0.0 && point.record.weight <= 1.0)) ++oddWeights[point.record.groupId];
  }
  std::vector<Finding> found;
  for (const auto& [group, names] : namesInUseTwice(state)) {
    found.push_back(findingOf(FindingKind::nameTwice, state, group));
    found.back().points = names;
  }
  for (const auto& [group, points] : inUse) {
    if (lieOnOneLine(points)) found.push_back(findingOf(FindingKind::pointsOnOneLine, state, group));
  }
  for (const auto& [group, count] : oddWeights) {
    found.push_back(findingOf(FindingKind::oddWeights, state, group));
    found.back().count = count;
  }
  return found;
}

}  // namespace tiepoint::workbench
