#include <gtest/gtest.h>

#include <cmath>

#include "support/session_builder.h"
#include "workbench/view/recording_draw.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

/// Distances here are of the order of 10; the fit rounds in the last digits.
constexpr double rounding = 1e-12;

std::vector<double> drawnX(Session& session) {
  tiepoint::workbench::RecordingDraw draw(session.document().view());
  draw.draw(*session.document().drawables().front().drawable);
  std::vector<double> xs;
  for (const auto& text : draw.texts()) xs.push_back(text.position.x);
  return xs;
}

TEST(Solving, WithoutActivePointsThePairwiseMethodRefusesAndEmptiesTheClusters) {
  Session session({{"A", triangle("T1", "T2", "T3")},
                   {"B", triangle("T1", "T2", "T3", 5)},
                   {"C", triangle("U1", "U2", "U3")},
                   {"D", triangle("U1", "U2", "U3", 5)}});
  std::map<RefPointId, double> discrepancies{{1, 2.0}};
  ASSERT_FALSE(session->registerPairwise(discrepancies));
  EXPECT_TRUE(discrepancies.empty());
  std::map<std::uint64_t, GroupIdSet> clusters;
  session->getGroupClusters(clusters);
  ASSERT_EQ(clusters.size(), 2u);
  Outputs out;
  session->excludeGroups({0, 1, 2, 3}, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_FALSE(session->registerPairwise(discrepancies));
  session->getGroupClusters(clusters);
  EXPECT_TRUE(clusters.empty());
}

TEST(Solving, ASuccessLeavesTheClustersOfAnEarlierRefusal) {
  Session session({{"A", triangle("T1", "T2", "T3")},
                   {"B", triangle("T1", "T2", "T3", 5)},
                   {"C", triangle("U1", "U2", "U3")},
                   {"D", triangle("U1", "U2", "U3", 5)}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_FALSE(session->registerPairwise(discrepancies));
  Outputs out;
  session->keepGroupCluster(0, out.points, out.inactiveGroups, out.inactivePoints);
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  std::map<std::uint64_t, GroupIdSet> clusters;
  session->getGroupClusters(clusters);
  EXPECT_EQ(clusters.size(), 2u);
}

TEST(Solving, ASecondSolveWithoutClearingMovesTheMarkersOnceMore) {
  // The base pins the common system, so B's own motion is the same each time: 5 to the left.
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  Outputs out;
  session->setBaseGroups({0}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_NEAR(drawnX(session)[3], 1.0, rounding);
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_NEAR(drawnX(session)[3], -4.0, rounding);
  session->clearResults();
  EXPECT_NEAR(drawnX(session)[3], 1.0, rounding);
}

TEST(Solving, OneGroupIsRefusedAndEmptiesTheClusters) {
  Session session({{"A", triangle("T1", "T2", "T3")},
                   {"B", triangle("T1", "T2", "T3", 5)},
                   {"C", triangle("U1", "U2", "U3")},
                   {"D", triangle("U1", "U2", "U3", 5)}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_FALSE(session->registerPairwise(discrepancies));
  std::map<std::uint64_t, GroupIdSet> clusters;
  session->getGroupClusters(clusters);
  ASSERT_EQ(clusters.size(), 2u);
  Outputs out;
  session->removeGroups({1, 2, 3}, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_FALSE(session->registerPairwise(discrepancies));
  session->getGroupClusters(clusters);
  EXPECT_TRUE(clusters.empty());
}

TEST(Solving, ARefusalLeavesTheResultsOfAnEarlierSolve) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  Outputs out;
  session->excludeGroups({1}, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_FALSE(session->registerPairwise(discrepancies));
  session.document().addCloud("B");
  std::list<NamedId> clouds;
  session->getPointClouds(clouds);
  EXPECT_TRUE(session->applyTransformations());
  EXPECT_NEAR(session.document().cloudMatrix("B")(0, 3), -5.0, rounding);
}

TEST(Solving, MarkersMoveToTheirRegisteredPositionsAndComeBack) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  const std::vector<double> registered = drawnX(session);
  ASSERT_EQ(registered.size(), 6u);
  EXPECT_NEAR(registered[3], 1.0, rounding);
  session->clearResults();
  EXPECT_EQ(drawnX(session), (std::vector<double>{1, 11, 1, 6, 16, 6}));
}

TEST(Solving, ClearingWithoutResultsTakesTheDisplayOfBeforeTheLastSolve) {
  // Nothing was solved yet, so nothing stands there.
  Session session({{"A", triangle("T1", "T2", "T3")}});
  ASSERT_EQ(drawnX(session).size(), 3u);
  session->clearResults();
  EXPECT_EQ(drawnX(session).size(), 0u);
  EXPECT_EQ(session.commonNames(), (std::vector<std::string>{"0:T1", "1:T2", "2:T3"}));
  EXPECT_FALSE(session->hasUnnamedPoints());
}

TEST(Solving, AHiddenGroupStaysHiddenThroughASolve) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  session->setGroupsVisible({0}, false);
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_EQ(drawnX(session).size(), 3u);
}

TEST(Solving, UnnamedPointsOfRegisteredGroupsAreReported) {
  Session session(
      {{"A", triangle("T1", "T2", "T3")}, {"B", {{"T1", 1, 0, 0}, {"T2", 11, 0, 0}, {"T3", 1, 7, 2}, {"?", 4, 4, 4}}}});
  EXPECT_TRUE(session->hasUnnamedPoints());
  EXPECT_FALSE(session->hasUnnamedPointsInRegisteredGroups());
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_TRUE(session->hasUnnamedPointsInRegisteredGroups());
}

TEST(Solving, PointsMeasuredTwiceInTheBaseGetTheirDiscrepanciesBeforeAnyFit) {
  // Two base groups see T1 0.3 apart; weights 1 and 0.5 put the merged target 0.1 from the first.
  Session session({{"A", {{"T1", 0, 0, 0}, {"T2", 10, 0, 0}}},
                   {"B", {{"T1", 0.3, 0, 0, 0.5}, {"T3", 0, 10, 0}}},
                   {"C", {{"T1", 0.1, 0, 0}, {"T2", 10, 0, 0}, {"T3", 0, 10, 0}}}});
  Outputs out;
  session->setBaseGroups({0, 1}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  ASSERT_EQ(out.inactivePoints, RefPointIdSet{});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_NEAR(discrepancies.at(0), 0.1, rounding);
  EXPECT_NEAR(discrepancies.at(2), 0.2, rounding);
}

/// What the session says of its limits, as "iterations/criterion".
std::string limitsOf(Session& session) {
  std::uint64_t iterations = 0;
  double criterion = 0.0;
  session->getIterationLimits(iterations, criterion);
  return std::to_string(iterations) + "/" + std::to_string(criterion);
}

TEST(Solving, BadLimitsAreRefusedAndTheOldOnesStay) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  for (const auto& [iterations, criterion] :
       {std::pair<std::uint64_t, double>{0, 0.1}, {10, 0.0}, {10, -1.0}, {10, std::nan("")}}) {
    std::map<RefPointId, double> discrepancies{{1, 2.0}};
    EXPECT_FALSE(session->registerIterative(iterations, criterion, discrepancies));
    EXPECT_TRUE(discrepancies.empty());
    EXPECT_EQ(limitsOf(session), "100/0.001000");
  }
}

TEST(Solving, TheLimitsOfARunAreReadBack) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  std::map<RefPointId, double> discrepancies;
  EXPECT_TRUE(session->registerIterative(250, 0.5, discrepancies));
  EXPECT_EQ(limitsOf(session), "250/0.500000");
}

TEST(Solving, TheIterativeMethodJoinsGroupsWithoutATestOfLinkage) {
  Session session({{"A", triangle("T1", "T2", "T3")},
                   {"B", triangle("T1", "T2", "T3", 5)},
                   {"C", triangle("U1", "U2", "U3")},
                   {"D", triangle("U1", "U2", "U3", 5)}});
  std::map<RefPointId, double> discrepancies;
  EXPECT_FALSE(session->registerPairwise(discrepancies));
  EXPECT_TRUE(session->registerIterative(100, 0.001, discrepancies));
  EXPECT_NEAR(drawnX(session)[3], drawnX(session)[0], 1e-9);
}

TEST(Solving, ASingleGroupIsAcceptedAndLeavesTheResultsAsTheyWere) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  const std::wstring before = session->getResultsReport();
  Outputs out;
  session->excludeGroups({1}, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_TRUE(session->registerIterative(100, 0.001, discrepancies));
  EXPECT_TRUE(discrepancies.empty());
  EXPECT_EQ(session->getResultsReport(), before);
}

TEST(Solving, ASingleBaseOfTwoGroupsKeepsItsMergedDiscrepancies) {
  Session session({{"A", {{"T1", 0, 0, 0}, {"T2", 10, 0, 0}}},
                   {"B", {{"T1", 0.3, 0, 0, 0.5}, {"T3", 0, 10, 0}}},
                   {"C", {{"T1", 0.1, 0, 0}, {"T2", 10, 0, 0}, {"T3", 0, 10, 0}}}});
  Outputs out;
  session->setBaseGroups({0, 1}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  std::map<RefPointId, double> discrepancies;
  EXPECT_TRUE(session->registerIterative(100, 0.001, discrepancies));
  EXPECT_NEAR(discrepancies.at(0), 0.1, rounding);
  EXPECT_NEAR(discrepancies.at(2), 0.2, rounding);
}

TEST(Solving, TheCompleteMethodIsAMemberOfItsOwn) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  std::map<GroupId, std::string> available;
  std::list<RefPoint> points;
  Outputs out;
  session->removeGroups({0, 1}, out.points, out.inactiveGroups, out.inactivePoints);
  ASSERT_TRUE(session->addGroups({0, 1}, points, out.inactiveGroups, out.inactivePoints));
  std::map<RefPointId, double> discrepancies{{77, 1.0}};
  session->registerComplete(points, 0, discrepancies);
  EXPECT_EQ(discrepancies.at(77), 1.0);
  EXPECT_NE(session->getResultsReport().find(L"<p>Complite</p>"), std::wstring::npos);
  EXPECT_NE(session->getResultsReport().find(L"<h4>A</h4></p><p>Not registered</p>"), std::wstring::npos);
}

}  // namespace
