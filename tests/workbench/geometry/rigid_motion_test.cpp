#include "workbench/geometry/rigid_motion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tiepoint::workbench {
namespace {

/// A few units in the last place of an angle of degrees.
constexpr double angleTolerance = 1e-12;

OdGeMatrix3d matrixOf(std::array<double, 9> rotation, std::array<double, 3> shift) {
  OdGeMatrix3d matrix;
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      matrix(row, column) = rotation[static_cast<std::size_t>(3 * row + column)];
    }
    matrix(row, 3) = shift[static_cast<std::size_t>(row)];
  }
  return matrix;
}

TEST(AxisAngleShift, TheIdentityTurnsByNothing) {
  const AxisAngleShift motion = axisAngleShift(OdGeMatrix3d());
  EXPECT_EQ(motion.angleDegrees, 0.0);
  EXPECT_EQ(motion.axis, (std::array<double, 3>{1, 0, 0}));
}

TEST(AxisAngleShift, AQuarterTurnAboutZIsRightHanded) {
  const AxisAngleShift motion = axisAngleShift(matrixOf({0, -1, 0, 1, 0, 0, 0, 0, 1}, {1, 2, 3}));
  EXPECT_NEAR(motion.angleDegrees, 90.0, angleTolerance);
  EXPECT_NEAR(motion.axis[2], 1.0, angleTolerance);
  EXPECT_EQ(motion.shift, (std::array<double, 3>{1, 2, 3}));
}

TEST(AxisAngleShift, AHalfTurnHasItsAxis) {
  const AxisAngleShift motion = axisAngleShift(matrixOf({-1, 0, 0, 0, 1, 0, 0, 0, -1}, {0, 0, 0}));
  EXPECT_NEAR(motion.angleDegrees, 180.0, angleTolerance);
  EXPECT_NEAR(std::abs(motion.axis[1]), 1.0, angleTolerance);
}

TEST(IsRigid, ARotationWithAShiftIs) { EXPECT_TRUE(isRigid(matrixOf({0, -1, 0, 1, 0, 0, 0, 0, 1}, {1e6, -1e6, 0}))); }

TEST(IsRigid, AReflectionIsNot) { EXPECT_FALSE(isRigid(matrixOf({-1, 0, 0, 0, 1, 0, 0, 0, 1}, {0, 0, 0}))); }

TEST(IsRigid, AScaleIsNot) { EXPECT_FALSE(isRigid(matrixOf({1.001, 0, 0, 0, 1.001, 0, 0, 0, 1.001}, {0, 0, 0}))); }

TEST(IsRigid, EntriesThatAreNoNumbersAreNot) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(isRigid(matrixOf({nan, 0, 0, 0, 1, 0, 0, 0, 1}, {0, 0, 0})));
  EXPECT_FALSE(isRigid(matrixOf({1, 0, 0, 0, 1, 0, 0, 0, 1}, {0, nan, 0})));
}

TEST(AxisAngleShift, ASmallTurnKeepsItsDigits) {
  const double angle = 1e-6;
  const AxisAngleShift motion = axisAngleShift(
      matrixOf({std::cos(angle), -std::sin(angle), 0, std::sin(angle), std::cos(angle), 0, 0, 0, 1}, {}));
  EXPECT_NEAR(motion.angleDegrees, 5.729577951308232e-05, 1e-16);
  EXPECT_NEAR(motion.axis[2], 1.0, angleTolerance);
}

TEST(AxisAngleShift, ATurnTheOtherWayTurnsAboutTheOppositeAxis) {
  const AxisAngleShift motion = axisAngleShift(matrixOf({0, 1, 0, -1, 0, 0, 0, 0, 1}, {0, 0, 0}));
  EXPECT_NEAR(motion.angleDegrees, 90.0, angleTolerance);
  EXPECT_NEAR(motion.axis[2], -1.0, angleTolerance);
}

TEST(IsRigid, AShearIsNot) { EXPECT_FALSE(isRigid(matrixOf({1, 0.001, 0, 0, 1, 0, 0, 0, 1}, {0, 0, 0}))); }

TEST(IsRigid, TheRoundingOfAFitIsBorneAndNoMore) {
  EXPECT_TRUE(isRigid(matrixOf({1 + 1e-10, 0, 0, 0, 1, 0, 0, 0, 1}, {0, 0, 0})));
  EXPECT_FALSE(isRigid(matrixOf({1 + 1e-8, 0, 0, 0, 1, 0, 0, 0, 1}, {0, 0, 0})));
}

TEST(IsRigid, AShiftThatIsInfiniteIsNot) {
  EXPECT_FALSE(isRigid(matrixOf({1, 0, 0, 0, 1, 0, 0, 0, 1}, {0, 0, std::numeric_limits<double>::infinity()})));
}

}  // namespace
}  // namespace tiepoint::workbench
