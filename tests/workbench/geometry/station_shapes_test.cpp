#include "workbench/geometry/station_shapes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

using Ids = std::vector<ZOR::reg::RefPointId>;

Ids idsOf(const SessionState& state, const Station& station) {
  Ids ids;
  for (const std::size_t index : station.indices) ids.push_back(state.points[index].record.id);
  return ids;
}

TEST(StationsOf, HoldThePointsToUse) {
  StateBuilder survey;
  survey.group("A").point("?", {0, 0, 0}).point("?", {1, 0, 0});
  survey.last().included = false;
  survey.point("?", {0, std::nan(""), 0}).point("?", {0, 4, 0});
  survey.group("B").point("T1", {7, 8, 9}).inactive();
  survey.group("C").point("?", {5, 5, 5});
  survey.last().included = false;
  const Stations stations = stationsOf(survey.state);
  ASSERT_EQ(stations.size(), 2u);
  EXPECT_EQ(idsOf(survey.state, stations.at(0)), (Ids{0, 3}));
  EXPECT_EQ(stations.at(0).shape.points[1], Eigen::Vector3d(0, 4, 0));
  EXPECT_EQ(stations.at(0).indexInShape.at(3), 1u);
  EXPECT_EQ(idsOf(survey.state, stations.at(1)), (Ids{4}));
}

TEST(SharedNames, AreThoseOfEligiblePointsInBothGroups) {
  StateBuilder survey;
  survey.group("A").points({"T1", "T2", "?", "T4"});
  survey.last().weight = 0.0;
  survey.group("B").points({"T4", "?", "T2", "T1"});
  survey.last().included = false;
  EXPECT_EQ(sharedNames(survey.state, 0, 1), (PointPairs{{1, 6}}));
  EXPECT_EQ(sharedNames(survey.state, 1, 0), (PointPairs{{6, 1}}));
}

TEST(CountSharedNames, IsHowManyPairsShareANameAlsoWhereAGroupHasItTwice) {
  StateBuilder survey;
  survey.group("A").points({"T3", "T1", "T2", "T1", "?", "?", "T5"});
  survey.last().included = false;
  survey.group("B").points({"T1", "T4", "T3", "T3", "?", "T5"}).group("C").points({"T4"}).group("D");
  const NamesByGroup names = namesByGroup(survey.state);
  for (const ZOR::reg::GroupId one : {0u, 1u, 2u, 3u}) {
    for (const ZOR::reg::GroupId other : {0u, 1u, 2u, 3u}) {
      EXPECT_EQ(countSharedNames(names, one, other), sharedNames(survey.state, one, other).size()) << one << other;
    }
  }
  EXPECT_EQ(countSharedNames(names, 0, 1), 2u);
}

TEST(IsSound, NeedsEveryDiscrepancyWithinTheLimit) {
  StateBuilder survey;
  survey.group("A").points({"T1", "T2"});
  survey.state.discrepancies = {{0, 0.01}, {1, 0.02}};
  EXPECT_EQ(largestDiscrepancy(survey.state), 0.02);
  EXPECT_TRUE(isSound(survey.state, 0.02));
  EXPECT_FALSE(isSound(survey.state, std::nextafter(0.02, 0.0)));
}

TEST(IsSound, IsNoSolveWithADiscrepancyThatIsNoNumber) {
  const double lost = std::nan("");
  StateBuilder survey;
  survey.group("A").points({"T1", "T2", "T3"});
  survey.state.discrepancies = {{0, 0.01}, {1, lost}, {2, 0.02}};
  EXPECT_TRUE(std::isnan(largestDiscrepancy(survey.state)));
  EXPECT_FALSE(isSound(survey.state, 1.0));
  EXPECT_FALSE(isSound(survey.state, std::numeric_limits<double>::infinity()));
}

TEST(IsSound, IsNoNamingThatGivesAGroupOneNameTwice) {
  StateBuilder survey;
  survey.group("A").points({"T1", "T2"}).group("B").points({"T1", "T1"});
  EXPECT_FALSE(isSound(survey.state, 1.0));
  survey.last().active = false;
  EXPECT_TRUE(isSound(survey.state, 1.0));
}

}  // namespace
}  // namespace tiepoint::workbench
