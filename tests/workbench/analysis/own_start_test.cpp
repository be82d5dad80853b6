#include "workbench/analysis/own_start.h"

#include <gtest/gtest.h>
#include <Eigen/Geometry>

#include "workbench/analysis/adjustment.h"
#include "workbench/analysis/random_networks.h"

namespace tiepoint::workbench::analysis::testing {
namespace {

constexpr double nearTruth = 0.05;

void expectStartNearTruth(const RandomNetwork& random, const Network& network) {
  const Survey survey = surveyOf(network, participationOf(network));
  const Placements start = startOf(network, survey);
  for (std::size_t s = 0; s < start.size(); ++s) {
    const Pose pose = poseOf(survey, s, start[s]);
    EXPECT_LT((pose.rotation - random.truth[s].rotation).norm(), nearTruth) << s;
  }
}

TEST(OwnStart, IsNearTheTruthInEveryDatum) {
  for (const Fixing fixing :
       {Fixing::base, Fixing::twoBases, Fixing::heldControl, Fixing::roundControl, Fixing::free}) {
    for (const Levels levels : {Levels::none, Levels::some, Levels::all}) {
      Kind kind;
      kind.fixing = fixing;
      kind.levels = levels;
      const RandomNetwork random = randomNetwork(kind, 31);
      expectStartNearTruth(random, random.network);
    }
  }
}

TEST(OwnStart, TakesGivenStartsOfAnySystem) {
  Kind kind;
  kind.fixing = Fixing::heldControl;
  const RandomNetwork random = randomNetwork(kind, 32);
  Network network = random.network;
  const Eigen::Matrix3d turn = Eigen::AngleAxisd(2.0, Eigen::Vector3d(1.0, 1.0, 0.2).normalized()).toRotationMatrix();
  for (std::size_t s = 0; s < network.stations.size(); ++s) {
    const Pose& truth = random.truth[s];
    network.stations[s].start = Pose{turn * truth.rotation, turn * truth.shift + Eigen::Vector3d(7.0, 8.0, 9.0)};
  }
  expectStartNearTruth(random, network);
}

TEST(OwnStart, JoinsLevelledStationsByTwoTargets) {
  Network network;
  network.targets.resize(5);
  network.stations.resize(3);
  network.stations[0].held = true;
  for (std::size_t s = 1; s < 3; ++s) network.stations[s].levelled = true;
  const std::vector<Eigen::Vector3d> targets{{0, 0, 0}, {8, 1, 2}, {3, 9, 1}, {15, 4, 3}, {12, 9, 0}};
  const std::vector<std::vector<std::size_t>> seen{{0, 1, 2}, {1, 2, 3, 4}, {3, 4}};
  RandomNetwork random;
  for (std::size_t s = 0; s < 3; ++s) {
    const double heading = 1.1 * static_cast<double>(s);
    Pose pose;
    pose.rotation = Eigen::AngleAxisd(heading, Eigen::Vector3d::UnitZ()).toRotationMatrix();
    pose.shift = static_cast<double>(s) * Eigen::Vector3d(3.0, 1.0, 0.5);
    random.truth.push_back(pose);
    for (const std::size_t t : seen[s]) {
      network.observations.push_back({s, t, pose.rotation.transpose() * (targets[t] - pose.shift), 0.001, 1.0});
    }
  }
  expectStartNearTruth(random, network);
  const Adjustment adjustment = adjust(network);
  EXPECT_EQ(adjustment.outcome, AdjustmentOutcome::adjusted);
  EXPECT_LT((adjustment.poses[2]->shift - random.truth[2].shift).norm(), 1e-9);
}

TEST(OwnStart, JoinsPartsThatOnlyTogetherShareThreeTargets) {
  Kind kind;
  kind.stations = 6;
  kind.targets = 14;
  kind.seen = 6;
  kind.shape = Shape::chain;
  for (std::uint64_t seed = 40; seed < 60; ++seed) {
    const RandomNetwork random = randomNetwork(kind, seed);
    const Adjustment adjustment = adjust(random.network);
    if (adjustment.outcome != AdjustmentOutcome::adjusted || adjustment.redundancy == 0) continue;
    EXPECT_LT(adjustment.sumOfSquares, 4.0 * static_cast<double>(adjustment.redundancy) + 10.0) << seed;
  }
}

}  // namespace
}  // namespace tiepoint::workbench::analysis::testing
