#include "workbench/geometry/station_triangles.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace tiepoint::workbench {
namespace {

using testing::DoubleEq;
using testing::ElementsAre;

std::vector<Triangle> trianglesOf(const std::vector<Eigen::Vector3d>& points) {
  return stationTriangles(points, flattestTriangle);
}

TEST(StationTriangles, ThreePointsHaveOneWithItsSidesAscendingAndEachCornerOppositeItsSide) {
  const auto triangles = trianglesOf({{0, 0, 0}, {4, 0, 0}, {4, 3, 0}});
  ASSERT_EQ(triangles.size(), 1U);
  EXPECT_THAT(triangles[0].sides, ElementsAre(3.0, 4.0, 5.0));
  EXPECT_THAT(triangles[0].corners, ElementsAre(0U, 2U, 1U));
}

TEST(StationTriangles, FourPointsHaveFourByTheLongestSide) {
  const auto triangles = trianglesOf({{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 1, 9}});
  ASSERT_EQ(triangles.size(), 4U);
  for (std::size_t i = 1; i < 4; ++i) EXPECT_LE(triangles[i - 1].sides[2], triangles[i].sides[2]);
}

TEST(StationTriangles, TwoPointsHaveNone) { EXPECT_TRUE(trianglesOf({{0, 0, 0}, {1, 0, 0}}).empty()); }

TEST(StationTriangles, AFlatOneIsLeftOutUnlessFlatOnesAreWanted) {
  // The height is 0.2 on a longest side of 10: just the fiftieth part.
  const std::vector<Eigen::Vector3d> points{{0, 0, 0}, {10, 0, 0}, {5, 0.2, 0}};
  EXPECT_TRUE(stationTriangles(points, 0.0201).empty());
  EXPECT_EQ(stationTriangles(points, 0.0199).size(), 1U);
  EXPECT_EQ(stationTriangles({{0, 0, 0}, {10, 0, 0}, {4, 0, 0}}, -1.0).size(), 1U);
  EXPECT_TRUE(stationTriangles({{0, 0, 0}, {10, 0, 0}, {4, 0, 0}}, 0.0).empty());
}

TEST(StationTriangles, ASideThatIsntFiniteLeavesItOut) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(stationTriangles({{0, 0, 0}, {4, 0, 0}, {4, nan, 0}}, -1.0).empty());
}

TEST(CountEqualPairs, CountsThoseLessThanTheToleranceApartWithTheSidesAsPointsInSpace) {
  const auto first = trianglesOf({{0, 0, 0}, {4, 0, 0}, {4, 3, 0}});
  const auto second = trianglesOf({{0, 0, 0}, {4.5, 0, 0}, {4.5, 3, 0}});
  const double distance = std::hypot(0.0, 0.5, std::sqrt(4.5 * 4.5 + 9.0) - 5.0);
  EXPECT_EQ(countEqualPairs(first, second, 1.0, 100), 1U);
  EXPECT_EQ(countEqualPairs(first, second, distance, 100), 0U) << "as far apart as the tolerance isn't equal";
  EXPECT_EQ(countEqualPairs(first, first, 0.1, 100), 1U);
}

TEST(CountEqualPairs, CountsUpToTheMostThatIsAskedFor) {
  const auto square = stationTriangles({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}}, -1.0);
  EXPECT_EQ(countEqualPairs(square, square, 1e-9, 100), 16U);
  EXPECT_EQ(countEqualPairs(square, square, 1e-9, 16), 16U);
  EXPECT_EQ(countEqualPairs(square, square, 1e-9, 5), 5U);
}

TEST(ForEachEqualPair, EndsWhenItIsTold) {
  const auto square = stationTriangles({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}}, -1.0);
  int all = 0, one = 0;
  forEachEqualPair(square, square, 1e-9, [&](const Triangle&, const Triangle&) { return ++all > 0; });
  forEachEqualPair(square, square, 1e-9, [&](const Triangle&, const Triangle&) { return ++one < 1; });
  EXPECT_EQ(all, 16);
  EXPECT_EQ(one, 1);
}

}  // namespace
}  // namespace tiepoint::workbench
