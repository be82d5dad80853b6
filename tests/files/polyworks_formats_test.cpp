#include "files/polyworks_formats.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "files/transposed_matrix.h"

namespace {

using namespace ZOR::reg;

/// A turn by 30 degrees about Z with a shift.
RigidTransform turnAboutZ() {
  const double c = std::sqrt(3.0) / 2.0;
  return {{c, -0.5, 0, 0.5, c, 0, 0, 0, 1}, {10, -2.5, 0.125}};
}

TEST(PolyWorksFormats, NameThemselves) {
  EXPECT_EQ(PW_TRF_TransMatFileFormat().description(), "PolyWorks TRF Matrix Files (*.txt)");
  EXPECT_EQ(PW_4x4_TransMatFileFormat().description(), "PolyWorks 4x4 Matrix Files (*.txt)");
}

TEST(PolyWorksFormats, TheMatrixIsWrittenTransposedWithTheShiftInTheLastColumn) {
  EXPECT_EQ(PW_4x4_TransMatFileFormat().formatMatrix(turnAboutZ()),
            "VERSION\t=\t1\n"
            "MATRIX\t=\n"
            "  8.66025404e-01    5.00000000e-01    0.00000000e+00    1.00000000e+01\n"
            " -5.00000000e-01    8.66025404e-01    0.00000000e+00   -2.50000000e+00\n"
            "  0.00000000e+00    0.00000000e+00    1.00000000e+00    1.25000000e-01\n"
            "  0.00000000e+00    0.00000000e+00    0.00000000e+00    1.00000000e+00\n");
}

TEST(PolyWorksFormats, TheAnglesAreZxzInRadians) {
  EXPECT_EQ(PW_TRF_TransMatFileFormat().formatMatrix(turnAboutZ()),
            "ROT_X:\t\t-0.000000\n"
            "ROT_Y:\t\t-0.000000\n"
            "ROT_Z:\t\t-0.523599\n"
            "SHIFT_X:\t+10.000000\n"
            "SHIFT_Y:\t-2.500000\n"
            "SHIFT_Z:\t+0.125000\n");
}

TEST(PolyWorksFormats, TheIdentityHasNegativeZerosForAngles) {
  EXPECT_EQ(PW_TRF_TransMatFileFormat().formatMatrix(RigidTransform{}),
            "ROT_X:\t\t-0.000000\n"
            "ROT_Y:\t\t-0.000000\n"
            "ROT_Z:\t\t-0.000000\n"
            "SHIFT_X:\t+0.000000\n"
            "SHIFT_Y:\t+0.000000\n"
            "SHIFT_Z:\t+0.000000\n");
}

TEST(PolyWorksFormats, ThreeDigitsOfExponentAreWrittenWhereTheyAreNeeded) {
  RigidTransform transform;
  transform.translation = {1e-300, std::numeric_limits<double>::infinity(), std::nan("")};
  const std::string text = PW_4x4_TransMatFileFormat().formatMatrix(transform);
  EXPECT_NE(text.find("  1.00000000e-300\n"), std::string::npos) << text;
  EXPECT_NE(text.find("             inf\n"), std::string::npos) << text;
  EXPECT_NE(text.find("             nan\n"), std::string::npos) << text;
}

/// Turns about Z by `first`, about X by `second`, about Z by `third`, as a matrix product.
std::array<double, 9> zxz(double first, double second, double third) {
  const auto c1 = std::cos(first), s1 = std::sin(first);
  const auto c2 = std::cos(second), s2 = std::sin(second);
  const auto c3 = std::cos(third), s3 = std::sin(third);
  return {c1 * c3 - s1 * c2 * s3,
          -c1 * s3 - s1 * c2 * c3,
          s1 * s2,
          s1 * c3 + c1 * c2 * s3,
          -s1 * s3 + c1 * c2 * c3,
          -c1 * s2,
          s2 * s3,
          s2 * c3,
          c2};
}

TEST(PolyWorksFormats, TheAnglesPutTheTransposeTogetherAgain) {
  // Angles of the order of 1, through a handful of roundings.
  constexpr double rounding = 1e-14;
  for (double first : {-2.5, -0.3, 0.7, 3.0}) {
    for (double second : {-1.2, 0.4, 2.8}) {
      for (double third : {-3.0, 0.1, 1.9}) {
        RigidTransform transform;
        const std::array<double, 9> m = zxz(first, second, third);
        transform.rotation = {m[0], m[3], m[6], m[1], m[4], m[7], m[2], m[5], m[8]};
        const std::array<double, 3> angles = zxzAngles(transform);
        const std::array<double, 9> again = zxz(angles[0], angles[1], angles[2]);
        for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(again[i], m[i], rounding);
      }
    }
  }
}

}  // namespace
