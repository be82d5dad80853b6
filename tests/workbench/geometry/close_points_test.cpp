#include "workbench/geometry/close_points.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "solver/arbitrary.h"
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

TEST(ClosePoints, HoldEveryPointWhereOneLacksASingleCoordinate) {
  StateBuilder survey;
  survey.group("A").point("?").point("?").point("?");
  const std::vector<PlacedPoint> placed{{{0, 0, 0}, &survey.state.points[0]},
                                        {{50, 0, 0}, &survey.state.points[1]},
                                        {{0, std::nan(""), 0}, &survey.state.points[2]}};
  const std::vector<PointCluster> clusters = closePointClusters(placed, 1.0);
  ASSERT_EQ(clusters.size(), 1u);
  EXPECT_EQ(clusters[0].size(), 3u);
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

/// By comparing every two points again and again.
std::vector<Ids> plainClusters(const std::vector<OdGePoint3d>& places, double tolerance) {
  std::vector<std::size_t> root(places.size());
  for (std::size_t i = 0; i < root.size(); ++i) root[i] = i;
  const auto distance = [&](std::size_t a, std::size_t b) {
    return Eigen::Vector3d(places[a].x - places[b].x, places[a].y - places[b].y, places[a].z - places[b].z).norm();
  };
  for (std::size_t a = 0; a < places.size(); ++a) {
    for (std::size_t b = 0; b < a; ++b) {
      if (distance(a, b) >= tolerance || root[a] == root[b]) continue;
      const std::size_t from = std::max(root[a], root[b]), to = std::min(root[a], root[b]);
      std::replace(root.begin(), root.end(), from, to);
    }
  }
  std::map<std::size_t, Ids> byRoot;
  for (std::size_t i = 0; i < root.size(); ++i) byRoot[root[i]].push_back(i);
  std::vector<Ids> clusters;
  for (const auto& entry : byRoot) {
    if (entry.second.size() > 1) clusters.push_back(entry.second);
  }
  return clusters;
}

RC_GTEST_PROP(ClosePoints, AreThoseOfAllPairs, ()) {
  std::vector<OdGePoint3d> places(tiepoint::testing::arbitraryBetween<std::size_t>(0, 20));
  const auto step = [] { return 0.5 * tiepoint::testing::arbitraryBetween(0, 8); };
  for (OdGePoint3d& place : places) place = {step(), step(), step()};
  const double tolerance = *rc::gen::element(0.0, 0.5, 0.51, 1.0, 1.2);
  std::vector<Ids> found = spotsOf(places, tolerance);
  std::sort(found.begin(), found.end());
  RC_ASSERT(found == plainClusters(places, tolerance));
}

TEST(ClosePoints, AreNoneWithinNothing) {
  EXPECT_EQ(spotsOf({{1, 1, 1}, {1, 1, 1}}, 0.0), std::vector<Ids>{});
  EXPECT_EQ(spotsOf({{1, 1, 1}, {1, 1, 1}}, std::numeric_limits<double>::denorm_min()), (std::vector<Ids>{{0, 1}}));
}

}  // namespace
}  // namespace tiepoint::workbench
