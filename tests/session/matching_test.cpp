#include <gtest/gtest.h>

#include "support/session_builder.h"
#include "workbench/view/recording_draw.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

using Ids = std::set<std::uint64_t>;
using Names = std::map<RefPointId, std::string>;
using Texts = std::vector<std::string>;

/// One matching with its outputs.
struct Match {
  Names names{{99, "gone"}};
  Outputs out;
};

Match matchAll(Session& session, double sideTolerance = 0.001, double minSideDifference = 0.1) {
  Match match;
  session->matchAllGroupsByTriangles(sideTolerance, minSideDifference, match.names, match.out.inactiveGroups,
                                     match.out.inactivePoints);
  return match;
}

Match matchNear(Session& session, double tolerance) {
  Match match;
  session->matchPointsByDistance(tolerance, match.names, match.out.inactiveGroups, match.out.inactivePoints);
  return match;
}

OdString textOfMarker(Session& session, std::size_t marker) {
  tiepoint::workbench::RecordingDraw draw(session.document().view());
  draw.draw(*session.document().drawables().front().drawable);
  return draw.texts().at(marker).text;
}

/// The same triangle of sides 3, 4, 5 in two stations.
std::vector<Target> nameless(double shift) {
  return {{"?", 1 + shift, 1, 1}, {"?", 4 + shift, 1, 1}, {"?", 1 + shift, 5, 1}};
}

TEST(Matching, NamelessStationsAreNamedAndRegistered) {
  Session session({{"A", nameless(0)}, {"B", nameless(50)}});
  const Match match = matchAll(session);
  // 3 lies opposite points 2 and 5, 4 opposite 1 and 4, 5 opposite 0 and 3; id 0 is "?".
  EXPECT_EQ(match.names, (Names{{2, "auto1"}, {5, "auto1"}, {1, "auto2"}, {4, "auto2"}, {0, "auto3"}, {3, "auto3"}}));
  EXPECT_EQ(match.out.inactiveGroups, Ids{});
  EXPECT_EQ(match.out.inactivePoints, Ids{});
  EXPECT_EQ(session.commonNames(), (Texts{"0:?", "1:auto1", "2:auto2", "3:auto3"}));
  std::map<RefPointId, double> discrepancies;
  EXPECT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_EQ(session->getMaxPointSpread(), 0.0);
}

TEST(Matching, OneThatFindsNothingStoresItsTolerancesAndFillsTheSets) {
  Session session({{"A", nameless(0)}});
  const Match match = matchAll(session, 0.5, 0.25);
  EXPECT_EQ(match.names, Names{});
  EXPECT_EQ(match.out.inactiveGroups, Ids{0});
  EXPECT_EQ(match.out.inactivePoints, (Ids{0, 1, 2}));
  const Match near = matchNear(session, 7.0);
  EXPECT_EQ(near.names, Names{});
  EXPECT_EQ(near.out.inactivePoints, (Ids{0, 1, 2}));
  double side = 0.0;
  double difference = 0.0;
  double distance = 0.0;
  session->getTriangleMatchTolerances(side, difference);
  session->getMatchDistanceTolerance(distance);
  EXPECT_EQ(side, 0.5);
  EXPECT_EQ(difference, 0.25);
  EXPECT_EQ(distance, 7.0);
}

TEST(Matching, OneOfChosenGroupsStoresItsTolerancesToo) {
  Session session({{"A", nameless(0)}});
  Match match;
  session->matchGroupsByTriangles({0}, 0.75, 0.125, match.names, match.out.inactiveGroups, match.out.inactivePoints);
  EXPECT_EQ(match.names, Names{});
  EXPECT_EQ(match.out.inactiveGroups, Ids{0});
  EXPECT_EQ(match.out.inactivePoints, (Ids{0, 1, 2}));
  double side = 0.0;
  double difference = 0.0;
  session->getTriangleMatchTolerances(side, difference);
  EXPECT_EQ(side, 0.75);
  EXPECT_EQ(difference, 0.125);
}

TEST(Matching, ItDrawsOnceWhenItNamesSomethingAndElseNotAtAll) {
  Session session({{"A", nameless(0)}, {"B", nameless(50)}});
  const auto redraws = session.host.redraws;
  EXPECT_EQ(matchNear(session, 0.1).names, Names{});
  EXPECT_EQ(session.host.redraws, redraws);
  EXPECT_EQ(matchAll(session).names.size(), 6u);
  EXPECT_EQ(session.host.redraws, redraws + 1);
}

TEST(Matching, NewNamesFillTheGapsInTheNumbering) {
  Session session({{"A", {{"a", 10, 0, 0}, {"b", 20, 0, 0}, {"c", 10, 7, 0}, {"?", 30, 30, 0}, {"?", 40, 40, 0}}},
                   {"B", {{"a", 10, 0, 0}, {"b", 20, 0, 0}, {"c", 10, 7, 0}, {"?", 30, 30, 0}, {"?", 40, 40, 0}}}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  Outputs out;
  GroupId group = 0;
  // The name a goes with its last point and leaves id 0 free.
  ASSERT_TRUE(session->renamePoint(0, "x", group, out.inactiveGroups, out.inactivePoints));
  ASSERT_TRUE(session->renamePoint(5, "x", group, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(session.commonNames(), (Texts{"1:b", "2:c", "3:?", "4:x"}));
  const Match match = matchNear(session, 0.1);
  EXPECT_EQ(match.names, (Names{{3, "auto0"}, {8, "auto0"}, {4, "auto5"}, {9, "auto5"}}));
  EXPECT_EQ(session.commonNames(), (Texts{"1:b", "2:c", "3:?", "4:x", "0:auto0", "5:auto5"}));
}

TEST(Matching, NewIdsAreTheLowestThatNoNameHas) {
  Session session({{"A", {{"a", 0, 0, 0}, {"b", 3, 0, 0}, {"x", 0, 4, 0}, {"?", 0, 0, 12}}},
                   {"B", {{"a", 0, 0, 7}, {"b", 3, 0, 7}, {"?", 0, 4, 7}, {"?", 0, 0, 19}}}});
  Outputs out;
  GroupId group = 0;
  // The name x goes with its only point and leaves id 2 free.
  ASSERT_TRUE(session->renamePoint(2, "?", group, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(session.commonNames(), (Texts{"0:a", "1:b", "3:?"}));
  EXPECT_EQ(matchAll(session).names, (Names{{2, "auto2"}, {6, "auto2"}, {3, "auto4"}, {7, "auto4"}}));
  EXPECT_EQ(session.commonNames(), (Texts{"0:a", "1:b", "3:?", "2:auto2", "4:auto4"}));
}

TEST(Matching, PointsThatGoOverToAnotherAutomaticNameAreReported) {
  Session session({{"A", nameless(0)}, {"B", nameless(50)}, {"C", nameless(100)}, {"D", nameless(150)}});
  Match match;
  for (const GroupIdSet& pair : {GroupIdSet{0, 1}, GroupIdSet{2, 3}}) {
    session->matchGroupsByTriangles(pair, 0.001, 0.1, match.names, match.out.inactiveGroups, match.out.inactivePoints);
  }
  EXPECT_EQ(match.names, (Names{{8, "auto4"}, {11, "auto4"}, {7, "auto5"}, {10, "auto5"}, {6, "auto6"}, {9, "auto6"}}));
  Outputs out;
  GroupId group = 0;
  ASSERT_TRUE(session->renamePoint(9, "?", group, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(matchAll(session).names,
            (Names{{8, "auto1"}, {11, "auto1"}, {7, "auto2"}, {10, "auto2"}, {6, "auto3"}, {9, "auto3"}}));
  // Names that nobody bears any more stay in the table.
  EXPECT_EQ(session.commonNames(), (Texts{"0:?", "1:auto1", "2:auto2", "3:auto3", "4:auto4", "5:auto5", "6:auto6"}));
}

TEST(Matching, AUsersNameGivesWayOnASpotWithAnotherNameAndAnUnnamedPoint) {
  const auto station = [](const char* fourth, double height) {
    return std::vector<Target>{{"a", 10, 0, 0}, {"b", 20, 0, 0}, {"c", 10, 7, 0}, {fourth, 30, 30, height}};
  };
  Session session(
      {{"A", station("d", 0)}, {"B", station("?", 0.05)}, {"C", station("?", 0.06)}, {"D", station("?", 0.3)}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_EQ(matchNear(session, 0.02).names, (Names{{7, "auto5"}, {11, "auto5"}}));
  EXPECT_EQ(matchNear(session, 0.5).names, (Names{{3, "auto6"}, {7, "auto6"}, {11, "auto6"}, {15, "auto6"}}));
}

TEST(Matching, AnUnnamedPointThatJoinsAUsersNameIsTheUsers) {
  Session session({{"A", {{"a", 10, 0, 0}, {"b", 20, 0, 0}, {"c", 10, 7, 0}, {"d", 30, 30, 0}}},
                   {"B", {{"a", 10, 0, 0}, {"b", 20, 0, 0}, {"c", 10, 7, 0}, {"?", 30, 30, 0.01}}}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_EQ(matchNear(session, 0.1).names, (Names{{7, "d"}}));
  EXPECT_FALSE(session->hasUnnamedPoints());
  EXPECT_EQ(matchNear(session, 0.1).names, Names{});
}

/// Three stations that share a, b and c; the fourth point of each stands at another height.
std::vector<std::pair<std::string, std::vector<Target>>> stationsWithAFourth(const char* first) {
  const auto station = [](const char* fourth, double height) {
    return std::vector<Target>{{"a", 10, 0, 0}, {"b", 20, 0, 0}, {"c", 10, 7, 0}, {fourth, 30, 30, height}};
  };
  return {{"A", station(first, 0)}, {"B", station("?", 0.01)}, {"C", station("?", 0.3)}, {"D", station("?", 0.7)}};
}

TEST(Matching, WhoJoinsAUsersNameIsBindingAndNotReportedAgain) {
  Session session(stationsWithAFourth("d"));
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_EQ(matchNear(session, 0.1).names, (Names{{7, "d"}}));
  EXPECT_EQ(matchNear(session, 0.35).names, (Names{{11, "d"}}));
}

TEST(Matching, WhoJoinsAnAutomaticNameStaysRevisable) {
  Session session(stationsWithAFourth("?"));
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_EQ(matchNear(session, 0.1).names, (Names{{3, "auto4"}, {7, "auto4"}}));
  EXPECT_EQ(matchNear(session, 0.35).names, (Names{{3, "auto4"}, {7, "auto4"}, {11, "auto4"}}));
  EXPECT_EQ(matchNear(session, 0.45).names, (Names{{3, "auto4"}, {7, "auto4"}, {11, "auto4"}, {15, "auto4"}}));
}

TEST(Matching, AnAutomaticNameCanBeRevisedByALaterMatching) {
  Session session({{"A", nameless(0)}, {"B", nameless(50)}});
  matchAll(session);
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  Outputs out;
  GroupId group = 0;
  ASSERT_TRUE(session->renamePoint(0, "?", group, out.inactiveGroups, out.inactivePoints));
  // Point 0 lies on the spot of the automatic point 3, which is reported with it.
  EXPECT_EQ(matchNear(session, 0.1).names, (Names{{0, "auto3"}, {3, "auto3"}}));
}

TEST(Matching, ChosenGroupsAloneAreTouched) {
  Session session({{"A", nameless(0)}, {"B", nameless(50)}, {"C", {{"n", 1, 1, 1}, {"m", 4, 1, 1}, {"k", 1, 5, 1}}}});
  Match match;
  session->matchGroupsByTriangles({}, 0.001, 0.1, match.names, match.out.inactiveGroups, match.out.inactivePoints);
  EXPECT_EQ(match.names, Names{});
  session->matchGroupsByTriangles({0}, 0.001, 0.1, match.names, match.out.inactiveGroups, match.out.inactivePoints);
  EXPECT_EQ(match.names, Names{});
  session->matchGroupsByTriangles({0, 1}, 0.001, 0.1, match.names, match.out.inactiveGroups, match.out.inactivePoints);
  EXPECT_EQ(match.names.size(), 6u);
  EXPECT_EQ(match.names.at(0), "auto6");
  EXPECT_EQ(match.names.count(6) + match.names.count(7) + match.names.count(8), 0u);
  EXPECT_EQ(textOfMarker(session, 6), OdString(L"n"));
  EXPECT_EQ(textOfMarker(session, 7), OdString(L"m"));
  EXPECT_EQ(textOfMarker(session, 8), OdString(L"k"));
}

TEST(Matching, TheMarkersTakeTheNewNamesWhereTheyStand) {
  Session session({{"A", nameless(0)}, {"B", nameless(50)}});
  matchAll(session);
  tiepoint::workbench::RecordingDraw draw(session.document().view());
  draw.draw(*session.document().drawables().front().drawable);
  ASSERT_EQ(draw.texts().size(), 6u);
  EXPECT_EQ(draw.texts()[0].text, OdString(L"auto3"));
  EXPECT_EQ(draw.texts()[3].text, OdString(L"auto3"));
  EXPECT_EQ(draw.texts()[3].position, OdGePoint3d(51, 1, 1));
}

TEST(Matching, TheMarkersOfAHiddenGroupTakeTheNewNamesToo) {
  Session session({{"A", nameless(0)}, {"B", nameless(50)}});
  session->setGroupsVisible({1}, false);
  matchAll(session);
  session->setGroupsVisible({1}, true);
  EXPECT_EQ(textOfMarker(session, 3), OdString(L"auto3"));
}

/// What a solve leaves behind for the next clearing is renamed only as long as there is a solution.
TEST(Matching, AfterClearingTheNewNamesDoNotOutlastAnotherClearing) {
  Session session({{"A", triangle("T1", "T2", "T3")},
                   {"B", triangle("T1", "T2", "T3", 50)},
                   {"C", nameless(0)},
                   {"D", nameless(9)}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  session->clearResults();
  EXPECT_EQ(matchAll(session).names.size(), 6u);
  EXPECT_EQ(textOfMarker(session, 6), OdString(L"auto6"));
  session->clearResults();
  EXPECT_EQ(textOfMarker(session, 6), OdString(L"?"));
}

TEST(Matching, TheMarkersKeepTheirNamesThroughClearing) {
  Session session({{"A", {{"a", 10, 0, 0}, {"b", 20, 0, 0}, {"c", 10, 7, 0}, {"d", 30, 30, 0}}},
                   {"B", {{"a", 10, 0, 0}, {"b", 20, 0, 0}, {"c", 10, 7, 0}, {"?", 30, 30, 0.01}}}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  matchNear(session, 0.1);
  session->clearResults();
  tiepoint::workbench::RecordingDraw draw(session.document().view());
  draw.draw(*session.document().drawables().front().drawable);
  EXPECT_EQ(draw.texts()[7].text, OdString(L"d"));
}

TEST(Matching, TheSpreadIsThatOfTheLastSolution) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  std::vector<std::uint64_t> counts{7};
  std::vector<double> edges{7.0};
  EXPECT_EQ(session->getMaxPointSpread(), 0.0);
  EXPECT_FALSE(session->getPointSpreadHistogram(counts, edges));
  EXPECT_EQ(counts, std::vector<std::uint64_t>{7});
  EXPECT_EQ(edges, std::vector<double>{7.0});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_TRUE(session->getPointSpreadHistogram(counts, edges));
  EXPECT_EQ(counts.size(), 10u);
  EXPECT_EQ(edges.size(), 11u);
}

TEST(Matching, TheSpreadIsTheLargestDistanceBetweenPointsOfOneName) {
  // The second square is a tenth larger: its corners stay a diagonal of 1 x 1 away.
  Session session({{"A", {{"T1", 10, 10, 0}, {"T2", -10, 10, 0}, {"T3", -10, -10, 0}, {"T4", 10, -10, 0}}},
                   {"B", {{"T1", 11, 11, 0}, {"T2", -11, 11, 0}, {"T3", -11, -11, 0}, {"T4", 11, -11, 0}}}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_DOUBLE_EQ(session->getMaxPointSpread(), 1.4142135);
}

TEST(Matching, TheSpreadOfTwoDistancesHasNoHistogram) {
  // The base has no transformation, so that T1 and T2 of the other two make the only pairs.
  Session session({{"Base", {{"T1", 0, 0, 0}, {"T2", 8, 0, 0}, {"T3", 0, 9, 0}, {"T4", 9, 9, 0}}},
                   {"A", {{"T1", 0, 0, 5}, {"T2", 8, 0, 5}, {"T3", 0, 9, 5}}},
                   {"B", {{"T1", 0, 0, 3}, {"T2", 8, 0, 3}, {"T4", 9, 9, 3}}}});
  Outputs out;
  session->setBaseGroups({0}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  std::vector<std::uint64_t> counts{7};
  std::vector<double> edges{7.0};
  EXPECT_TRUE(session->getPointSpreadHistogram(counts, edges));
  EXPECT_EQ(counts, std::vector<std::uint64_t>{});
  EXPECT_EQ(edges, std::vector<double>{});
}

}  // namespace
