#include "workbench/geometry/close_points.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

using Ids = std::vector<ZOR::reg::RefPointId>;

/// The ids of the points on each cluster, of points at these places with ids from 0.
std::vector<Ids> spotsOf(const std::vector<OdGePoint3d>& places, double tolerance) {
  StateBuilder survey;
  survey.group("A");
  for (const OdGePoint3d& position : places) survey.point("?", position);
  std::vector<Ids> clusters;
  for (const PointCluster& cluster : closePointClusters(placedPoints(survey.state, {{0, OdGeMatrix3d()}}), tolerance)) {
    Ids& ids = clusters.emplace_back();
    for (const PlacedPoint& placed : cluster) ids.push_back(placed.point->record.id);
  }
  return clusters;
}

TEST(ClosePoints, HoldTwoPointsAtLeast) {
  EXPECT_EQ(spotsOf({}, 1.0), std::vector<Ids>{});
  EXPECT_EQ(spotsOf({{0, 0, 0}, {5, 0, 0}}, 1.0), std::vector<Ids>{});
}

TEST(ClosePoints, ChainPointsInEveryDirection) {
  EXPECT_EQ(spotsOf({{0, 0.8, 0}, {0, 0, 0}, {0.8, 0, 0}, {9, 0, 0}, {0, 0.8, 0.8}}, 1.0),
            (std::vector<Ids>{{0, 1, 2, 4}}));
}

TEST(ClosePoints, ComeBackAlongXWhereTheChainDoes) {
  EXPECT_EQ(spotsOf({{0, 0, 0}, {0.3, 1.2, 0}, {0.8, 0.5, 0}}, 1.0), (std::vector<Ids>{{0, 1, 2}}));
}

TEST(ClosePoints, EndWhereADistanceEqualsTheTolerance) {
  EXPECT_EQ(spotsOf({{0, 0, 0}, {3, 4, 0}}, 5.0), std::vector<Ids>{});
  EXPECT_EQ(spotsOf({{0, 0, 0}, {3, 4, 0}}, std::nextafter(5.0, 6.0)), (std::vector<Ids>{{0, 1}}));
}

TEST(ClosePoints, HoldEveryPointWhereOneHasNoPosition) {
  EXPECT_EQ(spotsOf({{0, 0, 0}, {50, 0, 0}, {0, std::nan(""), 0}, {99, 0, 0}}, 1.0), (std::vector<Ids>{{0, 1, 2, 3}}));
}

TEST(ClosePoints, PutPointsAtOneInfinityTogether) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  StateBuilder survey;
  survey.group("A").point("?").point("?").point("?").point("?");
  std::vector<PlacedPoint> placed;
  for (const double x : {infinity, 0.0, infinity, -infinity}) {
    placed.push_back({{x, 0, 0}, &survey.state.points[placed.size()]});
  }
  const std::vector<PointCluster> clusters = closePointClusters(placed, 1.0);
  ASSERT_EQ(clusters.size(), 1u);
  ASSERT_EQ(clusters[0].size(), 2u);
  EXPECT_EQ(clusters[0][0].point->record.id, 0u);
  EXPECT_EQ(clusters[0][1].point->record.id, 2u);
}

TEST(ClosePoints, AreOfTheGroupsWithAMotionWhereItPutsThem) {
  StateBuilder survey;
  survey.group("A").point("?", {0, 0, 0}).group("B").point("?", {7, 0, 0}).group("C").point("?", {0, 0, 0});
  OdGeMatrix3d back;
  back(0, 3) = -7;
  const std::vector<PointCluster> clusters =
      closePointClusters(placedPoints(survey.state, {{0, OdGeMatrix3d()}, {1, back}}), 0.5);
  ASSERT_EQ(clusters.size(), 1u);
  ASSERT_EQ(clusters[0].size(), 2u);
  EXPECT_EQ(clusters[0][1].position, Eigen::Vector3d(0, 0, 0));
}

}  // namespace
}  // namespace tiepoint::workbench
