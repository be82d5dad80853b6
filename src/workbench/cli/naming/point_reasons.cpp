#include "workbench/cli/naming/point_reasons.h"

#include <fmt/format.h>

#include <Eigen/Geometry>
#include <algorithm>
#include <cmath>
#include <string>

#include "workbench/report/plain_text.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

/// What spans fewer times what two measurements of a target lie apart looks alike in many ways.
constexpr double narrowest = 10.0;
/// No instrument measures so many times its noise.
constexpr double widest = 1e6;

bool isFinite(const OdGePoint3d& point) {
  return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

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

std::string namesOf(const SessionState& state, const GroupIdSet& groups) {
  std::vector<std::string> names;
  for (const GroupId group : groups) names.push_back(state.group(group).name);
  return joined(names);
}

}  // namespace

std::vector<MatchReason> notFiniteReasons(const SessionState& state) {
  GroupIdSet groups;
  for (const SessionPoint& point : state.points) {
    if (!isFinite(point.record.position)) groups.insert(point.record.groupId);
  }
  if (groups.empty()) return {};
  return {{"not-finite", fmt::format("{}: points with coordinates that aren't finite numbers; while they are there, no "
                                     "point is named because it lies on the spot of another",
                                     namesOf(state, groups))}};
}

std::vector<MatchReason> twinReasons(const SessionState& state, const Stations& stations, double side) {
  GroupIdSet groups;
  for (const auto& [group, station] : stations) {
    if (hasTwins(station.shape.points, side)) groups.insert(group);
  }
  if (groups.empty()) return {};
  return {{"twin-points", fmt::format("{}: two points lie within {:g} of one another, and triangles with the one can't "
                                      "be told from triangles with the other; keep one of the two",
                                      namesOf(state, groups), side)}};
}

std::vector<MatchReason> spanReasons(const SessionState& state, const Stations& stations, const NamingLimits& limits) {
  GroupIdSet narrow, wide;
  for (const auto& [group, station] : stations) {
    const double span = spanOf(station.shape.points);
    if (span > widest * limits.discrepancy) wide.insert(group);
    if (span > 0.0 && span < narrowest * limits.reach()) narrow.insert(group);
  }
  std::vector<MatchReason> reasons;
  const auto add = [&](const GroupIdSet& groups, const char* how) {
    if (groups.empty()) return;
    reasons.push_back(
        {"unit", fmt::format("{}: the points lie too {} for a limit of {:g} drawing units (--match-limit); "
                             "is their unit the one that --unit says?",
                             namesOf(state, groups), how, limits.discrepancy)});
  };
  add(narrow, "near one another");
  add(wide, "far apart");
  return reasons;
}

}  // namespace tiepoint::workbench::cli
