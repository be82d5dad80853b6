#include "platform/sdk/od_ge_matrix3d.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace {

OdGeMatrix3d translation(double x, double y, double z) {
  OdGeMatrix3d matrix;
  matrix(0, 3) = x;
  matrix(1, 3) = y;
  matrix(2, 3) = z;
  return matrix;
}

OdGeMatrix3d scaling(double x, double y, double z) {
  OdGeMatrix3d matrix;
  matrix(0, 0) = x;
  matrix(1, 1) = y;
  matrix(2, 2) = z;
  return matrix;
}

OdGeMatrix3d quarterTurnAboutZ() {
  OdGeMatrix3d matrix;
  matrix(0, 0) = 0.0;
  matrix(0, 1) = -1.0;
  matrix(1, 0) = 1.0;
  matrix(1, 1) = 0.0;
  return matrix;
}

OdGeMatrix3d turnAboutX(double angle) {
  OdGeMatrix3d matrix;
  matrix(1, 1) = std::cos(angle);
  matrix(1, 2) = -std::sin(angle);
  matrix(2, 1) = std::sin(angle);
  matrix(2, 2) = std::cos(angle);
  return matrix;
}

double largestDifference(const OdGeMatrix3d& a, const OdGeMatrix3d& b) {
  double largest = 0.0;
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      largest = std::max(largest, std::abs(a(row, column) - b(row, column)));
    }
  }
  return largest;
}

bool hasAFiniteEntry(const OdGeMatrix3d& matrix) {
  for (const auto& row : matrix.entry) {
    for (const double value : row) {
      if (std::isfinite(value)) return true;
    }
  }
  return false;
}

}  // namespace

TEST(OdGeMatrix3d, IsTheIdentityAtFirstAndAfterSetToIdentity) {
  OdGeMatrix3d matrix;
  const double identity[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) EXPECT_EQ(matrix(row, column), identity[row][column]);
  }
  matrix = scaling(2.0, 3.0, 4.0);
  EXPECT_NE(matrix, OdGeMatrix3d());
  EXPECT_EQ(matrix.setToIdentity(), OdGeMatrix3d());
}

TEST(OdGeMatrix3d, TheRightFactorOfAProductActsFirst) {
  const OdGeMatrix3d turnThenMove = translation(10.0, 0.0, 0.0) * quarterTurnAboutZ();
  OdGePoint3d point(1.0, 2.0, 3.0);
  point.p_transform(turnThenMove);
  EXPECT_EQ(point, OdGePoint3d(8.0, 1.0, 3.0));
}

TEST(OdGeMatrix3d, PTransformTurnsScalesAndMoves) {
  OdGePoint3d point(1.0, 2.0, 3.0);
  EXPECT_EQ(point.p_transform(scaling(2.0, 4.0, 8.0)), OdGePoint3d(2.0, 8.0, 24.0));
  EXPECT_EQ(point.p_transform(translation(-1.0, 1.0, 0.5)), OdGePoint3d(1.0, 9.0, 24.5));
}

TEST(OdGeMatrix3d, InverseOfAScaledMoveIsExact) {
  const OdGeMatrix3d inverse = (translation(6.0, -4.0, 2.0) * scaling(2.0, 4.0, 0.5)).inverse();
  EXPECT_EQ(inverse, scaling(0.5, 0.25, 2.0) * translation(-6.0, 4.0, -2.0));
}

TEST(OdGeMatrix3d, InverseOfAGeneralMatrix) {
  const double entries[4][4] = {{1, 2, 0, 1}, {0, 1, 3, 0}, {2, 0, 1, 0}, {0, 1, 0, 2}};
  OdGeMatrix3d matrix;
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) matrix(row, column) = entries[row][column];
  }
  // The determinant is 20; its twentieths are worked out by hand.
  const double twentieths[4][4] = {{2, -3, 9, -1}, {12, 2, -6, -6}, {-4, 6, 2, 2}, {-6, -1, 3, 13}};
  const OdGeMatrix3d inverse = matrix.inverse();
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      EXPECT_DOUBLE_EQ(inverse(row, column), twentieths[row][column] / 20.0) << row << ' ' << column;
    }
  }
}

TEST(OdGeMatrix3d, InverseTakesAMirror) { EXPECT_EQ(scaling(1.0, 1.0, -1.0).inverse(), scaling(1.0, 1.0, -1.0)); }

TEST(OdGeMatrix3d, InverseOfASingularMatrixHasNoFiniteEntry) {
  EXPECT_FALSE(hasAFiniteEntry(scaling(1.0, 1.0, 0.0).inverse()));
  OdGeMatrix3d twoEqualRows;
  twoEqualRows(1, 0) = 1.0;
  twoEqualRows(1, 1) = 0.0;
  EXPECT_FALSE(hasAFiniteEntry(twoEqualRows.inverse()));
}

TEST(OdGeMatrix3d, InverseOfAMatrixWithNotANumberHasNoFiniteEntry) {
  EXPECT_FALSE(hasAFiniteEntry(scaling(std::numeric_limits<double>::quiet_NaN(), 1.0, 1.0).inverse()));
}

TEST(OdGeMatrix3d, EqualityIsExact) {
  OdGeMatrix3d matrix;
  matrix(2, 1) = std::numeric_limits<double>::denorm_min();
  EXPECT_NE(matrix, OdGeMatrix3d());
}

RC_GTEST_PROP(OdGeMatrix3dLaws, InverseOfARigidMotionTakesItBack, ()) {
  const double angle = *rc::gen::inRange(-3141, 3142) / 1000.0;
  const auto coordinate = [] { return *rc::gen::inRange(-1'000'000'000, 1'000'000'001) / 1000.0; };
  const OdGeMatrix3d motion = translation(coordinate(), coordinate(), coordinate()) * turnAboutX(angle);
  // Coordinates of a million have a spacing of 1.2e-10; a few roundings add up in each entry.
  constexpr double tolerance = 1e-9;
  RC_ASSERT(largestDifference(motion * motion.inverse(), OdGeMatrix3d()) < tolerance);
  RC_ASSERT(largestDifference(motion.inverse() * motion, OdGeMatrix3d()) < tolerance);
}

RC_GTEST_PROP(OdGeMatrix3dLaws, InverseOfAWellConditionedMatrixGivesTheIdentity, ()) {
  OdGeMatrix3d matrix;
  for (auto& row : matrix.entry) {
    for (double& value : row) value = *rc::gen::inRange(-1000, 1001) / 1000.0;
  }
  // The diagonal outweighs each row, so the matrix is far from singular.
  for (int i = 0; i < 4; ++i) matrix(i, i) += matrix(i, i) < 0.0 ? -4.0 : 4.0;
  constexpr double tolerance = 1e-13;
  RC_ASSERT(largestDifference(matrix * matrix.inverse(), OdGeMatrix3d()) < tolerance);
}
