#include "workbench/naming/point_reasons.h"

#include <Eigen/Geometry>
#include <algorithm>
#include <string>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// What spans fewer times what two measurements of a target lie apart looks alike in many ways.
constexpr double narrowest = 10.0;
/// No instrument measures so many times its noise.
constexpr double widest = 1e6;

bool hasTwins(const std::vector<Eigen::Vector3d>& points, double side) {
  for (auto one = points.begin(); one != points.end(); ++one) {
    const auto isNear = [&](const Eigen::Vector3d& other) { return (*one - other).norm() < side; };
    if (std::any_of(std::next(one), points.end(), isNear)) return true;
  }
  return false;
}

/// The diagonal of the box that holds the points.
double spanOf(const std::vector<Eigen::Vector3d>& points) {
  Eigen::AlignedBox3d box;
  for (const Eigen::Vector3d& point : points) box.extend(point);
  return box.isEmpty() ? 0.0 : box.diagonal().norm();
}

/// Nothing without groups.
std::vector<Finding> noteOf(FindingKind kind, const SessionState& state, const GroupIdSet& groups, double limit = 0.0) {
  if (groups.empty()) return {};
  Finding finding{kind, Severity::note};
  for (const GroupId group : groups) finding.groups.push_back(state.group(group).name);
  finding.limit = limit;
  return {finding};
}

}  // namespace

std::vector<Finding> notFiniteReasons(const SessionState& state) {
  GroupIdSet groups;
  for (const SessionPoint& point : state.points) {
    if (!hasFinitePosition(point.record)) groups.insert(point.record.groupId);
  }
  return noteOf(FindingKind::notFinite, state, groups);
}

std::vector<Finding> twinReasons(const SessionState& state, const Stations& stations, double side) {
  GroupIdSet groups;
  for (const auto& [group, station] : stations) {
    if (hasTwins(station.shape.points, side)) groups.insert(group);
  }
  return noteOf(FindingKind::twinPoints, state, groups, side);
}

std::vector<Finding> spanReasons(const SessionState& state, const Stations& stations, const NamingLimits& limits) {
  GroupIdSet narrow, wide;
  for (const auto& [group, station] : stations) {
    const double span = spanOf(station.shape.points);
    if (span > widest * limits.discrepancy) wide.insert(group);
    if (span > 0.0 && span < narrowest * limits.reach()) narrow.insert(group);
  }
  std::vector<Finding> reasons = noteOf(FindingKind::nearOneAnother, state, narrow, limits.discrepancy);
  for (Finding& far : noteOf(FindingKind::farApart, state, wide, limits.discrepancy)) reasons.push_back(std::move(far));
  return reasons;
}

}  // namespace tiepoint::workbench
