#include "workbench/cli/geometry_warnings.h"

#include <fmt/format.h>

#include <Eigen/Dense>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include "workbench/cli/exit_status.h"
#include "workbench/report/plain_text.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

/// Points spread less than this part of their length to the side of a line count as lying on it: at
/// 20 m that is 2 cm, and a millimetre of noise turns the station by degrees.
constexpr double thinnestSpread = 1e-3;

bool isFinite(const OdGePoint3d& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

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

/// A warning stays one line.
constexpr std::size_t mostNames = 5;

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

}  // namespace

void requireFiniteCoordinates(const SessionState& state) {
  for (const SessionPoint& point : state.points) {
    if (!point.record.active || isFinite(point.record.position)) continue;
    const std::string& group = state.group(point.record.groupId).name;
    throw CommandError(ExitStatus::refused,
                       fmt::format("point {} of {} has a coordinate that isn't a finite number; correct it, or leave "
                                   "it out: --exclude {}:{}",
                                   point.name, group, group, point.name));
  }
}

void warnOfGeometry(const SessionState& state, Warnings& warnings) {
  std::map<GroupId, std::vector<OdGePoint3d>> inUse;
  std::map<GroupId, std::size_t> oddWeights;
  for (const SessionPoint& point : state.points) {
    if (!point.record.active) continue;
    inUse[point.record.groupId].push_back(point.record.position);
    if (!(point.record.weight >= 0.0 && point.record.weight <= 1.0)) ++oddWeights[point.record.groupId];
  }
  for (const auto& [group, names] : namesInUseTwice(state)) {
    warnings.add(
        fmt::format("{} has {} more than once; the last of a name is what is fitted: take the others out of "
                    "the file",
                    state.group(group).name, joined({names.begin(), names.end()}, mostNames)));
  }
  for (const auto& [group, points] : inUse) {
    if (!lieOnOneLine(points)) continue;
    warnings.add(fmt::format("the points in use of {} lie on one line: nothing holds its rotation about that line",
                             state.group(group).name));
  }
  for (const auto& [group, count] : oddWeights) {
    warnings.add(fmt::format("{} point{} in use of {} ha{} a weight outside 0 to 1; one below 0 takes part in no fit",
                             count, count == 1 ? "" : "s", state.group(group).name, count == 1 ? "s" : "ve"));
  }
}

}  // namespace tiepoint::workbench::cli
