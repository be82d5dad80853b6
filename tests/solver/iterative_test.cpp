#include "solver/iterative.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "solver/arbitrary.h"
#include "solver/builders.h"
#include "solver/plain_iterative.h"
#include "solver/point_distance.h"
#include "solver/rigid_motions.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

/// Coordinates of the order of 10, through a few roundings.
constexpr double rounding = 1e-12;

/// One run with all that it leaves.
struct Outcome : SolveMembers {
  std::uint64_t actualIterations = 77;
  double actualDiscrepancy = 77.0;

  Outcome(const RefPointList& points, std::uint64_t maxIterations, double criterion, const RefPointList& session) {
    const auto end = solveIterative(points, {maxIterations, criterion}, session, *this, pointDiscrepancies);
    if (!end) return;
    actualIterations = end->iterations;
    actualDiscrepancy = end->movement;
  }
  Outcome(const RefPointList& points, std::uint64_t maxIterations, double criterion)
      : Outcome(points, maxIterations, criterion, points) {}
};

/// Two stations of one cross, the second 10 farther along x and turned by a quarter about z.
RefPointList twoStations() {
  RefPointList points = crossOfStation(0, 0, {20, 30, 40});
  for (RefPoint p : crossOfStation(6, 1, {20, 30, 40})) {
    p.position = {-p.position.y + 10.0, p.position.x, p.position.z};
    points.push_back(p);
  }
  return points;
}

TEST(Iterative, ALimitOfOneAllowsTwoPasses) {
  const Outcome run(twoStations(), 1, 1e-300);
  EXPECT_EQ(run.actualIterations, 1u);
  EXPECT_EQ(run.registrationMethod, methodIterative);
}

TEST(Iterative, StationsThatCoincideStopAfterTheSecondPass) {
  const RefPointList points = join({crossOfStation(0, 0, {20, 30, 40}), crossOfStation(6, 1, {20, 30, 40})});
  const Outcome run(points, 100, 0.001);
  EXPECT_EQ(run.actualIterations, 1u);
  EXPECT_NEAR(run.actualDiscrepancy, 0.0, rounding);
}

TEST(Iterative, TheFirstPassMeasuresFromZero) {
  // The farthest target of the cross lies at (24, 30, 40).
  const RefPointList points = join({crossOfStation(0, 0, {20, 30, 40}), crossOfStation(6, 1, {20, 30, 40})});
  const Outcome run(points, 100, 1000.0);
  EXPECT_EQ(run.actualIterations, 0u);
  EXPECT_NEAR(run.actualDiscrepancy, std::sqrt(24.0 * 24.0 + 30.0 * 30.0 + 40.0 * 40.0), rounding);
}

TEST(Iterative, AMovementEqualToTheCriterionStops) {
  const RefPointList points = join({crossOfStation(0, 0, {20, 30, 40}), crossOfStation(6, 1, {20, 30, 40})});
  const double movement = Outcome(points, 100, 1000.0).actualDiscrepancy;
  EXPECT_EQ(Outcome(points, 100, movement).actualIterations, 0u);
  EXPECT_EQ(Outcome(points, 100, std::nextafter(movement, 0.0)).actualIterations, 1u);
}

TEST(Iterative, ALoopEndedByItsLimitShowsTheLimit) {
  const Outcome run(twoStations(), 7, 1e-300);
  EXPECT_LE(run.actualIterations, 7u);
  EXPECT_EQ(Outcome(twoStations(), 0, 1e-300).actualIterations, 0u);
}

TEST(Iterative, AGroupThatSharesNothingFitsItself) {
  RefPointList points = twoStations();
  for (RefPoint p : crossOfStation(12, 2, {-5, 8, 3})) {
    p.commonId += 100;
    points.push_back(p);
  }
  const Outcome run(points, 100, 1e-9);
  const RigidTransform& own = run.groupTransforms.at(2);
  for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(own.rotation[i], i % 4 == 0 ? 1.0 : 0.0, rounding);
  for (double shift : own.translation) EXPECT_NEAR(shift, 0.0, 100 * rounding);
}

TEST(Iterative, ABaseKeepsItsCoordinatesAndGetsNoTransformation) {
  RefPointList points = twoStations();
  for (RefPoint& p : points) p.inBase = p.groupId == 0;
  const Outcome run(points, 100, 1e-9);
  EXPECT_EQ(run.registrationMethod, methodIterativeWithBase);
  EXPECT_EQ(keysOf(run.groupTransforms), std::vector<GroupId>{1});
  for (const RefPoint& p : points) {
    if (p.groupId == 1) continue;
    EXPECT_THAT(run.commonPoints.at(p.commonId).position, IsNearPoint(p.position, 1e-10));
    EXPECT_EQ(run.pointDiscrepancies.count(p.id), 0u);
  }
}

TEST(Iterative, APinnedTargetTakesTheBasesWeight) {
  RefPointList points = twoStations();
  for (RefPoint& p : points) {
    p.inBase = p.groupId == 0;
    p.weight = p.inBase ? 0.25 : 1.0;
  }
  const Outcome run(points, 100, 1e-9);
  EXPECT_EQ(run.commonPoints.at(0).weight, 0.25);
}

TEST(Iterative, WithoutABaseATargetHasTheMeanWeightOfItsGroups) {
  RefPointList points = twoStations();
  for (RefPoint& p : points) p.weight = p.groupId == 0 ? 0.25 : 1.0;
  const Outcome run(points, 100, 1e-9);
  EXPECT_EQ(run.commonPoints.at(0).weight, 0.625);
}

TEST(Iterative, ABaseTargetCloseToTheOriginIsNotPinned) {
  // One pass only: the model is the mean of (0, 0, 0) and (0, 0, 8) where the base isn't pinned.
  // The whole model then moves onto the base, so what is looked at is a distance in it.
  RefPointList points = crossOfStation(0, 0, {20, 30, 40});
  points.push_back(measured(6, 0, 6, {1e-12, -1e-12, 1e-13}));
  for (RefPoint& p : points) p.inBase = true;
  RefPointList other = crossOfStation(7, 1, {20, 30, 40});
  other.push_back(measured(13, 1, 6, {0, 0, 8}));
  points.insert(points.end(), other.begin(), other.end());
  const Outcome run(points, 1, 1e9);
  EXPECT_NEAR(distance(run.commonPoints.at(6).position, run.commonPoints.at(0).position),
              std::sqrt(24.0 * 24.0 + 30.0 * 30.0 + 36.0 * 36.0), 1e-9);

  // Just above the bound it is pinned.
  for (RefPoint& p : points) {
    if (p.id == 6) p.position = {std::nextafter(1e-12, 1.0), 0, 0};
  }
  const Outcome pinned(points, 1, 1e9);
  EXPECT_NEAR(distance(pinned.commonPoints.at(6).position, pinned.commonPoints.at(0).position),
              std::sqrt(24.0 * 24.0 + 30.0 * 30.0 + 40.0 * 40.0), 1e-9);
}

TEST(Iterative, OneGroupOrNoneChangesNothing) {
  for (const RefPointList& points : {RefPointList{}, crossOfStation(0, 3, {1, 2, 3})}) {
    Outcome run(points, 100, 0.001);
    EXPECT_EQ(run.registrationMethod, methodUnknown);
    EXPECT_EQ(run.actualIterations, 77u);
    EXPECT_EQ(run.actualDiscrepancy, 77.0);
    EXPECT_TRUE(run.groupTransforms.empty());
    EXPECT_TRUE(run.commonPoints.empty());
  }
}

TEST(Iterative, AThinGroupStaysWhereItIs) {
  RefPointList points = twoStations();
  points.push_back(measured(12, 2, 0, {100, 0, 0}));
  points.push_back(measured(13, 2, 1, {100, 8, 0}));
  const Outcome run(points, 20, 1e-9);
  EXPECT_EQ(run.groupTransforms.at(2).rotation, RigidTransform{}.rotation);
  EXPECT_EQ(run.groupTransforms.at(2).translation, RigidTransform{}.translation);
}

TEST(Iterative, TheSolversTableIsNotTouched) {
  Outcome run(twoStations(), 100, 1e-9);
  EXPECT_TRUE(run.solverTable.empty());
}

TEST(Iterative, InputThatIsNotANumberEndsTheLoop) {
  RefPointList points = twoStations();
  points.front().position.x = std::nan("");
  const Outcome run(points, 1000, 1e-9);
  EXPECT_LE(run.actualIterations, 1000u);
}

/// A survey of up to seven stations that see some of the targets, measured with noise.
RefPointList anySurvey(bool withBase) {
  const auto stations = arbitraryBetween<GroupId>(2, 7);
  const auto targets = arbitraryBetween<CommonPointId>(3, 12);
  std::vector<Eigen::Vector3d> truth;
  for (CommonPointId n = 0; n < targets; ++n) truth.push_back(arbitraryVector(20.0));
  RefPointList points;
  for (GroupId g = 0; g < stations; ++g) {
    const RigidTransform motion = arbitraryMotion(50.0);
    for (CommonPointId n = 0; n < targets; ++n) {
      if (onceIn(3)) continue;
      const Eigen::Vector3d seen = truth[n] + arbitraryVector(0.01);
      OdGePoint3d position = apply(motion, {seen.x(), seen.y(), seen.z()});
      if (onceIn(40)) position = {0, 0, 0};
      points.push_back(measured(points.size(), g, n, position, arbitraryBetween(1, 4) / 4.0));
      points.back().inBase = withBase && g == 1;
    }
  }
  return points;
}

RC_GTEST_PROP(Iterative, EqualsTheDenseTables, ()) {
  const RefPointList points = anySurvey(false);
  const auto passes = arbitraryBetween<std::uint64_t>(1, 30);
  Outcome run(points, passes, 1e-6);
  RC_PRE(run.registrationMethod == methodIterative);
  const PlainModel plain = plainIterative(points, passes, 1e-6);
  RC_ASSERT(run.actualIterations == plain.lastPass);
  // The dense products add zeros, which changes nothing; what is left is the order of a few sums.
  RC_ASSERT(std::abs(run.actualDiscrepancy - plain.movement) < 1e-9);
  Eigen::Index row = 0;
  for (const auto& [id, common] : run.commonPoints) {
    RC_ASSERT(std::abs(common.position.x - plain.positions(row, 0)) < 1e-9);
    RC_ASSERT(std::abs(common.position.y - plain.positions(row, 1)) < 1e-9);
    RC_ASSERT(std::abs(common.position.z - plain.positions(row, 2)) < 1e-9);
    RC_ASSERT(common.weight == plain.weights[row]);
    ++row;
  }
}

RC_GTEST_PROP(Iterative, PinsLikeTheDenseTables, ()) {
  const RefPointList points = anySurvey(true);
  const auto passes = arbitraryBetween<std::uint64_t>(1, 30);
  Outcome run(points, passes, 1e-6);
  RC_PRE(run.registrationMethod == methodIterativeWithBase);
  const PlainModel plain = plainIterative(points, passes, 1e-6);
  RC_ASSERT(run.actualIterations == plain.lastPass);
  RC_ASSERT(std::abs(run.actualDiscrepancy - plain.movement) < 1e-9);
  Eigen::Index row = 0;
  for (const auto& entry : run.commonPoints) RC_ASSERT(entry.second.weight == plain.weights[row++]);
}

RC_GTEST_PROP(Iterative, RecoversAnExactSurvey, ()) {
  // All stations see all targets without noise: the first passes align them for good.
  std::vector<Eigen::Vector3d> truth;
  for (int n = 0; n < 8; ++n) truth.push_back(arbitraryVector(20.0));
  Eigen::Matrix<double, 3, 8> spread;
  for (int n = 0; n < 8; ++n) spread.col(n) = truth[static_cast<std::size_t>(n)] - truth[0];
  RC_PRE(spread.jacobiSvd().singularValues()[2] > 1.0);
  RefPointList points;
  for (GroupId g = 0; g < 4; ++g) {
    const RigidTransform motion = g == 0 ? RigidTransform{} : arbitraryMotion(50.0);
    for (CommonPointId n = 0; n < 8; ++n) {
      points.push_back(measured(points.size(), g, n, apply(motion, {truth[n].x(), truth[n].y(), truth[n].z()})));
      points.back().inBase = g == 0;
    }
  }
  const Outcome run(points, 5000, 1e-12);
  for (const auto& [id, discrepancy] : run.pointDiscrepancies) RC_ASSERT(discrepancy < 1e-6);
}

}  // namespace
