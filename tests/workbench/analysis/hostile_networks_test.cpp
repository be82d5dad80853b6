// Networks that nothing, or too little, or too much can be said of.
#include <gtest/gtest.h>
#include <Eigen/Geometry>

#include <cmath>
#include <stdexcept>

#include "workbench/analysis/adjustment.h"
#include "workbench/analysis/random_networks.h"

namespace tiepoint::workbench::analysis::testing {
namespace {

using Eigen::Vector3d;

/// Stations that all see the same targets; the first one is the base.
struct Builder {
  explicit Builder(const std::vector<Vector3d>& places) : targets(places) { network.targets.resize(places.size()); }

  Builder& station(const Pose& pose, const std::vector<std::size_t>& seen, double noise = 0.0) {
    const std::size_t s = network.stations.size();
    network.stations.emplace_back();
    for (const std::size_t t : seen) {
      const Vector3d place = pose.rotation.transpose() * (targets[t] - pose.shift) +
                             noise * Vector3d(normal(random), normal(random), normal(random));
      network.observations.push_back({s, t, place, 0.001, 1.0});
    }
    return *this;
  }

  std::vector<Vector3d> targets;
  Network network;
  std::mt19937_64 random{5};
};

Pose turned(double heading, const Vector3d& shift) {
  return {Eigen::AngleAxisd(heading, Vector3d::UnitZ()).toRotationMatrix(), shift};
}

const std::vector<Vector3d> corners{{0, 0, 0}, {10, 0, 1}, {10, 8, 0}, {0, 8, 3}, {5, 4, 2}, {-3, 4, 1}};

TEST(HostileNetwork, OnALineIsUndeterminedAboutThatLine) {
  Builder b({{0, 0, 0}, {2, 1, 0}, {4, 2, 0}, {8, 4, 0}});
  b.station({}, {0, 1, 2, 3}).station(turned(0.5, {1, 2, 3}), {0, 1, 2, 3});
  b.network.stations[0].held = true;
  const Adjustment adjustment = adjust(b.network);
  ASSERT_EQ(adjustment.outcome, AdjustmentOutcome::undetermined);
  ASSERT_TRUE(adjustment.open);
  EXPECT_EQ(adjustment.open->station, 1u);
  EXPECT_TRUE(adjustment.open->turns);
  EXPECT_TRUE(adjustment.open->isLineOfTargets);
  EXPECT_NEAR(std::abs(adjustment.open->axis.dot(Vector3d(2, 1, 0).normalized())), 1.0, 1e-6);
  EXPECT_LE(adjustment.network.stiffness, 1e-12);
}

TEST(HostileNetwork, NearlyOnALineIsDeterminedAndSoft) {
  Builder b({{0, 0, 0}, {2, 1, 0.01}, {4, 2, -0.01}, {8, 4, 0}});
  b.station({}, {0, 1, 2, 3}).station(turned(0.5, {1, 2, 3}), {0, 1, 2, 3});
  b.network.stations[0].held = true;
  const Adjustment adjustment = adjust(b.network);
  ASSERT_EQ(adjustment.outcome, AdjustmentOutcome::adjusted);
  EXPECT_LT(adjustment.stations[1]->geometry, 1e-5);
  EXPECT_LT(adjustment.network.stiffness, 1e-5);
  EXPECT_GT(adjustment.stations[1]->rotationSigma, 0.01);
  EXPECT_NEAR(std::abs(adjustment.stations[1]->rotationAxis.dot(Vector3d(2, 1, 0).normalized())), 1.0, 1e-4);
}

TEST(HostileNetwork, InTwoPartsTiedByOneHingeIsUndeterminedAboutTheHinge) {
  Builder b({{0, 0, 0}, {4, 0, 0}, {4, 4, 1}, {0, 4, 2}, {8, 1, 0}, {9, 5, 2}, {12, 2, 1}});
  b.station({}, {0, 1, 2, 3}, 0.001).station(turned(0.5, {1, 2, 0}), {0, 1, 2, 3}, 0.001);
  b.station(turned(1.0, {9, 2, 0}), {1, 2, 4, 5, 6}, 0.001).station(turned(-1.0, {9, 3, 0}), {4, 5, 6}, 0.001);
  b.network.stations[0].held = true;
  const Adjustment adjustment = adjust(b.network);
  ASSERT_EQ(adjustment.outcome, AdjustmentOutcome::undetermined);
  EXPECT_TRUE(adjustment.open->turns);
  EXPECT_GE(adjustment.open->station, 2u);
  const Vector3d hinge = (adjustment.targets[2]->position - adjustment.targets[1]->position).normalized();
  EXPECT_NEAR(std::abs(adjustment.open->axis.dot(hinge)), 1.0, 1e-6);
}

TEST(HostileNetwork, InTwoPartsWithoutATieIsUndetermined) {
  Builder b({{0, 0, 0}, {4, 0, 0}, {4, 4, 1}, {20, 4, 2}, {28, 1, 0}, {29, 5, 2}});
  b.station({}, {0, 1, 2}).station(turned(0.5, {1, 2, 0}), {0, 1, 2});
  b.station(turned(1.0, {9, 2, 0}), {3, 4, 5}).station(turned(-1.0, {9, 3, 0}), {3, 4, 5});
  const Adjustment adjustment = adjust(b.network);
  EXPECT_EQ(adjustment.outcome, AdjustmentOutcome::undetermined);
  EXPECT_GE(adjustment.open->station, 2u);
}

TEST(HostileNetwork, ThatIsSoftByItsLengthAloneIsDetermined) {
  Kind kind;
  kind.shape = Shape::chain;
  kind.stations = 1500;
  kind.targets = 4500;
  kind.seen = 12;
  const Network network = randomNetwork(kind, 91).network;
  const Adjustment adjustment = adjust(network);
  EXPECT_LT(adjustment.network.stiffness, 1e-12);
  EXPECT_GT(adjustment.network.stiffness, 2e-13);
  EXPECT_EQ(adjustment.outcome, AdjustmentOutcome::adjusted);
  EXPECT_TRUE(adjustment.converged);
  EXPECT_TRUE(adjustment.certificate->certified);
  EXPECT_TRUE(adjustment.globalTest && adjustment.globalTest->passed);
}

TEST(HostileNetwork, WithAllTargetsOnOneSpotIsUndetermined) {
  Builder b({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}});
  b.station({}, {0, 1, 2}).station(turned(0.5, {1, 2, 0}), {0, 1, 2});
  b.network.stations[0].held = true;
  EXPECT_EQ(adjust(b.network).outcome, AdjustmentOutcome::undetermined);
}

TEST(HostileNetwork, WithoutEnoughSharedTargetsHasNothingToAdjust) {
  Builder b(corners);
  b.station({}, {0, 1, 2}).station({}, {2, 3, 4});
  EXPECT_EQ(adjust(b.network).outcome, AdjustmentOutcome::nothingToAdjust);
  EXPECT_EQ(adjust(Network{}).outcome, AdjustmentOutcome::nothingToAdjust);
}

TEST(HostileNetwork, TiedByThreeTargetsHasMeasurementsThatNothingControls) {
  Builder b(corners);
  b.station({}, {0, 1, 2}, 0.001).station(turned(0.5, {1, 2, 3}), {0, 1, 2}, 0.001);
  b.network.stations[0].held = true;
  const Adjustment adjustment = adjust(b.network);
  EXPECT_EQ(adjustment.redundancy, 3u);
  for (const auto& observation : adjustment.observations) {
    EXPECT_LT(observation->leastRedundancy, 1e-9);
    EXPECT_FALSE(observation->statistic || observation->detectable || observation->effect || observation->leftOut);
  }
}

TEST(HostileNetwork, WithoutRedundancyIsAdjustedAndTestsNothing) {
  // Every other face of an octahedron: each two stations share one target, and nothing can move.
  Builder b({{3, 0, 0}, {-3, 0, 0}, {0, 4, 0}, {0, -4, 0}, {0, 0, 5}, {0, 0, -5}});
  const std::vector<Pose> poses{{}, turned(0.3, {1, 2, 3}), turned(-0.4, {2, 1, 0}), turned(0.2, {0, 1, 1})};
  const std::vector<std::vector<std::size_t>> faces{{0, 2, 4}, {1, 3, 4}, {0, 3, 5}, {1, 2, 5}};
  for (std::size_t s = 0; s < faces.size(); ++s) {
    b.station(poses[s], faces[s], 0.001);
    b.network.stations[s].start = poses[s];
  }
  b.network.stations[0].held = true;
  for (const VarianceScale scale : {VarianceScale::aPriori, VarianceScale::aPosteriori}) {
    AdjustmentOptions options;
    options.scale = scale;
    const Adjustment adjustment = adjust(b.network, options);
    ASSERT_EQ(adjustment.outcome, AdjustmentOutcome::adjusted);
    EXPECT_EQ(adjustment.redundancy, 0u);
    EXPECT_LT(adjustment.sumOfSquares, 1e-12);
    EXPECT_FALSE(adjustment.varianceFactor || adjustment.globalTest || adjustment.suspect);
    EXPECT_EQ(adjustment.levels.tests, 0u);
    EXPECT_GT(adjustment.stations[1]->positionSigma, 0.0005);
    for (const auto& observation : adjustment.observations) EXPECT_FALSE(observation->w || observation->statistic);
  }
}

TEST(HostileNetwork, InOnePlaneIsAdjusted) {
  Builder b({{0, 0, 0}, {10, 0, 0}, {10, 8, 0}, {0, 8, 0}, {5, 3, 0}});
  b.station({}, {0, 1, 2, 3, 4}, 0.001).station(turned(2.5, {1, 2, 3}), {0, 1, 2, 3, 4}, 0.001);
  b.network.stations[0].held = true;
  const Adjustment adjustment = adjust(b.network);
  EXPECT_EQ(adjustment.outcome, AdjustmentOutcome::adjusted);
  EXPECT_LT(adjustment.sumOfSquares, 40.0);
  EXPECT_LE(adjustment.certificate->gap, adjustment.sumOfSquares);
}

TEST(HostileNetwork, InOnePlaneWithoutNoiseIsCertifiedButNotUnique) {
  Builder b({{0, 0, 0}, {10, 0, 0}, {10, 8, 0}, {0, 8, 0}, {5, 3, 0}});
  b.station({}, {0, 1, 2, 3, 4}).station(turned(2.5, {1, 2, 3}), {0, 1, 2, 3, 4});
  b.network.stations[0].held = true;
  const Adjustment adjustment = adjust(b.network);
  // The relaxation can't tell the station from its mirror image.
  EXPECT_TRUE(adjustment.certificate->certified);
  EXPECT_FALSE(adjustment.certificate->unique);
}

TEST(HostileNetwork, WithSigmasOfAllSizesKeepsItsPoses) {
  for (const double sigma : {1e-9, 1e9}) {
    Builder b(corners);
    b.station({}, {0, 1, 2, 3, 4, 5}, 0.001).station(turned(0.5, {1, 2, 3}), {0, 1, 2, 3, 4, 5}, 0.001);
    b.network.stations[0].held = true;
    const Adjustment plain = adjust(b.network);
    for (Observation& seen : b.network.observations) seen.sigma = sigma;
    const Adjustment adjustment = adjust(b.network);
    ASSERT_EQ(adjustment.outcome, AdjustmentOutcome::adjusted);
    EXPECT_LT((adjustment.poses[1]->rotation - plain.poses[1]->rotation).norm(), 1e-9);
    EXPECT_NEAR(adjustment.stations[1]->positionSigma, plain.stations[1]->positionSigma * sigma / 0.001,
                1e-6 * adjustment.stations[1]->positionSigma);
    EXPECT_NEAR(adjustment.stations[1]->redundancy, plain.stations[1]->redundancy, 1e-9);
  }
}

TEST(HostileNetwork, WithOneStationOfASigmaThatIsNextToNothingFollowsThatStation) {
  Builder b(corners);
  b.station({}, {0, 1, 2, 3, 4, 5}, 0.001).station(turned(0.5, {1, 2, 3}), {0, 1, 2, 3, 4, 5}, 0.001);
  b.station(turned(-0.5, {1, -2, 3}), {0, 1, 2, 3, 4, 5}, 0.001);
  b.network.stations[0].held = true;
  for (Observation& seen : b.network.observations) {
    if (seen.station == 2) seen.sigma = 1e-5;
  }
  const Adjustment adjustment = adjust(b.network);
  ASSERT_EQ(adjustment.outcome, AdjustmentOutcome::adjusted);
  for (std::size_t o = 12; o < 18; ++o) EXPECT_LT(adjustment.observations[o]->residual.norm(), 1e-6);
}

TEST(HostileNetwork, WhoseControlContradictsByMetresNamesTheControl) {
  Builder b(corners);
  b.station(turned(0.3, {100, 50, 3}), {0, 1, 2, 3, 4, 5}, 0.001)
      .station(turned(0.5, {1, 2, 3}), {0, 1, 2, 3, 4, 5}, 0.001);
  for (std::size_t t = 0; t < 6; ++t) {
    b.network.targets[t].control = Control{corners[t], Eigen::Matrix3d(1e-6 * Eigen::Matrix3d::Identity())};
  }
  b.network.targets[3].control->place += Vector3d(2.0, 0.0, 0.0);
  const Adjustment adjustment = adjust(b.network);
  ASSERT_EQ(adjustment.outcome, AdjustmentOutcome::adjusted);
  EXPECT_TRUE(adjustment.converged);
  ASSERT_TRUE(adjustment.suspect);
  EXPECT_TRUE(adjustment.suspect->isControl);
  EXPECT_EQ(adjustment.suspect->index, 3u);
  EXPECT_FALSE(adjustment.globalTest->passed);
  EXPECT_NEAR(adjustment.control[3]->leftOut->error.x(), 2.0, 0.05);
}

TEST(HostileNetwork, WithALevelledStationTiltedByADegreeFailsItsTests) {
  Builder b(corners);
  Pose tilted = turned(0.5, {1, 2, 3});
  tilted.rotation =
      (Eigen::AngleAxisd(0.0174532925199433, Vector3d::UnitX()).toRotationMatrix() * tilted.rotation).eval();
  b.station({}, {0, 1, 2, 3, 4, 5}, 0.001).station(tilted, {0, 1, 2, 3, 4, 5}, 0.001);
  b.network.stations[0].held = true;
  EXPECT_TRUE(adjust(b.network).globalTest->passed);
  b.network.stations[1].levelled = true;
  const Adjustment adjustment = adjust(b.network);
  EXPECT_FALSE(adjustment.globalTest->passed);
  EXPECT_TRUE(adjustment.suspect);
}

TEST(HostileNetwork, WithInputThatIsNoNumberIsRefused) {
  Builder b(corners);
  b.station({}, {0, 1, 2, 3}).station({}, {0, 1, 2, 3});
  for (const double sigma : {0.0, -1.0, std::nan(""), HUGE_VAL}) {
    Network network = b.network;
    network.observations[2].sigma = sigma;
    EXPECT_THROW(adjust(network), std::invalid_argument) << sigma;
    network = b.network;
    network.observations[2].weight = sigma;
    EXPECT_THROW(adjust(network), std::invalid_argument) << sigma;
  }
  Network network = b.network;
  network.observations[0].place.x() = std::nan("");
  EXPECT_THROW(adjust(network), std::invalid_argument);
  network = b.network;
  network.targets[0].control = Control{corners[0], Eigen::Matrix3d(-Eigen::Matrix3d::Identity())};
  EXPECT_THROW(adjust(network), std::invalid_argument);
  network = b.network;
  network.observations[0].target = 99;
  EXPECT_THROW(adjust(network), std::invalid_argument);
}

TEST(HostileNetwork, WithoutNoiseEndsAtRounding) {
  Builder b(corners);
  b.station({}, {0, 1, 2, 3, 4, 5}).station(turned(0.5, {1, 2, 3}), {0, 1, 2, 3, 4, 5});
  b.network.stations[0].held = true;
  const Adjustment adjustment = adjust(b.network);
  EXPECT_TRUE(adjustment.converged);
  EXPECT_LT(adjustment.iterations, 20);
  EXPECT_LT(adjustment.sumOfSquares, 1e-18);
  EXPECT_LT((adjustment.poses[1]->rotation - turned(0.5, Vector3d::Zero()).rotation).norm(), 1e-13);
}

}  // namespace
}  // namespace tiepoint::workbench::analysis::testing
