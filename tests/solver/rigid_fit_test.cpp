#include "solver/rigid_fit.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>

#include "solver/arbitrary.h"
#include "solver/builders.h"
#include "solver/rigid_motions.h"

namespace tiepoint::testing {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ResultOf;
using ZOR::reg::fitRigidTransform;

/// A rotation is a product of three matrices with entries up to 1: some units of 2^-53 each.
constexpr double rotationRounding = 1e-14;
/// Points within tens of units: their rounding, 2^-53 x 100, times the few operations of a fit.
constexpr double pointRounding = 1e-12;

const std::array<double, 9> identityRotation{1, 0, 0, 0, 1, 0, 0, 0, 1};
const std::array<double, 3> zeroTranslation{0, 0, 0};

double largestResidual(const PointMatrix& target, const PointMatrix& source, const RigidTransform& transform) {
  return (target - moved(source, transform)).rowwise().norm().maxCoeff();
}

auto isNotANumber() {
  return ResultOf([](double value) { return std::isnan(value); }, true);
}

TEST(RigidFit, OverwritesWhatTheOutputsHeldWithTheIdentityForTwoPointsHoweverFarApart) {
  std::array<double, 9> rotation;
  rotation.fill(7.0);
  std::array<double, 3> translation{7.0, 7.0, 7.0};
  fitRigidTransform(rowsOf({{0, 0, 0}, {1e6, 0, 0}}), rowsOf({{5, 5, 5}, {5, 1e6, 5}}), rotation, translation);
  EXPECT_EQ(rotation, identityRotation);
  EXPECT_EQ(translation, zeroTranslation);
}

TEST(RigidFit, GivesTheIdentityForNoPoints) {
  const RigidTransform transform = fitRigidTransform(PointMatrix(0, 3), PointMatrix(0, 3));
  EXPECT_EQ(transform.rotation, identityRotation);
  EXPECT_EQ(transform.translation, zeroTranslation);
}

TEST(RigidFit, IsFixedExactlyByThreePointsThatAreNotOnOneLine) {
  // A quarter turn about z, x to y, and a shift by (10, 20, 30).
  const PointMatrix source = rowsOf({{0, 0, 0}, {3, 0, 0}, {0, 5, 1}});
  const PointMatrix target = rowsOf({{10, 20, 30}, {10, 23, 30}, {5, 20, 31}});
  const RigidTransform transform = fitRigidTransform(target, source);

  const std::array<double, 9> quarterTurn{0, -1, 0, 1, 0, 0, 0, 0, 1};
  for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(transform.rotation[i], quarterTurn[i], rotationRounding) << i;
  EXPECT_NEAR(transform.translation[0], 10.0, pointRounding);
  EXPECT_NEAR(transform.translation[1], 20.0, pointRounding);
  EXPECT_NEAR(transform.translation[2], 30.0, pointRounding);
}

TEST(RigidFit, StoresTheRotationRowAfterRow) {
  // A third of a turn about the diagonal: x to y, y to z, z to x.
  const RigidTransform transform =
      fitRigidTransform(rowsOf({{0, 4, 0}, {0, 0, 2}, {1, 0, 0}}), rowsOf({{4, 0, 0}, {0, 2, 0}, {0, 0, 1}}));
  const std::array<double, 9> thirdOfATurn{0, 0, 1, 1, 0, 0, 0, 1, 0};
  for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(transform.rotation[i], thirdOfATurn[i], rotationRounding) << i;
}

TEST(RigidFit, TurnsPointsOnOneLineOntoOneAnotherByAProperRotation) {
  const PointMatrix source = rowsOf({{1, 1, 1}, {2, 1, 1}, {5, 1, 1}, {9, 1, 1}});
  const PointMatrix target = rowsOf({{0, 0, 7}, {0, 1, 7}, {0, 4, 7}, {0, 8, 7}});
  const RigidTransform transform = fitRigidTransform(target, source);
  EXPECT_LE(improperness(rotationOf(transform)), rotationRounding);
  EXPECT_LE(largestResidual(target, source, transform), pointRounding);
}

TEST(RigidFit, ShiftsPointsThatCoincideByAProperRotation) {
  const PointMatrix source = rowsOf({{1, 2, 3}, {1, 2, 3}, {1, 2, 3}});
  const PointMatrix target = rowsOf({{4, 4, 4}, {4, 4, 4}, {4, 4, 4}});
  const RigidTransform transform = fitRigidTransform(target, source);
  EXPECT_LE(improperness(rotationOf(transform)), rotationRounding);
  EXPECT_LE(largestResidual(target, source, transform), pointRounding);
}

TEST(RigidFit, NeverGivesTheReflectionOfAMirrorImage) {
  const std::vector<OdGePoint3d> corners{{1, 0, 0}, {0, 2, 0}, {0, 0, 3}, {-1, -2, -3}, {4, 1, -2}};
  std::vector<OdGePoint3d> mirrored = corners;
  for (OdGePoint3d& p : mirrored) p.x = -p.x;
  const RigidTransform transform = fitRigidTransform(rowsOf(mirrored), rowsOf(corners));
  EXPECT_LE(improperness(rotationOf(transform)), rotationRounding);
  EXPECT_GT(largestResidual(rowsOf(mirrored), rowsOf(corners), transform), 1.0);
}

TEST(RigidFit, FlipsTheWeakestDirectionOfAMirrorImage) {
  // The cross is longest along x and shortest along z, so z is given up: the fit of the cross
  // mirrored in x is half a turn about y, which leaves the targets on z exchanged.
  const PointMatrix source = rowsOf({{4, 0, 0}, {-4, 0, 0}, {0, 2, 0}, {0, -2, 0}, {0, 0, 1}, {0, 0, -1}});
  const PointMatrix target = rowsOf({{-4, 0, 0}, {4, 0, 0}, {0, 2, 0}, {0, -2, 0}, {0, 0, 1}, {0, 0, -1}});
  EXPECT_THAT(fitRigidTransform(target, source).rotation, ElementsAre(-1, 0, 0, 0, 1, 0, 0, 0, -1));
}

TEST(RigidFit, LeavesIdenticalSetsWhereTheyAre) {
  const PointMatrix points = rowsOf({{1, 7, 2}, {3, -4, 6}, {-9, 5, 1}, {2, 2, 8}});
  const RigidTransform transform = fitRigidTransform(points, points);
  for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(transform.rotation[i], identityRotation[i], rotationRounding) << i;
  for (const double value : transform.translation) EXPECT_NEAR(value, 0.0, pointRounding);
}

TEST(RigidFit, GivesTheIdentityForDifferentRowCountsEvenAboveThree) {
  const PointMatrix five = rowsOf({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {5, 5, 5}, {6, 6, 7}});
  const PointMatrix four = rowsOf({{9, 0, 0}, {0, 9, 0}, {0, 0, 9}, {5, 5, 5}});
  EXPECT_EQ(fitRigidTransform(five, four).rotation, identityRotation);
  EXPECT_EQ(fitRigidTransform(five, four).translation, zeroTranslation);
  EXPECT_EQ(fitRigidTransform(four, five).rotation, identityRotation);
  EXPECT_EQ(fitRigidTransform(four, five).translation, zeroTranslation);
}

class RigidFitOfBrokenCoordinates : public ::testing::TestWithParam<double> {};

TEST_P(RigidFitOfBrokenCoordinates, IsNotANumberThroughout) {
  const PointMatrix sound = rowsOf({{1, 0, 0}, {0, 2, 0}, {0, 0, 3}, {4, 4, 4}});
  PointMatrix broken = sound;
  broken(2, 1) = GetParam();
  for (const RigidTransform& transform : {fitRigidTransform(sound, broken), fitRigidTransform(broken, sound)}) {
    EXPECT_THAT(transform.rotation, Each(isNotANumber()));
    EXPECT_THAT(transform.translation, Each(isNotANumber()));
  }
}

INSTANTIATE_TEST_SUITE_P(Values, RigidFitOfBrokenCoordinates,
                         ::testing::Values(std::numeric_limits<double>::quiet_NaN(),
                                           std::numeric_limits<double>::infinity(),
                                           -std::numeric_limits<double>::infinity()));

TEST(RigidFit, IsNotANumberWhereTheCovarianceOverflows) {
  const PointMatrix huge = rowsOf({{1e200, 0, 0}, {0, 1e200, 0}, {0, 0, 1e200}});
  EXPECT_THAT(fitRigidTransform(huge, huge).rotation, Each(isNotANumber()));
}

TEST(RigidFit, IsAProperRotationWhereTheCovarianceIsSubnormal) {
  const PointMatrix tiny = rowsOf({{4e-160, 0, 0}, {0, 2e-160, 0}, {0, 0, 1e-160}});
  EXPECT_LE(improperness(rotationOf(fitRigidTransform(tiny, tiny))), rotationRounding);
}

PointMatrix arbitraryPoints(int count, double extent, const Eigen::Vector3d& about) {
  PointMatrix points(count, 3);
  for (int i = 0; i < count; ++i) points.row(i) = (about + arbitraryVector(extent)).transpose();
  return points;
}

/// A fit with these coordinates rounds each sum at the size of the largest coordinate met. With up
/// to 30 points of extent 100 about a place within 200, that is 2^-53 x 6000, some ten times.
constexpr double recoveryNearby = 1e-10;
/// About a place within 10^6, moved by up to 10^6 more: sums reach 10^8, their rounding 10^-8.
constexpr double recoveryAtAMillion = 1e-7;

RC_GTEST_PROP(RigidFit, RecoversARigidMotion, ()) {
  const PointMatrix source = arbitraryPoints(arbitraryBetween(3, 30), 100.0, arbitraryVector(100.0));
  const PointMatrix target = moved(source, arbitraryMotion(100.0));
  const RigidTransform transform = fitRigidTransform(target, source);
  RC_ASSERT(improperness(rotationOf(transform)) <= rotationRounding);
  RC_ASSERT(largestResidual(target, source, transform) <= recoveryNearby);
}

RC_GTEST_PROP(RigidFit, RecoversARigidMotionAtCoordinatesOfAMillion, ()) {
  const PointMatrix source = arbitraryPoints(arbitraryBetween(3, 30), 100.0, arbitraryVector(1e6));
  const PointMatrix target = moved(source, arbitraryMotion(1e6));
  const RigidTransform transform = fitRigidTransform(target, source);
  RC_ASSERT(improperness(rotationOf(transform)) <= rotationRounding);
  RC_ASSERT(largestResidual(target, source, transform) <= recoveryAtAMillion);
}

RC_GTEST_PROP(RigidFit, IsAProperRotationWhateverThePointsAre, ()) {
  // Few distinct whole numbers: two points, one line, one plane and mirror images come often.
  const int count = arbitraryBetween(3, 6);
  PointMatrix target(count, 3);
  PointMatrix source(count, 3);
  for (Eigen::Index i = 0; i < target.size(); ++i) target.data()[i] = arbitraryBetween(-1, 1);
  for (Eigen::Index i = 0; i < source.size(); ++i) source.data()[i] = arbitraryBetween(-1, 1);
  RC_ASSERT(improperness(rotationOf(fitRigidTransform(target, source))) <= rotationRounding);
}

RC_GTEST_PROP(RigidFit, LeavesNoSmallerSumOfSquaresNearby, ()) {
  const int count = arbitraryBetween(3, 11);
  const PointMatrix source = arbitraryPoints(count, 10.0, Eigen::Vector3d::Zero());
  const PointMatrix target = arbitraryPoints(count, 10.0, Eigen::Vector3d::Zero());
  const RigidTransform best = fitRigidTransform(target, source);
  const auto sumOfSquares = [&](const RigidTransform& t) { return (target - moved(source, t)).squaredNorm(); };

  const Eigen::Vector3d axis = arbitraryVector(1.0);
  RC_PRE(axis.norm() > 0.01);
  const Eigen::AngleAxisd turn(1e-3, axis.normalized());
  const Eigen::Vector3d translation(best.translation[0], best.translation[1], best.translation[2]);
  const RigidTransform turned = asTransform(turn * rotationOf(best), turn * translation);
  const RigidTransform shifted = asTransform(rotationOf(best), translation + 1e-3 * axis);
  // Sums of up to 11 squares of some hundreds round at 2^-53 x 10^4.
  RC_ASSERT(sumOfSquares(turned) >= sumOfSquares(best) - 1e-9);
  RC_ASSERT(sumOfSquares(shifted) >= sumOfSquares(best) - 1e-9);
}

RC_GTEST_PROP(RigidFit, DoesNotDependOnTheOrderOfTheTargetsButForRounding, ()) {
  const int count = arbitraryBetween(4, 19);
  const PointMatrix source = arbitraryPoints(count, 100.0, Eigen::Vector3d::Zero());
  const PointMatrix target = moved(source, arbitraryMotion(100.0));
  PointMatrix sourceReversed = source.colwise().reverse();
  PointMatrix targetReversed = target.colwise().reverse();
  RC_ASSERT(largestResidual(target, source, fitRigidTransform(targetReversed, sourceReversed)) <= recoveryNearby);
}

}  // namespace
}  // namespace tiepoint::testing
