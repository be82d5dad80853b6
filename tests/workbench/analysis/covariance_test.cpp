// Covariances against the scatter of many draws.
#include <gtest/gtest.h>
#include <Eigen/Dense>
#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/fisher_f.hpp>

#include "workbench/analysis/adjustment.h"
#include "workbench/analysis/random_networks.h"
#include "workbench/analysis/rigid_fit.h"

namespace tiepoint::workbench::analysis::testing {
namespace {

using Eigen::Vector3d;

constexpr int draws = 1200;
/// Of regions of 95 %.
constexpr double leastCoverage = 0.93, mostCoverage = 0.97;

/// In units of the variance in force, what 95 % of the squares of so many dimensions stay below.
double bound(int dimensions, const Adjustment& adjustment) {
  if (adjustment.scale == VarianceScale::aPriori) {
    return boost::math::quantile(boost::math::chi_squared(dimensions), 0.95);
  }
  const boost::math::fisher_f ratio(dimensions, static_cast<double>(adjustment.redundancy));
  return dimensions * boost::math::quantile(ratio, 0.95);
}

/// Of the result onto the truth by all targets alike: the datum that a free network's covariances refer to.
Pose ontoTruth(const Adjustment& adjustment, const RandomNetwork& random, bool levelled) {
  std::vector<FitPair> pairs;
  for (std::size_t t = 0; t < random.targets.size(); ++t) {
    pairs.push_back({adjustment.targets[t]->position, random.targets[t], 1.0});
  }
  return fitRigid(pairs, levelled);
}

/// The error of the pose as (omega, tau) about the centre.
Eigen::Matrix<double, 6, 1> poseError(const Pose& found, const Pose& truth, const Vector3d& centre) {
  const Eigen::AngleAxisd turn(Eigen::Matrix3d(found.rotation * truth.rotation.transpose()));
  const Vector3d local = truth.rotation.transpose() * (centre - truth.shift);
  Eigen::Matrix<double, 6, 1> error;
  error << turn.angle() * turn.axis(), found.rotation * local + found.shift - centre;
  return error;
}

struct Coverage {
  double poses = 0.0, origins = 0.0, targets = 0.0;
};

double squareOf(const Eigen::VectorXd& error, const Eigen::MatrixXd& covariance) {
  return error.dot(covariance.completeOrthogonalDecomposition().solve(error));
}

Coverage coverageOf(const Kind& kind, VarianceScale scale, std::uint64_t seed) {
  const RandomNetwork random = randomNetwork(kind, seed);
  std::mt19937_64 numbers(seed + 1000);
  AdjustmentOptions options;
  options.scale = scale;
  Coverage coverage;
  double stations = 0.0, targets = 0.0;
  for (int draw = 0; draw < draws; ++draw) {
    Network network = measuredAnew(random, numbers);
    for (std::size_t t = 0; t < network.targets.size(); ++t) {
      auto& control = network.targets[t].control;
      if (!control || !control->covariance) continue;
      const Eigen::Matrix3d root = control->covariance->llt().matrixL();
      control->place = random.targets[t] + root * Vector3d(normal(numbers), normal(numbers), normal(numbers));
    }
    const Adjustment adjustment = adjust(network, options);
    Pose motion;
    if (kind.fixing == Fixing::free) motion = ontoTruth(adjustment, random, kind.levels != Levels::none);
    for (std::size_t s = 0; s < network.stations.size(); ++s) {
      if (!adjustment.stations[s]) continue;
      const AdjustedStation& told = *adjustment.stations[s];
      const Pose found = composed(motion, *adjustment.poses[s]);
      const int first = told.levelled ? 2 : 0;
      const auto error = poseError(found, random.truth[s], told.centre);
      const double square = squareOf(error.tail(6 - first), told.covariance.bottomRightCorner(6 - first, 6 - first));
      coverage.poses += square <= bound(6 - first, adjustment) ? 1.0 : 0.0;
      const Vector3d origin = found.shift - random.truth[s].shift;
      coverage.origins += squareOf(origin, told.positionCovariance) <= bound(3, adjustment) ? 1.0 : 0.0;
      stations += 1.0;
    }
    for (std::size_t t = 0; t < random.targets.size(); ++t) {
      const AdjustedTarget& told = *adjustment.targets[t];
      if (told.covariance.norm() == 0.0) continue;
      const Vector3d error = motion.rotation * told.position + motion.shift - random.targets[t];
      coverage.targets += squareOf(error, told.covariance) <= bound(3, adjustment) ? 1.0 : 0.0;
      targets += 1.0;
    }
  }
  return {coverage.poses / stations, coverage.origins / stations, coverage.targets / targets};
}

struct Case {
  Fixing fixing;
  Levels levels;
  VarianceScale scale;
};

class RegionsOf95Percent : public ::testing::TestWithParam<Case> {};

TEST_P(RegionsOf95Percent, HoldTheTruthThatOften) {
  Kind kind;
  kind.fixing = GetParam().fixing;
  kind.levels = GetParam().levels;
  kind.stations = 3;
  kind.targets = 8;
  kind.seen = 6;
  kind.isWeighted = true;
  const Coverage coverage = coverageOf(kind, GetParam().scale, 21);
  for (const double share : {coverage.poses, coverage.origins, coverage.targets}) {
    EXPECT_GT(share, leastCoverage);
    EXPECT_LT(share, mostCoverage);
  }
}

INSTANTIATE_TEST_SUITE_P(Datums, RegionsOf95Percent,
                         ::testing::Values(Case{Fixing::base, Levels::none, VarianceScale::aPriori},
                                           Case{Fixing::base, Levels::none, VarianceScale::aPosteriori},
                                           Case{Fixing::fullControl, Levels::none, VarianceScale::aPriori},
                                           Case{Fixing::heldControl, Levels::some, VarianceScale::aPosteriori},
                                           Case{Fixing::base, Levels::all, VarianceScale::aPriori},
                                           Case{Fixing::free, Levels::none, VarianceScale::aPriori},
                                           Case{Fixing::free, Levels::none, VarianceScale::aPosteriori},
                                           Case{Fixing::free, Levels::all, VarianceScale::aPriori}));

}  // namespace
}  // namespace tiepoint::workbench::analysis::testing
