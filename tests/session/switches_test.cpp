#include <gtest/gtest.h>

#include <limits>

#include "support/session_builder.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

using Ids = std::set<std::uint64_t>;

Session twoStations() { return Session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}}); }

TEST(Switches, AnEmptySetForTheBaseLeavesTheOutputsAlone) {
  Session session = twoStations();
  Outputs out;
  session->setBaseGroups({}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  session->unsetBaseGroups({}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.groups, Ids{991});
  EXPECT_EQ(out.points, Ids{992});
  EXPECT_EQ(out.inactiveGroups, Ids{993});
  EXPECT_EQ(out.inactivePoints, Ids{994});
}

TEST(Switches, BaseGroupsAddToThoseThatAreBaseAlready) {
  Session session(
      {{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}, {"C", triangle("T1", "T2", "T3", 9)}});
  Outputs out;
  session->setBaseGroups({0}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.groups, Ids{0});
  EXPECT_EQ(out.points, (Ids{0, 1, 2}));
  session->setBaseGroups({2}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.groups, (Ids{0, 2}));
  EXPECT_EQ(out.points, (Ids{0, 1, 2, 6, 7, 8}));
  EXPECT_EQ(out.inactivePoints, Ids{});
  session->unsetBaseGroups({0}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.groups, Ids{2});
}

TEST(Switches, AllGroupsInTheBaseLeaveNothingToRegister) {
  Session session = twoStations();
  Outputs out;
  session->setBaseGroups({0, 1}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.inactiveGroups, (Ids{0, 1}));
}

TEST(Switches, ExcludingAPointReportsGroupsWithoutAnIncludedOne) {
  Session session({{"A", {{"T1", 0, 0, 0}}}, {"B", triangle("T1", "T2", "T3")}});
  Outputs out;
  session->excludePoints({0, 3}, out.groups, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.groups, Ids{0});
  EXPECT_EQ(out.inactivePoints, (Ids{0, 1, 2, 3}));
  session->includePoints({0}, out.groups, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.groups, Ids{});
}

TEST(Switches, AnEmptySetOfPointsStillReports) {
  Session session = twoStations();
  Outputs out;
  session->includePoints({}, out.groups, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.groups, Ids{});
  EXPECT_EQ(out.inactiveGroups, Ids{});
  EXPECT_EQ(out.inactivePoints, Ids{});
  Outputs again;
  session->excludeGroups({}, again.points, again.inactiveGroups, again.inactivePoints);
  EXPECT_EQ(again.points, Ids{});
  EXPECT_EQ(again.inactivePoints, Ids{});
}

TEST(Switches, ExcludingAGroupExcludesItsPointsUntilItIsIncluded) {
  Session session = twoStations();
  Outputs out;
  session->excludeGroups({1}, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.points, (Ids{3, 4, 5}));
  EXPECT_EQ(out.inactiveGroups, (Ids{0, 1}));
  session->includeGroups({1}, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.points, Ids{});
  EXPECT_EQ(out.inactiveGroups, Ids{});
}

TEST(Switches, AWeightOfOneIsTakenAndOneBeyondTheBoundsIsRefused) {
  Session session = twoStations();
  Outputs out;
  EXPECT_TRUE(session->setPointsWeight({0}, 1.0, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(out.inactivePoints, Ids{});
  for (double refused : {std::nextafter(1.0, 2.0), 2.0, -0.1, -std::numeric_limits<double>::denorm_min(),
                         std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    Outputs untouched;
    EXPECT_FALSE(session->setPointsWeight({0, 1, 2}, refused, untouched.inactiveGroups, untouched.inactivePoints));
    EXPECT_EQ(untouched.inactivePoints, Ids{994});
  }
  EXPECT_EQ(session.inactivePoints(), Ids{});
}

TEST(Switches, AWeightOfZeroTakesThePointOutAndARaisedOneBringsItBack) {
  Session session({{"A", {{"T1", 0, 0, 0}, {"T2", 5, 0, 0}, {"T3", 0, 5, 0}, {"T4", 0, 0, 5}}},
                   {"B", {{"T1", 0, 0, 0}, {"T2", 5, 0, 0}, {"T3", 0, 5, 0}, {"T4", 0, 0, 5}}}});
  Outputs out;
  EXPECT_TRUE(session->setPointsWeight({0}, 0.0, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(out.inactivePoints, (Ids{0, 4}));
  EXPECT_TRUE(session->setPointsWeight({0}, 0.5, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(out.inactivePoints, Ids{});
}

}  // namespace
