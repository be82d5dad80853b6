#include <gtest/gtest.h>

#include "support/session_builder.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

TEST(DataModel, ANameInTwoGroupsGivesTwoRecordsWithOneCommonId) {
  Session session;
  session.document().storeGroup("A", {{"T1", 1, 2, 3, 0.5}});
  session.document().storeGroup("B", {{"T1", 4, 5, 6}});
  std::map<GroupId, std::string> available;
  ASSERT_TRUE(session->getAvailableGroups(available));
  EXPECT_EQ(available, (std::map<GroupId, std::string>{{0, "A"}, {1, "B"}}));

  std::list<RefPoint> added;
  Outputs out;
  ASSERT_TRUE(session->addGroups({0, 1}, added, out.inactiveGroups, out.inactivePoints));
  ASSERT_EQ(added.size(), 2u);
  const RefPoint& first = added.front();
  const RefPoint& second = added.back();
  EXPECT_EQ(first.id, 0u);
  EXPECT_EQ(first.groupId, 0u);
  EXPECT_EQ(first.commonId, 0u);
  EXPECT_EQ(first.position, OdGePoint3d(1, 2, 3));
  EXPECT_EQ(first.weight, 0.5);
  EXPECT_EQ(second.id, 1u);
  EXPECT_EQ(second.groupId, 1u);
  EXPECT_EQ(second.commonId, 0u);
  EXPECT_EQ(second.position, OdGePoint3d(4, 5, 6));
}

TEST(DataModel, APointAsReadIsIncludedActiveAndOfNoBase) {
  Session session;
  session.document().storeGroup("A", {{"T1", 1, 2, 3}, {"?", 1, 2, 3}});
  std::map<GroupId, std::string> available;
  session->getAvailableGroups(available);
  std::list<RefPoint> added;
  Outputs out;
  session->addGroups({0}, added, out.inactiveGroups, out.inactivePoints);
  for (const RefPoint& point : added) {
    EXPECT_TRUE(point.included);
    EXPECT_TRUE(point.active);
    EXPECT_FALSE(point.inBase);
    EXPECT_FALSE(point.autoNamed);
  }
  EXPECT_TRUE(added.front().named);
  EXPECT_FALSE(added.back().named);
}

TEST(DataModel, TwoUnidentifiedPointsShareOneCommonIdAndAreNotNamed) {
  Session session;
  session.document().storeGroup("A", {{"?", 1, 0, 0}, {"?", 2, 0, 0}});
  std::map<GroupId, std::string> available;
  session->getAvailableGroups(available);
  std::list<RefPoint> added;
  Outputs out;
  session->addGroups({0}, added, out.inactiveGroups, out.inactivePoints);
  ASSERT_EQ(added.size(), 2u);
  EXPECT_EQ(added.front().commonId, added.back().commonId);
  EXPECT_FALSE(added.front().named);
  EXPECT_FALSE(added.back().named);
  EXPECT_EQ(session.commonNames(), std::vector<std::string>{"0:?"});
}

TEST(DataModel, NamesThatDifferInCaseAreTwoNames) {
  Session session({{"A", {{"T1", 0, 0, 0}, {"t1", 1, 0, 0}}}});
  EXPECT_EQ(session.commonNames(), (std::vector<std::string>{"0:T1", "1:t1"}));
}

TEST(DataModel, AFreshSessionReportsTheDefaultLimits) {
  Session session;
  std::uint64_t maxIterations = 0;
  double convergenceCriteria = 0.0;
  session->getIterationLimits(maxIterations, convergenceCriteria);
  EXPECT_EQ(maxIterations, 100u);
  EXPECT_EQ(convergenceCriteria, 0.001);
}

TEST(DataModel, TheProfileReachesASessionThatIsMadeLater) {
  SessionHost host;
  MultiRegistrator before;
  host.profile().set("PointClouds\\Registration", "MaxIterations", 250);
  host.profile().set("PointClouds\\Registration", "ConvergenceCriteria", 0.5);
  MultiRegistrator after;
  std::uint64_t maxIterations = 0;
  double convergenceCriteria = 0.0;
  before.getIterationLimits(maxIterations, convergenceCriteria);
  EXPECT_EQ(maxIterations, 100u);
  after.getIterationLimits(maxIterations, convergenceCriteria);
  EXPECT_EQ(maxIterations, 250u);
  EXPECT_EQ(convergenceCriteria, 0.5);
}

TEST(DataModel, AFreshSessionHasTheDefaultTolerances) {
  Session session;
  double distance = 0.0;
  double side = 0.0;
  double difference = 0.0;
  session->getMatchDistanceTolerance(distance);
  session->getTriangleMatchTolerances(side, difference);
  EXPECT_EQ(distance, 0.1);
  EXPECT_EQ(side, 0.001);
  EXPECT_EQ(difference, 0.1);
}

TEST(DataModel, AnEmptySessionHasNoUnnamedPoints) {
  Session session;
  EXPECT_FALSE(session->hasUnnamedPoints());
  EXPECT_FALSE(session->hasUnnamedPointsInRegisteredGroups());
}

TEST(DataModel, AnUnnamedPointIsSeenOnlyOnceItsGroupIsInTheSession) {
  Session session;
  session.document().storeGroup("A", {{"?", 1, 0, 0}});
  std::map<GroupId, std::string> available;
  session->getAvailableGroups(available);
  EXPECT_FALSE(session->hasUnnamedPoints());
  session.addAllGroups();
  EXPECT_TRUE(session->hasUnnamedPoints());
  EXPECT_FALSE(session->hasUnnamedPointsInRegisteredGroups());
}

TEST(DataModel, CommonPointNamesBeforeAnythingWasReadAreRefusedAndTheListStays) {
  Session session;
  std::list<NamedId> names{{7, "kept"}};
  EXPECT_FALSE(session->getCommonPointNames(names));
  ASSERT_EQ(names.size(), 1u);
  EXPECT_EQ(names.front().id, 7u);
  EXPECT_EQ(names.front().name, "kept");
}

TEST(DataModel, TwoSessionsAreIndependent) {
  SessionHost host;
  host.document().storeGroup("A", triangle("T1", "T2", "T3"));
  MultiRegistrator one;
  MultiRegistrator other;
  std::map<GroupId, std::string> available;
  ASSERT_TRUE(one.getAvailableGroups(available));
  std::list<NamedId> names;
  EXPECT_TRUE(one.getCommonPointNames(names));
  EXPECT_FALSE(other.getCommonPointNames(names));
}

}  // namespace
