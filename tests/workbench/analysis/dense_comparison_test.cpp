// The adjustment against the same written down plainly, over networks of all kinds.
#include <gtest/gtest.h>

#include <cmath>

#include "workbench/analysis/adjustment.h"
#include "workbench/analysis/dense_reference.h"
#include "workbench/analysis/random_networks.h"

namespace tiepoint::workbench::analysis::testing {
namespace {

constexpr double rotationWithin = 1e-9;
/// Of the extent, or of the coordinates.
constexpr double placeWithin = 1e-9;
/// Of the product of the two standard deviations.
constexpr double covarianceWithin = 1e-6;
constexpr double redundancyWithin = 1e-6;
constexpr double testWithin = 1e-6;
constexpr double effectWithin = 1e-5;
/// A measurement that is hardly controlled has statements that are hardly determined.
constexpr double clearlyControlled = 1e-6;
/// Lambda0 of one axis and of three, for 0.001 and 0.8.
constexpr double lambdaOfAxis = 17.0746467, lambdaOfPoint = 21.5450295;

std::vector<Kind> allKinds() {
  std::vector<Kind> kinds;
  const auto shapes = {Shape::hall, Shape::chain, Shape::ring, Shape::flat, Shape::far};
  const auto fixings = {Fixing::base,        Fixing::twoBases,       Fixing::heldControl, Fixing::roundControl,
                        Fixing::fullControl, Fixing::baseAndControl, Fixing::free};
  for (const Shape shape : shapes) {
    for (const Fixing fixing : fixings) {
      for (const Levels levels : {Levels::none, Levels::some, Levels::all}) {
        Kind kind;
        kind.shape = shape;
        kind.fixing = fixing;
        kind.levels = levels;
        kind.isWeighted = kinds.size() % 2 == 1;
        kind.inMillions = kinds.size() % 3 == 1;
        kind.grossErrors = static_cast<int>(kinds.size() % 4 == 3) + static_cast<int>(kinds.size() % 8 == 7);
        kinds.push_back(kind);
      }
    }
  }
  return kinds;
}

/// Near the wanted number, relative to it or to the unit where that is larger.
void expectNear(double found, Real wanted, double within, double unit, const std::string& what) {
  const double size = std::max(std::abs(static_cast<double>(wanted)), unit);
  EXPECT_NEAR(found, static_cast<double>(wanted), within * size) << what;
}

template <typename Found, typename Wanted>
void expectCovariance(const Found& found, const Wanted& wanted, double variance, const std::string& what) {
  const double floor = 1e-40;
  for (Eigen::Index r = 0; r < found.rows(); ++r) {
    for (Eigen::Index c = 0; c < found.cols(); ++c) {
      const double product = std::sqrt(static_cast<double>(wanted(r, r) * wanted(c, c))) * variance + floor;
      EXPECT_NEAR(found(r, c), variance * static_cast<double>(wanted(r, c)), covarianceWithin * product) << what;
    }
  }
}

class Comparison {
 public:
  Comparison(const RandomNetwork& random_, VarianceScale scale)
      : random(random_), network(random.network), reference(network, random.truth) {
    AdjustmentOptions options;
    options.scale = scale;
    found = adjust(network, options);
    if (found.varianceFactor) factor = *found.varianceFactor;
    if (scale == VarianceScale::aPriori) factor = 1.0;
  }

  void run() {
    ASSERT_EQ(found.outcome, AdjustmentOutcome::adjusted);
    EXPECT_TRUE(found.converged);
    EXPECT_EQ(static_cast<int>(found.redundancy), reference.redundancy);
    expectNear(found.sumOfSquares, reference.sumOfSquares, testWithin, 0.0, "sum of squares");
    expectNear(found.network.stiffness, reference.stiffness, effectWithin, 0.0, "stiffness");
    for (std::size_t s = 0; s < network.stations.size(); ++s) compareStation(s);
    for (std::size_t t = 0; t < network.targets.size(); ++t) compareTarget(t);
    for (std::size_t o = 0; o < network.observations.size(); ++o) {
      const Observation& seen = network.observations[o];
      const bool isHeld = network.stations[seen.station].held;
      compare(*found.observations[o], reference.observations[o], seen.target,
              isHeld ? std::nullopt : std::optional<std::size_t>(seen.station));
    }
    for (std::size_t t = 0; t < network.targets.size(); ++t) {
      ASSERT_EQ(found.control[t].has_value(), reference.control[t].has_value());
      if (found.control[t]) compare(*found.control[t], *reference.control[t], t, std::nullopt);
    }
  }

 private:
  static constexpr double extent = 30.0;

  void compareStation(std::size_t s) {
    const double size = std::max(extent, random.targets[0].norm());
    const Pose& pose = *found.poses[s];
    EXPECT_LT((pose.rotation - reference.rotations[s].cast<double>()).cwiseAbs().maxCoeff(), rotationWithin);
    ASSERT_EQ(found.stations[s].has_value(), !network.stations[s].held);
    if (network.stations[s].held) return;
    const AdjustedStation& station = *found.stations[s];
    EXPECT_LT((station.centre - reference.centres[s].cast<double>()).norm(), placeWithin * size);
    EXPECT_LT((station.position - reference.shifts[s].cast<double>()).norm(), placeWithin * size);
    const auto& cofactors = reference.stationCofactors[s];
    expectCovariance(station.covariance, cofactors, factor, "station");
    const Eigen::Matrix<Real, 3, 6> toOrigin = reference.rowsAt(s, reference.shifts[s]);
    const Real33 ofOrigin = toOrigin * cofactors * toOrigin.transpose();
    expectCovariance(station.positionCovariance, ofOrigin, factor, "origin");
    expectNear(station.positionSigma, rootOf(ofOrigin), covarianceWithin, 0.0, "sigma of origin");
    expectNear(station.rotationSigma, rootOf(cofactors.topLeftCorner<3, 3>()), covarianceWithin, 0.0, "of rotation");
    expectNear(station.geometry, reference.geometry[s], effectWithin, 1e-9, "geometry");
    Real redundancy = 0, largest = 0;
    for (std::size_t o = 0; o < network.observations.size(); ++o) {
      const Observation& seen = network.observations[o];
      if (seen.station != s) continue;
      redundancy += reference.observations[o].redundancy.sum();
      const Real3 place = reference.rotations[s] * seen.place.cast<Real>() + reference.shifts[s];
      const auto rows = reference.rowsAt(s, place);
      largest = std::max(largest, rootOf(rows * cofactors * rows.transpose()));
    }
    expectNear(station.redundancy, redundancy, redundancyWithin, 1.0, "redundancy of station");
    expectNear(station.largestPointSigma, largest, covarianceWithin, 0.0, "largest sigma of a point");
  }

  Real rootOf(const Real33& cofactors) const {
    const Real largest = Eigen::SelfAdjointEigenSolver<Real33>(cofactors).eigenvalues()(2);
    return std::sqrt(static_cast<Real>(factor) * largest);
  }

  void compareTarget(std::size_t t) {
    const AdjustedTarget& target = *found.targets[t];
    const double size = std::max(extent, random.targets[0].norm());
    EXPECT_LT((target.position - reference.targets[t].cast<double>()).norm(), placeWithin * size);
    expectCovariance(target.covariance, reference.targetCofactors[t], factor, "target");
  }

  /// `own` is the station whose motion is told when the measurement is left out; else the one that moves most.
  void compare(const AdjustedObservation& told, const DenseObservation& wanted, std::size_t target,
               std::optional<std::size_t> own) {
    const double noise = told.sigma.value_or(0.002);
    for (int axis = 0; axis < 3; ++axis) {
      EXPECT_NEAR(told.residual(axis), static_cast<double>(wanted.residual(axis)), 1e-6 * noise);
      EXPECT_NEAR(told.redundancy(axis), static_cast<double>(wanted.redundancy(axis)), redundancyWithin);
    }
    EXPECT_NEAR(told.leastRedundancy, static_cast<double>(wanted.leastRedundancy), redundancyWithin);
    if (wanted.leastRedundancy < clearlyControlled) return;
    ASSERT_TRUE(told.w && told.statistic && told.detectable && told.effect && told.leftOut);
    const double unit = std::sqrt(factor);
    for (int axis = 0; axis < 3; ++axis) {
      expectNear((*told.w)(axis)*unit, wanted.w(axis), testWithin, 1.0, "w");
      expectNear((*told.detectablePerAxis)(axis), unit * std::sqrt(lambdaOfAxis / wanted.reliability(axis, axis)),
                 testWithin, 0.0, "detectable per axis");
      expectNear(told.leftOut->error(axis), wanted.hiddenError(axis), testWithin,
                 static_cast<double>(wanted.hiddenError.norm()), "left-out error");
    }
    expectNear(*told.statistic * factor, wanted.statistic, testWithin, 0.0, "statistic");
    const Eigen::SelfAdjointEigenSolver<Real33> eigen(wanted.reliability);
    expectNear(*told.detectable, unit * std::sqrt(lambdaOfPoint / eigen.eigenvalues()(0)), testWithin, 0.0,
               "detectable");
    expectNear(*told.biasToNoise, std::sqrt(lambdaOfPoint * (1 / wanted.leastRedundancy - 1)), testWithin, 0.0, "bias");
    compareEffect(told, wanted, target, eigen.operatorInverseSqrt());
    compareLeftOut(told, wanted, target, own);
  }

  bool measured(std::size_t station, std::size_t target) const {
    if (network.stations[station].held) return false;
    for (const Observation& seen : network.observations) {
      if (seen.station == station && seen.target == target) return true;
    }
    return false;
  }

  void compareEffect(const AdjustedObservation& told, const DenseObservation& wanted, std::size_t target,
                     const Real33& root) {
    Real largest = 0;
    for (std::size_t s = 0; s < network.stations.size(); ++s) {
      if (!measured(s, target)) continue;
      const Eigen::Matrix<Real, 6, 3> moved = wanted.pull[s] * root;
      const Real33 shifts = moved.bottomRows<3>().transpose() * moved.bottomRows<3>();
      largest = std::max(largest, std::sqrt(lambdaOfPoint) * rootOf(shifts));
      if (s != told.effect->station) continue;
      expectNear(told.effect->shift, std::sqrt(lambdaOfPoint) * rootOf(shifts), effectWithin, 1e-12, "shift of effect");
      const Real33 turns = moved.topRows<3>().transpose() * moved.topRows<3>();
      expectNear(told.effect->rotation, std::sqrt(lambdaOfPoint) * rootOf(turns), effectWithin, 1e-12, "its rotation");
    }
    expectNear(told.effect->shift, largest, effectWithin, 1e-12, "largest shift of all observers");
  }

  void compareLeftOut(const AdjustedObservation& told, const DenseObservation& wanted, std::size_t target,
                      std::optional<std::size_t> own) {
    const std::size_t station = told.leftOut->moved.station;
    if (own) {
      EXPECT_EQ(station, *own);
    }
    Real most = 0;
    for (std::size_t s = 0; s < network.stations.size(); ++s) {
      if (!measured(s, target)) continue;
      const Eigen::Matrix<Real, 6, 1> motion = wanted.pull[s] * wanted.hiddenError;
      most = std::max(most, motion.tail<3>().norm());
      if (s != station) continue;
      expectNear(told.leftOut->moved.shift, motion.tail<3>().norm(), effectWithin, 1e-9, "shift when left out");
      expectNear(told.leftOut->moved.rotation, motion.head<3>().norm(), effectWithin, 1e-9, "its rotation");
      Real farthest = 0;
      for (const Observation& seen : network.observations) {
        if (seen.station != s) continue;
        farthest = std::max(farthest, (reference.rowsAt(s, reference.targets[seen.target]) * motion).norm());
      }
      expectNear(told.leftOut->displacement, farthest, effectWithin, 1e-9, "displacement");
    }
    if (!own) expectNear(told.leftOut->moved.shift, most, effectWithin, 1e-9, "the one that moves most");
  }

  const RandomNetwork& random;
  const Network& network;
  DenseReference reference;
  Adjustment found;
  double factor = 1.0;
};

class DenseComparison : public ::testing::TestWithParam<std::size_t> {};

TEST_P(DenseComparison, AgreesInEveryField) {
  const std::vector<Kind> kinds = allKinds();
  for (std::uint64_t seed = 0; seed < 3; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const RandomNetwork random = randomNetwork(kinds[GetParam()], 100 * seed + GetParam());
    Comparison(random, seed == 1 ? VarianceScale::aPosteriori : VarianceScale::aPriori).run();
    if (HasFatalFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(AllKinds, DenseComparison, ::testing::Range(std::size_t{0}, allKinds().size()));

}  // namespace
}  // namespace tiepoint::workbench::analysis::testing
