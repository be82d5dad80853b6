#include "workbench/analysis/stiffness.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>

#include "workbench/analysis/lanczos.h"

namespace tiepoint::workbench::analysis {

namespace {

/// At most this stiff is open. A chain of more stations than these is as soft by its length alone: its
/// stiffness falls with the fourth power of it, and is known as long as it is above rounding.
constexpr double openStiffness = 1e-12, roundingStiffness = 1e-15;
constexpr double longChain = 1000.0;
/// Makes a singular matrix definite without changing what is above the limit.
constexpr double regularisation = 1e-13;
/// With smaller pivots the solution's factor isn't to be trusted.
constexpr double soundPivot = 1e-10;
constexpr double leastShare = 0.05;
/// The farthest axis, in extents, about which a motion is called a turn.
constexpr double farthestAxis = 1e3;
/// Of the lever: what a stiffness of 1e-12 makes of a distance.
constexpr double onAxis = 1e-6;

double openLimit(std::size_t stations) {
  const double share = std::min(1.0, longChain / static_cast<double>(stations));
  return std::max(roundingStiffness, openStiffness * std::pow(share, 4));
}

Eigenpair softestMode(const Solution& solution, const Eigen::VectorXd& scale) {
  const Eigen::VectorXd unscale = scale.cwiseInverse();
  if (solution.factor.leastPivotShare() > soundPivot) {
    Eigenpair mode = largestEigenpair(scale.size(), [&](const Eigen::VectorXd& v) -> Eigen::VectorXd {
      return unscale.cwiseProduct(solution.factor.solve(unscale.cwiseProduct(v)).col(0));
    });
    mode.value = 1.0 / mode.value;
    return mode;
  }
  BlockMatrix scaled = solution.equations.matrix();
  scaled.scale(scale);
  scaled.addDiagonal(Eigen::VectorXd::Constant(scale.size(), regularisation));
  SparseFactor factor(scaled);
  if (!factor.factorize(scaled)) return {0.0, Eigen::VectorXd::Unit(scale.size(), 0)};
  Eigenpair mode = largestEigenpair(
      scale.size(), [&](const Eigen::VectorXd& v) -> Eigen::VectorXd { return factor.solve(v).col(0); });
  mode.value = 1.0 / mode.value - regularisation;
  return mode;
}

std::vector<ModeShare> sharesOf(const Solution& solution, const Eigen::VectorXd& mode) {
  std::vector<ModeShare> shares;
  for (const std::size_t s : solution.equations.stationOfNode()) {
    const double share = solution.equations.partOf(mode, s).squaredNorm();
    if (share >= leastShare) shares.push_back({solution.survey.stations[s].index, share});
  }
  std::stable_sort(shares.begin(), shares.end(), [](const auto& a, const auto& b) { return a.share > b.share; });
  return shares;
}

bool isLineOfTargets(const Solution& solution, std::size_t station, const OpenMotion& open) {
  const SurveyStation& row = solution.survey.stations[station];
  return std::all_of(row.sightings.begin(), row.sightings.end(), [&](std::size_t o) {
    const std::size_t target = solution.survey.sightings[o].target;
    const Eigen::Vector3d arm = solution.elimination.targets[target].place + solution.survey.origin - open.place;
    return arm.cross(open.axis).norm() <= onAxis * row.lever;
  });
}

OpenMotion openMotionOf(const Solution& solution, const Eigen::VectorXd& motion) {
  std::size_t station = 0;
  double most = -1.0;
  for (const std::size_t s : solution.equations.stationOfNode()) {
    const StationVector part = solution.equations.partOf(motion, s);
    const double lever = solution.survey.stations[s].lever;
    const double moved = shiftOf(part).squaredNorm() + lever * lever * turnOf(part).squaredNorm();
    // Of stations that move as one the first.
    if (moved <= most * (1.0 + onAxis)) continue;
    station = s;
    most = moved;
  }
  const StationVector part = solution.equations.partOf(motion, station);
  const Eigen::Vector3d turn = turnOf(part), shift = shiftOf(part);
  OpenMotion open;
  open.station = solution.survey.stations[station].index;
  open.place = solution.placements[station].centre + solution.survey.origin;
  open.turns = turn.norm() * farthestAxis * extentOf(solution.elimination) > shift.norm();
  open.axis = (open.turns ? turn : shift).normalized();
  if (!open.turns) return open;
  open.place += turn.cross(shift) / turn.squaredNorm();
  open.isLineOfTargets = isLineOfTargets(solution, station, open);
  return open;
}

}  // namespace

Softness softnessOf(const Solution& solution) {
  Softness softness;
  const Eigen::VectorXd scale = solution.equations.unitFreeScale();
  if (scale.size() == 0) return softness;
  const Eigenpair mode = softestMode(solution, scale);
  softness.network.stiffness = mode.value;
  softness.network.mode = sharesOf(solution, mode.vector);
  // Written so that not-a-number is open too.
  if (!(mode.value > openLimit(solution.equations.stationOfNode().size())))
    softness.open = openMotionOf(solution, scale.cwiseProduct(mode.vector));
  return softness;
}

}  // namespace tiepoint::workbench::analysis
