#include <gtest/gtest.h>
#include <Eigen/Geometry>

#include <cmath>

#include "workbench/analysis/adjustment.h"
#include "workbench/analysis/dense_certificate.h"
#include "workbench/analysis/random_networks.h"

namespace tiepoint::workbench::analysis::testing {
namespace {

using Eigen::Vector3d;

constexpr double eigenvalueWithin = 1e-3;
constexpr double smallEigenvalueWithin = 1e-11;
constexpr double signAt = 1e-9;
constexpr double pi = 3.14159265358979323846;

void expectAgreement(const Network& network, const Adjustment& adjustment) {
  ASSERT_TRUE(adjustment.certificate);
  const Certificate& found = *adjustment.certificate;
  const DenseCertificate wanted = denseCertificate(network, adjustment);
  ASSERT_LT(wanted.stationarity, 1e-9);
  EXPECT_NEAR(wanted.sumOfSquares, adjustment.sumOfSquares, 1e-5 * adjustment.sumOfSquares);
  EXPECT_EQ(found.columns, wanted.columns);
  const double within = std::max(eigenvalueWithin * std::abs(wanted.eigenvalue), smallEigenvalueWithin);
  EXPECT_NEAR(found.eigenvalue, wanted.eigenvalue, within);
  EXPECT_EQ(found.certified, wanted.eigenvalue >= -signAt);
  EXPECT_EQ(found.unique, wanted.eigenvalue > signAt);
  EXPECT_NEAR(found.gap, wanted.gap, within * wanted.trace);
  EXPECT_DOUBLE_EQ(found.lowerBound, std::max(0.0, adjustment.sumOfSquares - found.gap));
}

class CertificateOfAllKinds : public ::testing::TestWithParam<int> {};

TEST_P(CertificateOfAllKinds, IsThatOfTheDenseMatrix) {
  const auto fixings = {Fixing::base,         Fixing::twoBases,       Fixing::heldControl,
                        Fixing::roundControl, Fixing::baseAndControl, Fixing::free};
  for (const Fixing fixing : fixings) {
    for (const Levels levels : {Levels::none, Levels::some, Levels::all}) {
      Kind kind;
      kind.shape = static_cast<Shape>(GetParam());
      kind.fixing = fixing;
      kind.levels = levels;
      kind.isWeighted = levels == Levels::some;
      kind.grossErrors = levels == Levels::all ? 1 : 0;
      const RandomNetwork random = randomNetwork(kind, 77);
      expectAgreement(random.network, adjust(random.network));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Shapes, CertificateOfAllKinds, ::testing::Range(0, 5));

/// Stations in a ring, each sharing four targets with the next one; without errors.
struct Ring {
  Network network;
  std::vector<Pose> truth;
};

Ring ringOf(std::size_t count, double noise) {
  Ring ring;
  std::mt19937_64 random(4);
  std::vector<Vector3d> targets;
  for (std::size_t s = 0; s < count; ++s) {
    const double angle = 2.0 * pi * static_cast<double>(s) / static_cast<double>(count);
    for (int k = 0; k < 4; ++k) {
      const double between = angle + (1.0 + 0.5 * uniform(random, -1.0, 1.0)) * pi / static_cast<double>(count);
      const double radius = 20.0 + uniform(random, -3.0, 3.0);
      targets.emplace_back(radius * std::cos(between), radius * std::sin(between), uniform(random, 0.0, 4.0));
    }
  }
  ring.network.targets.resize(targets.size());
  ring.network.stations.resize(count);
  for (std::size_t s = 0; s < count; ++s) {
    const double angle = 2.0 * pi * static_cast<double>(s) / static_cast<double>(count);
    Pose pose;
    if (s > 0) pose.rotation = Eigen::AngleAxisd(uniform(random, -3.0, 3.0), Vector3d::UnitZ()).toRotationMatrix();
    if (s > 0) pose.shift = 20.0 * Vector3d(std::cos(angle) - 1.0, std::sin(angle), 0.0);
    ring.truth.push_back(pose);
    for (std::size_t k = 0; k < 8; ++k) {
      const std::size_t target = (4 * (s + count - 1) + k) % targets.size();
      const Vector3d seen = pose.rotation.transpose() * (targets[target] - pose.shift) +
                            noise * Vector3d(normal(random), normal(random), normal(random));
      ring.network.observations.push_back({s, target, seen, 0.001, 1.0});
    }
  }
  for (Station& station : ring.network.stations) station.levelled = true;
  ring.network.stations[0].held = true;
  return ring;
}

/// Every station turned by its share of one more turn, so that the ring runs round twice on half the radius.
std::vector<Pose> oneTurnTooFar(const std::vector<Pose>& truth) {
  std::vector<Pose> wound = truth;
  for (std::size_t s = 0; s < wound.size(); ++s) {
    const double extra = 2.0 * pi * static_cast<double>(s) / static_cast<double>(wound.size());
    wound[s].rotation = Eigen::AngleAxisd(extra, Vector3d::UnitZ()).toRotationMatrix() * truth[s].rotation;
    wound[s].shift = 10.0 * Vector3d(std::cos(2.0 * extra) - 1.0, std::sin(2.0 * extra), 0.0);
  }
  return wound;
}

TEST(Ring, StartedOneTurnTooFarIsFoundRightWithoutHelp) {
  Ring ring = ringOf(16, 0.001);
  const std::vector<Pose> wound = oneTurnTooFar(ring.truth);
  for (std::size_t s = 0; s < wound.size(); ++s) ring.network.stations[s].start = wound[s];
  const Adjustment found = adjust(ring.network);
  EXPECT_TRUE(found.otherStartWon);
  EXPECT_TRUE(found.certificate->certified);
  EXPECT_LT(found.sumOfSquares / static_cast<double>(found.redundancy), 2.0);
  for (std::size_t s = 0; s < wound.size(); ++s) {
    EXPECT_LT((found.poses[s]->rotation - ring.truth[s].rotation).norm(), 0.01) << s;
  }
}

TEST(Ring, StartedOneTurnTooFarAndOnlyJudgedIsShownToBeBeaten) {
  Ring ring = ringOf(16, 0.001);
  const std::vector<Pose> wound = oneTurnTooFar(ring.truth);
  for (std::size_t s = 0; s < wound.size(); ++s) ring.network.stations[s].start = wound[s];
  AdjustmentOptions options;
  options.triesOtherStarts = false;
  const Adjustment found = adjust(ring.network, options);
  EXPECT_FALSE(found.otherStartWon);
  ASSERT_GT(found.sumOfSquares / static_cast<double>(found.redundancy), 1000.0) << "not in a local minimum";
  EXPECT_FALSE(found.certificate->certified);
  EXPECT_LT(found.certificate->eigenvalue, -1e-6);
  const Adjustment best = adjust(ring.network);
  EXPECT_LE(found.certificate->lowerBound, best.sumOfSquares);
  expectAgreement(ring.network, found);
}

TEST(Ring, IsFoundFromAnotherStartThatIsHandedIn) {
  Ring ring = ringOf(16, 0.001);
  const std::vector<Pose> wound = oneTurnTooFar(ring.truth);
  for (std::size_t s = 0; s < wound.size(); ++s) ring.network.stations[s].start = wound[s];
  AdjustmentOptions options;
  options.otherStarts = [&ring] { return std::vector<std::vector<Pose>>{ring.truth}; };
  EXPECT_TRUE(adjust(ring.network, options).certificate->certified);
}

TEST(Certificate, IsSilentWhereControlHasACovarianceWithADirection) {
  Kind kind;
  kind.fixing = Fixing::fullControl;
  EXPECT_FALSE(adjust(randomNetwork(kind, 3).network).certificate);
}

}  // namespace
}  // namespace tiepoint::workbench::analysis::testing
