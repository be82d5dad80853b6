#include "workbench/geometry/mismatches.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// Feet are the unit nearest to metres: 3.28 times. No measurement is off by as much.
constexpr double smallestUnitRatio = 3.0;
/// The rigid fit is that much worse than the mirrored one. What noise makes of targets in a plane is
/// far from it.
constexpr double mirroredIsBetterBy = 10.0;
/// Of the targets' spread: 2 mm of 20 m. Targets that lie nearer to a plane have no handedness worth
/// speaking of.
constexpr double smallestMisfit = 1e-4;

using Targets = std::map<CommonPointId, Eigen::Vector3d>;
using GroupPair = std::pair<GroupId, GroupId>;

/// The targets in use of each group. Of several points of one name the last counts, as in a fit.
std::map<GroupId, Targets> targetsInUse(const SessionState& state) {
  std::map<GroupId, Targets> targets;
  for (const SessionPoint& point : state.points) {
    const OdGePoint3d& p = point.record.position;
    if (point.record.active) targets[point.record.groupId][point.record.commonId] = {p.x, p.y, p.z};
  }
  return targets;
}

/// Each group with its nearest neighbour by shared targets, every pair once, the lower id first.
std::set<GroupPair> neighbours(const std::map<GroupId, Targets>& targets) {
  std::map<CommonPointId, std::vector<GroupId>> groupsOf;
  for (const auto& [group, points] : targets) {
    for (const auto& [id, position] : points) groupsOf[id].push_back(group);
  }
  std::set<GroupPair> pairs;
  for (const auto& [group, points] : targets) {
    std::map<GroupId, std::size_t> shared;
    for (const auto& [id, position] : points) {
      for (const GroupId other : groupsOf[id]) ++shared[other];
    }
    shared.erase(group);
    const auto most = std::max_element(shared.begin(), shared.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    if (most != shared.end()) pairs.insert(std::minmax(group, most->first));
  }
  return pairs;
}

/// The shared targets as either group has them, about their middle, one a column.
struct SharedTargets {
  Eigen::Matrix3Xd first;
  Eigen::Matrix3Xd second;
};

Eigen::Matrix3Xd centred(const std::vector<Eigen::Vector3d>& points) {
  Eigen::Matrix3Xd columns(3, static_cast<Eigen::Index>(points.size()));
  for (std::size_t i = 0; i < points.size(); ++i) columns.col(static_cast<Eigen::Index>(i)) = points[i];
  return columns.colwise() - columns.rowwise().mean().eval();
}

SharedTargets sharedTargets(const Targets& first, const Targets& second) {
  std::vector<Eigen::Vector3d> inFirst, inSecond;
  for (const auto& [id, position] : first) {
    const auto same = second.find(id);
    if (same == second.end()) continue;
    inFirst.push_back(position);
    inSecond.push_back(same->second);
  }
  return {centred(inFirst), centred(inSecond)};
}

/// How many times as far apart the targets lie in the second; nothing where that means nothing.
std::optional<double> spreadRatio(const SharedTargets& shared) {
  const double ratio = shared.second.norm() / shared.first.norm();
  return std::isfinite(ratio) && ratio > 0.0 ? std::optional<double>(ratio) : std::nullopt;
}

/// From the singular values of the two sets' covariance follow the residuals of the best fit without
/// and with a reflection (Umeyama, 1991).
bool isMirrored(const SharedTargets& shared) {
  const Eigen::Matrix3d covariance = shared.second * shared.first.transpose();
  if (covariance.determinant() >= 0.0) return false;
  const Eigen::Vector3d values = Eigen::JacobiSVD<Eigen::Matrix3d>(covariance).singularValues();
  const double squares = shared.first.squaredNorm() + shared.second.squaredNorm();
  const double mirrored = std::sqrt(std::max(0.0, squares - 2.0 * values.sum()));
  const double rigid = std::sqrt(std::max(0.0, squares - 2.0 * (values(0) + values(1) - values(2))));
  return rigid > mirroredIsBetterBy * mirrored && rigid > smallestMisfit * std::sqrt(squares);
}

}  // namespace

std::vector<Finding> mismatches(const SessionState& state) {
  const std::map<GroupId, Targets> targets = targetsInUse(state);
  std::vector<Finding> found;
  for (const auto& [one, two] : neighbours(targets)) {
    const SharedTargets shared = sharedTargets(targets.at(one), targets.at(two));
    const auto ratio = spreadRatio(shared);
    if (!ratio) continue;
    const double times = std::max(*ratio, 1.0 / *ratio);
    const bool isOtherUnit = times >= smallestUnitRatio;
    if (!isOtherUnit && !isMirrored(shared)) continue;
    Finding finding{isOtherUnit ? FindingKind::otherUnit : FindingKind::mirrorImages};
    finding.groups = {state.group(one).name, state.group(two).name};
    finding.value = times;
    // The wider of the two, by its index.
    finding.count = *ratio > 1.0 ? 1 : 0;
    found.push_back(std::move(finding));
  }
  return found;
}

}  // namespace tiepoint::workbench
