#include "workbench/report/open_motion_text.h"

#include <fmt/format.h>

#include <Eigen/Geometry>
#include <algorithm>
#include <limits>
#include <set>

#include "workbench/report/adjustment_names.h"

namespace tiepoint::workbench {

namespace {

using analysis::OpenMotion;

/// Of the extent of all targets: what the direction of an axis found numerically may be off by.
constexpr double onAxis = 1e-4;
constexpr std::size_t maxStations = 6;

const OpenMotion* openMotionOf(const Registration& registration) {
  return registration.adjustment && registration.adjustment->result.open ? &*registration.adjustment->result.open
                                                                         : nullptr;
}

/// The stations that move, in the drawing's order.
std::vector<std::string> movingStations(const Registration& registration, const OpenMotion& open) {
  std::set<std::size_t> stations{open.station};
  for (const analysis::ModeShare& share : registration.adjustment->result.network.mode) stations.insert(share.station);
  std::vector<std::string> names;
  for (const std::size_t station : stations) names.push_back(stationName(registration, station));
  return names;
}

double extentOf(const analysis::Adjustment& result) {
  Eigen::Vector3d low = Eigen::Vector3d::Constant(std::numeric_limits<double>::infinity()), high = -low;
  for (const auto& target : result.targets) {
    if (!target) continue;
    low = low.cwiseMin(target->position);
    high = high.cwiseMax(target->position);
  }
  return (high - low).norm();
}

double distanceOf(const Eigen::Vector3d& place, const OpenMotion& open) {
  return (place - open.place).cross(open.axis).norm();
}

std::vector<std::string> targetsOnAxis(const Registration& registration, const OpenMotion& open) {
  const analysis::Adjustment& result = registration.adjustment->result;
  const double limit = onAxis * extentOf(result);
  std::vector<std::string> names;
  for (std::size_t t = 0; t < result.targets.size(); ++t) {
    if (result.targets[t] && distanceOf(result.targets[t]->position, open) <= limit) {
      names.push_back(targetName(registration, t));
    }
  }
  return names;
}

/// Nothing but control holds the survey in its place, and all of it lies on the axis.
bool movesAsAWhole(const Registration& registration, const OpenMotion& open) {
  const AdjustedSurvey& survey = *registration.adjustment;
  if (survey.result.datum.kind != analysis::DatumKind::control || !open.turns) return false;
  const double limit = onAxis * extentOf(survey.result);
  for (std::size_t t = 0; t < survey.network.targets.size(); ++t) {
    const bool isControl = survey.network.targets[t].control && survey.result.targets[t];
    if (isControl && distanceOf(survey.result.targets[t]->position, open) > limit) return false;
  }
  return true;
}

/// No few stations have most of the motion.
bool isSpread(const Registration& registration) { return registration.adjustment->result.network.mode.empty(); }

std::string vectorText(const Eigen::Vector3d& v) {
  // Adding zero takes the sign off a negative one.
  const Eigen::Vector3d rounded = (v * 1000.0).array().round() / 1000.0 + 0.0;
  return fmt::format("{:.3f}, {:.3f}, {:.3f}", rounded.x(), rounded.y(), rounded.z());
}

std::string axisText(const Registration& registration, const OpenMotion& open, bool alone) {
  if (open.isLineOfTargets && alone) return "about the line of its targets";
  const std::vector<std::string> names = targetsOnAxis(registration, open);
  if (names.size() > 1) return "about the line through " + listed(names);
  return fmt::format("about an axis through {} (direction {})", names.empty() ? vectorText(open.place) : names.front(),
                     vectorText(open.axis));
}

}  // namespace

std::string openMotionText(const Registration& registration) {
  const OpenMotion* open = openMotionOf(registration);
  if (!open) return "a motion of some stations stays open";
  if (isSpread(registration)) {
    return fmt::format("the survey bends like a long chain, {} most of all", stationName(registration, open->station));
  }
  const std::vector<std::string> names = movingStations(registration, *open);
  const bool isWhole = movesAsAWhole(registration, *open);
  const bool alone = isWhole || names.size() == 1;
  const std::string subject = isWhole ? "the whole survey" : listed(names, maxStations);
  if (open->turns)
    return fmt::format("{} {} {}", subject, alone ? "turns" : "turn", axisText(registration, *open, alone));
  return fmt::format("{} {} free to shift along the direction {}", subject, alone ? "is" : "are",
                     vectorText(open->axis));
}

std::string openMotionRemedy(const Registration& registration) {
  const OpenMotion* open = openMotionOf(registration);
  if (!open) return "Measure more targets in common.";
  if (isSpread(registration)) return "Hold it in more places by bases or control, or close it to a loop.";
  const char* const where = open->turns ? " off that line" : "";
  if (movesAsAWhole(registration, *open)) return fmt::format("One more control target{} would hold it.", where);
  if (movingStations(registration, *open).size() > 1) {
    return fmt::format("One more target{}, seen by one of them and by one of the others, would hold them.", where);
  }
  return fmt::format("One more target{}, seen by {} and by another station, would hold it.", where,
                     stationName(registration, open->station));
}

}  // namespace tiepoint::workbench
