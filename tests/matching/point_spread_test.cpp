#include "matching/point_spread.h"

#include <gtest/gtest.h>

#include <boost/math/policies/error_handling.hpp>
#include <cmath>
#include <limits>

#include "matching/points.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

using Counts = std::vector<std::uint64_t>;
using Values = std::vector<double>;

RefPoint along(RefPointId id, GroupId group, CommonPointId name, double x) {
  RefPoint point = manualPoint(id, group, name, {x, 0, 0});
  point.active = true;
  return point;
}

Values distancesOf(const RefPointList& points, const GroupTransforms& transforms, const CommonPoints& common) {
  Values distances{7.0};
  EXPECT_TRUE(collectSpreadDistances(points, transforms, common, distances));
  return distances;
}

TEST(PointSpread, WithoutATransformationThereAreNoDistances) {
  Values distances{7.0};
  EXPECT_FALSE(collectSpreadDistances({along(0, 0, 0, 1), along(1, 1, 0, 2)}, {}, {{0, {}}}, distances));
  EXPECT_TRUE(distances.empty());
  EXPECT_EQ(maxSpread(distances), 0.0);
}

TEST(PointSpread, EveryPairOfANameCounts) {
  const GroupTransforms solved{{0, {}}, {1, {}}, {2, {}}, {3, {}}};
  RefPointList points{along(0, 0, 0, 0), along(1, 1, 0, 1), along(2, 2, 0, 3)};
  EXPECT_EQ(distancesOf(points, solved, {{0, {}}}), (Values{1, 3, 2}));
  points.push_back(along(3, 3, 0, 7));
  EXPECT_EQ(distancesOf(points, solved, {{0, {}}}).size(), 6u);
}

TEST(PointSpread, InactiveUnsolvedAndUnknownPointsDoNotCount) {
  RefPointList points{along(0, 0, 0, 0), along(1, 1, 0, 1), along(2, 2, 0, 3), along(3, 0, 1, 0), along(4, 1, 1, 9)};
  std::next(points.begin())->active = false;
  // Group 2 isn't solved, and name 1 is no common point.
  EXPECT_EQ(distancesOf(points, {{0, {}}, {1, {}}}, {{0, {}}}), Values{});
}

TEST(PointSpread, PointsAreMeasuredInTheCommonSystem) {
  RigidTransform shift;
  shift.translation = {0, 5, 0};
  EXPECT_EQ(distancesOf({along(0, 0, 0, 1), along(1, 1, 0, 1)}, {{0, {}}, {1, shift}}, {{0, {}}}), Values{5});
}

TEST(PointSpread, TheMaximumIsCutToSevenDecimals) {
  EXPECT_DOUBLE_EQ(maxSpread({0.01, 0.12345678}), 0.1234567);
  EXPECT_DOUBLE_EQ(maxSpread({0.99999999}), 0.9999999);
}

TEST(PointSpread, AMaximumThatIsNotFiniteIsAnError) {
  EXPECT_THROW(maxSpread({1.0, std::numeric_limits<double>::infinity()}), boost::math::rounding_error);
  EXPECT_THROW(maxSpread({std::nan(""), 1.0}), boost::math::rounding_error);
}

TEST(PointSpreadHistogram, FewerThanThreeDistancesLeaveItEmpty) {
  Counts counts{1};
  Values edges{1};
  spreadHistogram({0.1, 0.2}, counts, edges);
  EXPECT_TRUE(counts.empty());
  EXPECT_TRUE(edges.empty());
}

TEST(PointSpreadHistogram, EqualDistancesStandInTheLastBin) {
  Counts counts;
  Values edges;
  spreadHistogram({0.12345678, 0.12345678, 0.12345678}, counts, edges);
  EXPECT_EQ(counts, (Counts{0, 0, 0, 0, 0, 0, 0, 0, 0, 3}));
  ASSERT_EQ(edges.size(), 11u);
  for (double edge : edges) EXPECT_DOUBLE_EQ(edge, 0.123456);
}

TEST(PointSpreadHistogram, BinsAreOpenAtTheTopButForTheLast) {
  Counts counts;
  Values edges;
  spreadHistogram({10, 0, 1, 9, 0.5, 9.5}, counts, edges);
  EXPECT_EQ(counts, (Counts{2, 1, 0, 0, 0, 0, 0, 0, 0, 3}));
  for (std::size_t i = 0; i <= 10; ++i) EXPECT_DOUBLE_EQ(edges[i], static_cast<double>(i));
}

TEST(PointSpreadHistogram, ARangeTooSmallForABinsWidthIsCountedInTheLastBin) {
  Counts counts;
  Values edges;
  spreadHistogram({0.0, 0.0, std::numeric_limits<double>::denorm_min()}, counts, edges);
  EXPECT_EQ(counts, (Counts{0, 0, 0, 0, 0, 0, 0, 0, 0, 3}));
  EXPECT_EQ(edges, Values(11, 0.0));
}

TEST(PointSpreadHistogram, TheBinsAreCountedByTheirEdgesBeforeTheCut) {
  Counts counts;
  Values edges;
  // The second edge is 0.00000051, which is cut to nothing; 0.0000005 lies below it.
  spreadHistogram({0.0, 0.0000005, 0.0000051}, counts, edges);
  EXPECT_EQ(counts, (Counts{2, 0, 0, 0, 0, 0, 0, 0, 0, 1}));
  EXPECT_EQ(edges[1], 0.0);
  EXPECT_DOUBLE_EQ(edges[10], 0.000005);
}

TEST(PointSpreadHistogram, ADistanceThatIsNotFiniteIsAnError) {
  for (double odd : {std::numeric_limits<double>::infinity(), std::nan("")}) {
    Counts counts{1};
    Values edges{1};
    EXPECT_THROW(spreadHistogram({1, odd, 2}, counts, edges), boost::math::rounding_error);
  }
}

}  // namespace
