#include <gtest/gtest.h>

#include <new>

#include "platform/sdk/od_alloc.h"
#include "support/session_builder.h"
#include "workbench/session/watched_session.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;
using namespace tiepoint::workbench;

using Station = WatchedSession::Station;

std::vector<Station> threeStations() {
  return {{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}, {"C", triangle("T1", "T2", "U", 9)}};
}

std::vector<std::string> namesOf(const SessionState& state) {
  std::vector<std::string> texts;
  for (const PointName& entry : state.names.entries()) texts.push_back(std::to_string(entry.id) + ":" + entry.name);
  return texts;
}

std::vector<std::string> pointNamesOf(const SessionState& state) {
  std::vector<std::string> texts;
  for (const SessionPoint& point : state.points) texts.push_back(point.name);
  return texts;
}

bool rename(WatchedSession& session, RefPointId point, const std::string& name) {
  return session.mirrored->renamePoint(point, name, session.out.group, session.out.inactiveGroups,
                                       session.out.inactivePoints);
}

using Texts = std::vector<std::string>;

TEST(MirroredSession, IsEmptyAtBirthButForItsLimits) {
  WatchedSession session(threeStations());
  const SessionState& state = session.state();
  EXPECT_TRUE(state.groups.empty());
  EXPECT_TRUE(state.points.empty());
  EXPECT_TRUE(state.names.entries().empty());
  EXPECT_EQ(state.maxIterations, 100u);
  EXPECT_EQ(state.convergenceCriteria, 0.001);
  EXPECT_EQ(state.matchDistanceTolerance, 0.1);
  EXPECT_EQ(state.triangleSideTolerance, 0.001);
  EXPECT_EQ(state.triangleMinSideDifference, 0.1);
}

TEST(MirroredSession, TellsGroupsThatAreKnownFromThoseThatAreInTheSession) {
  WatchedSession session(threeStations());
  session.add({1});
  const SessionState& state = session.state();
  ASSERT_EQ(state.groups.size(), 3u);
  EXPECT_EQ(state.groups[0].name, "A");
  EXPECT_FALSE(state.group(0).inSession);
  EXPECT_TRUE(state.group(1).inSession);
  EXPECT_EQ(pointNamesOf(state), (Texts{"T1", "T2", "T3"}));
  EXPECT_EQ(state.visibleGroups, GroupIdSet{1});
}

TEST(MirroredSession, PassesUntouchedOutputsOn) {
  WatchedSession session(threeStations());
  session.add({0, 1, 2});
  Outputs out;
  std::list<RefPoint> added(7);
  EXPECT_FALSE(session.mirrored->addGroups({1}, added, out.inactiveGroups, out.inactivePoints));
  session.mirrored->setBaseGroups({}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  session.mirrored->keepGroupCluster(4, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(added.size(), 7u);
  EXPECT_EQ(out.groups, GroupIdSet{991});
  EXPECT_EQ(out.points, RefPointIdSet{992});
  EXPECT_EQ(out.inactiveGroups, GroupIdSet{993});
  EXPECT_EQ(out.inactivePoints, RefPointIdSet{994});
}

TEST(MirroredSession, LeavesTheListOfCloudsAloneWhereTheDrawingHasNone) {
  WatchedSession session;
  session.host.document().addCloud("hall");
  std::list<NamedId> clouds;
  session.mirrored->getPointClouds(clouds);
  ASSERT_EQ(session.state().clouds.size(), 1u);
  EXPECT_EQ(session.state().clouds[0].name, "hall");
  session.host.openDocument();
  session.mirrored->getPointClouds(clouds);
  EXPECT_EQ(clouds.size(), 1u);
  EXPECT_TRUE(session.state().clouds.empty());
}

// --- Names.

TEST(MirroredSession, GivesANewNameTheSmallestIdThatIsFree) {
  WatchedSession session({{"A", {{"T0", 0, 0, 0}, {"T1", 1, 0, 0}, {"T2", 0, 1, 0}}}});
  session.add({0});
  ASSERT_TRUE(rename(session, 1, "T9"));
  EXPECT_EQ(namesOf(session.state()), (Texts{"0:T0", "2:T2", "3:T9"}));
  ASSERT_TRUE(rename(session, 0, "T8"));
  EXPECT_EQ(session.record(0).commonId, 1u);
  EXPECT_EQ(namesOf(session.state()), (Texts{"2:T2", "3:T9", "1:T8"}));
}

TEST(MirroredSession, TakesThePointOfNoNameForUnnamedAgain) {
  WatchedSession session(threeStations());
  session.add({0, 1, 2});
  ASSERT_TRUE(rename(session, 0, "?"));
  EXPECT_FALSE(session.record(0).named);
  ASSERT_TRUE(rename(session, 0, "T1"));
  EXPECT_TRUE(session.record(0).named);
}

TEST(MirroredSession, HidesAGroupThatHasLostItsLastPoint) {
  WatchedSession session(threeStations());
  session.add({0, 1, 2});
  session.mirrored->removePoints({3, 4, 5, 6}, session.out.groups, session.out.inactiveGroups,
                                 session.out.inactivePoints);
  EXPECT_EQ(session.state().visibleGroups, (GroupIdSet{0, 2}));
  EXPECT_FALSE(session.state().group(1).inSession);
}

TEST(MirroredSession, ShowsANamelessPointUnderTheNameThatItsIdGets) {
  WatchedSession session({{"A", {{"T0", 0, 0, 0}}}, {"B", {{"T0", 1, 0, 0}}}});
  session.add({0});
  ASSERT_TRUE(rename(session, 0, "first"));
  session.add({1});
  EXPECT_EQ(pointNamesOf(session.state()), (Texts{"first", ""}));
  ASSERT_TRUE(rename(session, 0, "second"));
  EXPECT_EQ(pointNamesOf(session.state()), (Texts{"second", "second"}));
  EXPECT_EQ(session.record(0).commonId, session.record(1).commonId);
}

TEST(MirroredSession, BringsGroupsBackAsTheyWereRead) {
  WatchedSession session(threeStations());
  session.add({0, 1, 2});
  session.mirrored->setPointsWeight({0}, 0.5, session.out.inactiveGroups, session.out.inactivePoints);
  session.mirrored->excludePoints({1}, session.out.groups, session.out.inactiveGroups, session.out.inactivePoints);
  session.mirrored->setBaseGroups({0}, session.out.groups, session.out.points, session.out.inactiveGroups,
                                  session.out.inactivePoints);
  ASSERT_TRUE(rename(session, 2, "new"));
  session.mirrored->removeGroups({0}, session.out.points, session.out.inactiveGroups, session.out.inactivePoints);
  EXPECT_FALSE(session.state().group(0).inBase);
  session.add({0});
  EXPECT_EQ(session.record(0).weight, 1.0);
  EXPECT_TRUE(session.record(1).included);
  EXPECT_FALSE(session.record(2).inBase);
  EXPECT_EQ(pointNamesOf(session.state()), (Texts{"T1", "T2", "T3", "T1", "T2", "U", "T1", "T2", "T3"}));
}

/// Two targets without a name in both stations, once these lie on one another.
std::vector<Station> unnamedPair() {
  auto first = triangle("T1", "T2", "T3"), second = triangle("T1", "T2", "T3", 5);
  first.push_back({"?", 20, 30, 40});
  second.push_back({"?", 25, 30, 40});
  return {{"A", first}, {"B", second}};
}

void matchClose(WatchedSession& session) {
  session.mirrored->matchPointsByDistance(0.1, session.out.names, session.out.inactiveGroups,
                                          session.out.inactivePoints);
}

TEST(MirroredSession, KnowsTheIdsOfNamesThatAMatchingMade) {
  WatchedSession session(unnamedPair());
  session.add({0, 1});
  ASSERT_TRUE(session.solve());
  matchClose(session);
  EXPECT_EQ(namesOf(session.state()), (Texts{"0:T1", "1:T2", "2:T3", "3:?", "4:auto4"}));
  EXPECT_EQ(session.record(3).commonId, 4u);
  EXPECT_EQ(session.record(7).commonId, 4u);
  EXPECT_TRUE(session.record(7).autoNamed);
  EXPECT_TRUE(session.state().unsureNames.empty());
}

TEST(MirroredSession, MakesWhoJoinsANameOfTheUsersTheUsers) {
  WatchedSession session(unnamedPair());
  session.add({0, 1});
  ASSERT_TRUE(rename(session, 3, "T4"));
  ASSERT_TRUE(session.solve());
  matchClose(session);
  EXPECT_EQ(session.record(7).commonId, session.record(3).commonId);
  EXPECT_TRUE(session.record(7).named);
  EXPECT_FALSE(session.record(7).autoNamed);
}

TEST(MirroredSession, SaysWhichNamesTwoIdsBear) {
  auto stations = unnamedPair();
  stations[0].second.push_back({"auto5", 50, 60, 70});
  stations[1].second.push_back({"?", 55, 60, 70});
  WatchedSession session(stations);
  session.add({0, 1});
  ASSERT_TRUE(session.solve());
  matchClose(session);
  ASSERT_EQ(session.out.names, (std::map<RefPointId, std::string>{{3, "auto5"}, {8, "auto5"}, {9, "auto5"}}));
  EXPECT_EQ(session.state().unsureNames, (RefPointIdSet{3, 8, 9}));
  ASSERT_TRUE(rename(session, 3, "T4"));
  EXPECT_EQ(session.state().unsureNames, (RefPointIdSet{8, 9}));
  EXPECT_EQ(session.record(3).commonId, 6u);
}

// --- Results.

TEST(MirroredSession, KnowsTheWeightsOfASolve) {
  WatchedSession session(threeStations());
  session.add({0, 1, 2});
  session.mirrored->setPointsWeight({0, 1}, 0.5, session.out.inactiveGroups, session.out.inactivePoints);
  session.mirrored->setPointsWeight({1, 4}, 1.5, session.out.inactiveGroups, session.out.inactivePoints);
  EXPECT_EQ(session.record(1).weight, 0.5);
  EXPECT_EQ(session.record(4).weight, 1.0);
  SessionReference reference;
  ASSERT_TRUE(reference.registerPairwise(SessionLists(session.state())));
  ASSERT_TRUE(session.solve());
  EXPECT_EQ(differences(session, reference), "");
}

TEST(MirroredSession, TakesTheBaseForNoRegisteredGroup) {
  WatchedSession session(threeStations());
  session.add({0, 1, 2});
  session.mirrored->setBaseGroups({0}, session.out.groups, session.out.points, session.out.inactiveGroups,
                                  session.out.inactivePoints);
  ASSERT_TRUE(session.solve());
  EXPECT_EQ(session.state().registeredGroups, GroupIdSet{1});
  session.mirrored->clearResults();
  EXPECT_TRUE(session.state().registeredGroups.empty());
}

TEST(MirroredSession, KeepsTheTransformationsWhenASolveFindsNothingToDo) {
  WatchedSession session(threeStations());
  session.add({0, 1});
  ASSERT_TRUE(session.solve());
  session.mirrored->excludeGroups({0, 1}, session.out.points, session.out.inactiveGroups, session.out.inactivePoints);
  ASSERT_TRUE(session.mirrored->registerIterative(5, 0.1, session.out.discrepancies));
  EXPECT_EQ(session.state().registeredGroups, (GroupIdSet{0, 1}));
  EXPECT_EQ(session.state().maxIterations, 5u);
}

TEST(MirroredSession, TellsTheClustersOfASolveThatWasRefused) {
  WatchedSession session({{"A", triangle("T1", "T2", "T3")},
                          {"B", triangle("T1", "T2", "T3", 5)},
                          {"C", triangle("U1", "U2", "U3")},
                          {"D", triangle("U1", "U2", "U3", 5)}});
  session.add({0, 1, 2, 3});
  EXPECT_FALSE(session.solve());
  EXPECT_EQ(session.state().clusters, (GroupClusters{{0, {0, 1}}, {1, {2, 3}}}));
  session.mirrored->keepGroupCluster(1, session.out.points, session.out.inactiveGroups, session.out.inactivePoints);
  EXPECT_FALSE(session.record(0).included);
  EXPECT_TRUE(session.record(6).included);
  session.mirrored->clearResults();
  EXPECT_TRUE(session.state().clusters.empty());
}

TEST(MirroredSession, TellsWhichReportWouldBeSaved) {
  WatchedSession session(threeStations());
  EXPECT_EQ(session.state().lastReport, LastReport::none);
  session.mirrored->getPointsReport({0});
  EXPECT_EQ(session.state().lastReport, LastReport::points);
  session.mirrored->getGroupsReport({0});
  EXPECT_EQ(session.state().lastReport, LastReport::groups);
  session.mirrored->getResultsReport();
  EXPECT_EQ(session.state().lastReport, LastReport::results);
}

// --- Errors.

TEST(MirroredSession, HoldsWhatAnOperationDidThatTheHostCutOff) {
  WatchedSession session(threeStations());
  std::map<GroupId, std::string> available;
  session.mirrored->getAvailableGroups(available);
  session.host.calls.failAt(1, Fault::throws);
  EXPECT_THROW(
      session.mirrored->addGroups({0, 1}, session.out.added, session.out.inactiveGroups, session.out.inactivePoints),
      HostFault);
  session.host.calls.stopFailing();
  EXPECT_EQ(session.state().points.size(), 6u);
  EXPECT_EQ(differences(session, SessionReference()), "");
}

/// Operations that allocate, one after the other.
void runThrough(WatchedSession& session) {
  session.add({0, 1, 2});
  rename(session, 0, "a name that is too long to stand in a string without memory of its own");
  session.mirrored->excludePoints({4}, session.out.groups, session.out.inactiveGroups, session.out.inactivePoints);
  session.mirrored->includeGroups({1}, session.out.points, session.out.inactiveGroups, session.out.inactivePoints);
  rename(session, 0, "T1");
  session.solve();
  matchClose(session);
  session.state();
  session.mirrored->removePoints({8}, session.out.groups, session.out.inactiveGroups, session.out.inactivePoints);
}

TEST(MirroredSession, IsRightAgainOnceItsGroupsAreTakenInAnewAfterMemoryRanOut) {
  const auto stations = unnamedPair();
  std::uint64_t failures = 0;
  for (std::uint64_t n = 0;; ++n) {
    WatchedSession session(stations);
    session.add({0});
    const std::uint64_t before = odrxAllocationCount();
    odrxFailAllocationsAfter(n, 1);
    try {
      runThrough(session);
    } catch (const std::bad_alloc&) {
      ++failures;
    }
    odrxStopFailingAllocations();
    if (odrxAllocationCount() - before <= n) break;
    session.mirrored->clearResults();
    session.mirrored->removeGroups({0, 1, 2}, session.out.points, session.out.inactiveGroups,
                                   session.out.inactivePoints);
    session.add({0, 1});
    SessionReference reference;
    reference.registerPairwise(SessionLists(session.state()));
    session.solve();
    EXPECT_EQ(session.state().discrepancies, reference.pointDiscrepancies) << "allocation " << n;
  }
  EXPECT_GT(failures, 100u);
}

}  // namespace
