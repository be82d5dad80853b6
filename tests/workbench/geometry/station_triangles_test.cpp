#include "workbench/geometry/station_triangles.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "solver/arbitrary.h"

namespace tiepoint::workbench {
namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;
using tiepoint::testing::arbitraryBetween;

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

TEST(StationTriangles, HaveTheirSidesInWhateverOrderTheCornersStand) {
  const std::vector<Eigen::Vector3d> corners{{0, 0, 0}, {4, 0, 0}, {4, 3, 0}};
  for (const auto& order : {std::array{0, 1, 2}, std::array{2, 0, 1}, std::array{1, 0, 2}, std::array{2, 1, 0}}) {
    std::vector<Eigen::Vector3d> points;
    for (const int corner : order) points.push_back(corners[static_cast<std::size_t>(corner)]);
    const auto triangles = trianglesOf(points);
    ASSERT_EQ(triangles.size(), 1U);
    EXPECT_THAT(triangles[0].sides, ElementsAre(3.0, 4.0, 5.0));
    for (std::size_t k = 0; k < 3; ++k) {
      const auto& here = points[triangles[0].corners[k]];
      const auto& one = points[triangles[0].corners[(k + 1) % 3]];
      const auto& other = points[triangles[0].corners[(k + 2) % 3]];
      EXPECT_EQ((one - other).norm(), triangles[0].sides[k]) << "opposite " << here.transpose();
    }
  }
}

TEST(StationTriangles, OfCoordinatesOfMillionsAreTheSame) {
  const Eigen::Vector3d away(4500000, 5400000, 100);
  const std::vector<Eigen::Vector3d> points{away, away + Eigen::Vector3d(4, 0, 0), away + Eigen::Vector3d(4, 3, 0)};
  EXPECT_THAT(trianglesOf(points).at(0).sides, ElementsAre(3.0, 4.0, 5.0));
}

TEST(StationTriangles, PointsOnOneSpotHaveNone) {
  EXPECT_TRUE(trianglesOf({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}).empty());
  EXPECT_TRUE(trianglesOf({{1, 1, 1}, {1, 1, 1}, {9, 1, 1}}).empty());
}

TEST(SidesApart, IsTheDistanceOfTheSidesAsPointsInSpace) {
  const Triangle one{{3.0, 4.0, 5.0}, {0, 1, 2}}, other{{4.0, 6.0, 7.0}, {2, 1, 0}};
  EXPECT_EQ(sidesApart(one, other), 3.0);
  EXPECT_EQ(sidesApart(one, one), 0.0);
}

TEST(ForEachEqualPair, TakesSidesThatDifferByJustTheToleranceForEqual) {
  const std::vector<Triangle> one{{{3.0, 4.0, 5.0}, {0, 1, 2}}};
  const auto equalWithin = [&](std::array<double, 3> sides, double tolerance) {
    bool found = false;
    forEachEqualPair(one, {{sides, {0, 1, 2}}}, tolerance, [&](const Triangle&, const Triangle&) {
      found = true;
      return true;
    });
    return found;
  };
  for (const double difference : {-0.25, 0.25}) {
    EXPECT_TRUE(equalWithin({3.0 + difference, 4.0, 5.0}, 0.25)) << difference;
    EXPECT_TRUE(equalWithin({3.0, 4.0 + difference, 5.0}, 0.25)) << difference;
    EXPECT_TRUE(equalWithin({3.0, 4.0, 5.0 + difference}, 0.25)) << difference;
    EXPECT_FALSE(equalWithin({3.0 + difference, 4.0, 5.0}, 0.2499)) << difference;
    EXPECT_FALSE(equalWithin({3.0, 4.0 + difference, 5.0}, 0.2499)) << difference;
    EXPECT_FALSE(equalWithin({3.0, 4.0, 5.0 + difference}, 0.2499)) << difference;
  }
}

RC_GTEST_PROP(ForEachEqualPair, VisitsThePairsThatAllPairsHold, ()) {
  const auto someTriangles = [] {
    std::vector<Eigen::Vector3d> points(arbitraryBetween<std::size_t>(0, 6));
    const auto step = [] { return 0.5 * arbitraryBetween(0, 8); };
    for (Eigen::Vector3d& point : points) point = {step(), step(), step()};
    return stationTriangles(points, -1.0);
  };
  const auto first = someTriangles(), second = someTriangles();
  const double tolerance = *rc::gen::element(0.0, 0.01, 0.5, 1.0);
  std::size_t visited = 0, expected = 0;
  forEachEqualPair(first, second, tolerance, [&](const Triangle& a, const Triangle& b) {
    for (std::size_t k = 0; k < 3; ++k) RC_ASSERT(std::abs(a.sides[k] - b.sides[k]) <= tolerance);
    ++visited;
    return true;
  });
  for (const Triangle& a : first) {
    for (const Triangle& b : second) {
      bool areEqual = true;
      for (std::size_t k = 0; k < 3; ++k) areEqual = areEqual && std::abs(a.sides[k] - b.sides[k]) <= tolerance;
      expected += areEqual ? 1 : 0;
    }
  }
  RC_ASSERT(visited == expected);
}

}  // namespace
}  // namespace tiepoint::workbench
