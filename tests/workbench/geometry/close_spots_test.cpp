#include "workbench/geometry/close_spots.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

using Ids = std::vector<ZOR::reg::RefPointId>;

/// The ids of the points on each spot, of points at these places with ids from 0.
std::vector<Ids> spotsOf(const std::vector<OdGePoint3d>& places, double tolerance) {
  StateBuilder survey;
  survey.group("A");
  for (const OdGePoint3d& place : places) survey.point("?", place);
  std::vector<Ids> spots;
  for (const Spot& spot : closeSpots(placedPoints(survey.state, {{0, OdGeMatrix3d()}}), tolerance)) {
    Ids& ids = spots.emplace_back();
    for (const PlacedPoint& placed : spot) ids.push_back(placed.point->record.id);
  }
  return spots;
}

TEST(CloseSpots, HoldTwoPointsAtLeast) {
  EXPECT_EQ(spotsOf({}, 1.0), std::vector<Ids>{});
  EXPECT_EQ(spotsOf({{0, 0, 0}, {5, 0, 0}}, 1.0), std::vector<Ids>{});
}

TEST(CloseSpots, ChainPointsInEveryDirection) {
  EXPECT_EQ(spotsOf({{0, 0.8, 0}, {0, 0, 0}, {0.8, 0, 0}, {9, 0, 0}, {0, 0.8, 0.8}}, 1.0),
            (std::vector<Ids>{{0, 1, 2, 4}}));
}

TEST(CloseSpots, ComeBackAlongXWhereTheChainDoes) {
  EXPECT_EQ(spotsOf({{0, 0, 0}, {0.3, 1.2, 0}, {0.8, 0.5, 0}}, 1.0), (std::vector<Ids>{{0, 1, 2}}));
}

TEST(CloseSpots, EndWhereADistanceEqualsTheTolerance) {
  EXPECT_EQ(spotsOf({{0, 0, 0}, {3, 4, 0}}, 5.0), std::vector<Ids>{});
  EXPECT_EQ(spotsOf({{0, 0, 0}, {3, 4, 0}}, std::nextafter(5.0, 6.0)), (std::vector<Ids>{{0, 1}}));
}

TEST(CloseSpots, HoldEveryPointWhereOneHasNoPlace) {
  EXPECT_EQ(spotsOf({{0, 0, 0}, {50, 0, 0}, {0, std::nan(""), 0}, {99, 0, 0}}, 1.0), (std::vector<Ids>{{0, 1, 2, 3}}));
}

TEST(CloseSpots, PutPointsAtOneInfinityTogether) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  StateBuilder survey;
  survey.group("A").point("?").point("?").point("?").point("?");
  std::vector<PlacedPoint> placed;
  for (const double x : {infinity, 0.0, infinity, -infinity}) {
    placed.push_back({{x, 0, 0}, &survey.state.points[placed.size()]});
  }
  const std::vector<Spot> spots = closeSpots(placed, 1.0);
  ASSERT_EQ(spots.size(), 1u);
  ASSERT_EQ(spots[0].size(), 2u);
  EXPECT_EQ(spots[0][0].point->record.id, 0u);
  EXPECT_EQ(spots[0][1].point->record.id, 2u);
}

TEST(CloseSpots, AreOfTheGroupsWithAMotionWhereItPutsThem) {
  StateBuilder survey;
  survey.group("A").point("?", {0, 0, 0}).group("B").point("?", {7, 0, 0}).group("C").point("?", {0, 0, 0});
  OdGeMatrix3d back;
  back(0, 3) = -7;
  const std::vector<Spot> spots = closeSpots(placedPoints(survey.state, {{0, OdGeMatrix3d()}, {1, back}}), 0.5);
  ASSERT_EQ(spots.size(), 1u);
  ASSERT_EQ(spots[0].size(), 2u);
  EXPECT_EQ(spots[0][1].place, Eigen::Vector3d(0, 0, 0));
}

}  // namespace
}  // namespace tiepoint::workbench
