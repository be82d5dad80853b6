// How far registered points of one name stay apart.
#include "workbench/geometry/point_spread.h"

#include <gmock/gmock.h>

#include <limits>

namespace tiepoint::workbench {
namespace {

using testing::DoubleEq;
using testing::ElementsAre;
using Places = std::vector<std::vector<Eigen::Vector3d>>;

/// One target for each distance, seen twice.
Places apart(const std::vector<double>& distances) {
  Places places;
  for (const double distance : distances) places.push_back({{1, 2, 3}, {1, 2, 3 + distance}});
  return places;
}

TEST(SpreadOfPlaces, IsTheLargestDistanceOfTwoPointsOfOneTargetCutToSevenDecimals) {
  EXPECT_DOUBLE_EQ(*spreadOf(apart({0.5, 0.12345678, 0.25})).largest, 0.5);
  EXPECT_NEAR(*spreadOf({{{0, 0, 0}, {0.123456789, 0, 0}}, {{50, 0, 0}}}).largest, 0.1234567, 1e-15);
}

TEST(SpreadOfPlaces, CountsEveryPairOfATarget) {
  const PointSpread spread = spreadOf({{{0, 0, 0}, {1, 0, 0}, {11, 0, 0}}});
  EXPECT_THAT(spread.counts, ElementsAre(1u, 0u, 0u, 0u, 0u, 0u, 0u, 0u, 0u, 2u)) << "1, 10 and 11";
  ASSERT_EQ(spread.edges.size(), 11u);
  EXPECT_DOUBLE_EQ(spread.edges.front(), 1.0);
  EXPECT_DOUBLE_EQ(spread.edges.back(), 11.0);
}

TEST(SpreadOfPlaces, HasNoHistogramOfTwoDistances) {
  const PointSpread spread = spreadOf(apart({1.0, 2.0}));
  EXPECT_TRUE(spread.counts.empty());
  EXPECT_TRUE(spread.edges.empty());
}

TEST(SpreadOfPlaces, EqualDistancesStandInTheLastBin) {
  EXPECT_THAT(spreadOf(apart({2.0, 2.0, 2.0})).counts, ElementsAre(0u, 0u, 0u, 0u, 0u, 0u, 0u, 0u, 0u, 3u));
}

TEST(SpreadOfPlaces, IsZeroWithoutPairs) { EXPECT_EQ(spreadOf({{{1, 2, 3}}}).largest, 0.0); }

TEST(SpreadOfPlaces, IsUnknownWhereADistanceIsNotFinite) {
  EXPECT_FALSE(spreadOf(apart({1.0, std::numeric_limits<double>::infinity()})).largest);
}

}  // namespace
}  // namespace tiepoint::workbench
