// What each operation of a session asks of its host: one refresh where it has changed what is drawn,
// the drawing where it needs it, and else nothing.
#include <gtest/gtest.h>

#include <functional>
#include <ostream>

#include "session/recorded_session.h"
#include "support/temporary_folder.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

struct Operation {
  const char* name;
  std::function<void(RecordedSession&)> run;

  friend std::ostream& operator<<(std::ostream& stream, const Operation& operation) { return stream << operation.name; }
};

std::string nameOf(const ::testing::TestParamInfo<Operation>& operation) { return operation.param.name; }

/// Two stations that were registered, with a cloud of the drawing listed.
class HostCallsOf : public ::testing::TestWithParam<Operation> {
 protected:
  HostCallsOf() {
    session.host.document().addCloud("B");
    session.add({0, 1});
    session.solve();
    std::list<NamedId> clouds;
    session->getPointClouds(clouds);
  }
  Calls calls() {
    return session.host.calls.during([this] { GetParam().run(session); });
  }

  RecordedSession session{twoStations()};
};

using HostCallsOfAChangeOfWhatIsDrawn = HostCallsOf;
TEST_P(HostCallsOfAChangeOfWhatIsDrawn, AreOneRefresh) { EXPECT_EQ(calls(), refreshed); }

const Operation changesOfWhatIsDrawn[] = {
    {"RemovingGroups",
     [](RecordedSession& s) { s->removeGroups({1}, s.out.points, s.out.inactiveGroups, s.out.inactivePoints); }},
    {"RemovingGroupsThatTheSessionDoesNotHold",
     [](RecordedSession& s) { s->removeGroups({77}, s.out.points, s.out.inactiveGroups, s.out.inactivePoints); }},
    {"AddingGroupsToOthers",
     [](RecordedSession& s) {
       s->removeGroups({1}, s.out.points, s.out.inactiveGroups, s.out.inactivePoints);
       s.host.calls.clear();
       s.add({1});
     }},
    {"RemovingPoints",
     [](RecordedSession& s) { s->removePoints({0}, s.out.groups, s.out.inactiveGroups, s.out.inactivePoints); }},
    {"RenamingAGroup", [](RecordedSession& s) { s->renameGroup(0, "new", s.out.points); }},
    {"RenamingAPoint",
     [](RecordedSession& s) { s->renamePoint(0, "N", s.out.group, s.out.inactiveGroups, s.out.inactivePoints); }},
    {"HidingGroups", [](RecordedSession& s) { s->setGroupsVisible({0}, false); }},
    {"ShowingGroupsThatAreShown", [](RecordedSession& s) { s->setGroupsVisible({0}, true); }},
    {"ClearingResults", [](RecordedSession& s) { s->clearResults(); }},
    {"RegisteringPairwise", [](RecordedSession& s) { s->registerPairwise(s.out.discrepancies); }},
    {"RegisteringIteratively", [](RecordedSession& s) { s->registerIterative(5, 0.001, s.out.discrepancies); }},
    {"MatchingByDistance",
     [](RecordedSession& s) {
       // A base has no transformation, and its points don't lie close to anything.
       s->clearResults();
       s->unsetBaseGroups({0}, s.out.groups, s.out.points, s.out.inactiveGroups, s.out.inactivePoints);
       s->registerPairwise(s.out.discrepancies);
       s->renamePoint(3, "?", s.out.group, s.out.inactiveGroups, s.out.inactivePoints);
       s.host.calls.clear();
       s->matchPointsByDistance(0.1, s.out.names, s.out.inactiveGroups, s.out.inactivePoints);
       EXPECT_EQ(s.out.names.size(), 1u);
     }},
};
INSTANTIATE_TEST_SUITE_P(Session, HostCallsOfAChangeOfWhatIsDrawn, ::testing::ValuesIn(changesOfWhatIsDrawn), nameOf);

using HostCallsOfAnOperationOnTheDrawing = HostCallsOf;
TEST_P(HostCallsOfAnOperationOnTheDrawing, TakeItsDatabaseAndNothingMore) { EXPECT_EQ(calls(), databaseTaken); }

const Operation operationsOnTheDrawing[] = {
    {"ReadingGroups",
     [](RecordedSession& s) {
       std::map<GroupId, std::string> groups;
       s->getAvailableGroups(groups);
     }},
    {"ListingClouds",
     [](RecordedSession& s) {
       std::list<NamedId> clouds;
       s->getPointClouds(clouds);
     }},
    {"StoringTheMergedTargets", [](RecordedSession& s) { s->storeCommonPoints("merged"); }},
    {"StoringUnderATakenName", [](RecordedSession& s) { s->storeCommonPoints("A"); }},
};
INSTANTIATE_TEST_SUITE_P(Session, HostCallsOfAnOperationOnTheDrawing, ::testing::ValuesIn(operationsOnTheDrawing),
                         nameOf);

using HostCallsOfAnOperationThatNeedsNoHost = HostCallsOf;
TEST_P(HostCallsOfAnOperationThatNeedsNoHost, AreNone) { EXPECT_EQ(calls(), nothing); }

const Operation operationsWithoutAHost[] = {
    {"SettingTheBase",
     [](RecordedSession& s) {
       s->setBaseGroups({1}, s.out.groups, s.out.points, s.out.inactiveGroups, s.out.inactivePoints);
     }},
    {"UnsettingTheBase",
     [](RecordedSession& s) {
       s->unsetBaseGroups({0}, s.out.groups, s.out.points, s.out.inactiveGroups, s.out.inactivePoints);
     }},
    {"IncludingPoints",
     [](RecordedSession& s) { s->includePoints({0}, s.out.groups, s.out.inactiveGroups, s.out.inactivePoints); }},
    {"ExcludingPoints",
     [](RecordedSession& s) { s->excludePoints({0}, s.out.groups, s.out.inactiveGroups, s.out.inactivePoints); }},
    {"WeightingPoints",
     [](RecordedSession& s) { s->setPointsWeight({0}, 0.5, s.out.inactiveGroups, s.out.inactivePoints); }},
    {"IncludingGroups",
     [](RecordedSession& s) { s->includeGroups({0}, s.out.points, s.out.inactiveGroups, s.out.inactivePoints); }},
    {"ExcludingGroups",
     [](RecordedSession& s) { s->excludeGroups({0}, s.out.points, s.out.inactiveGroups, s.out.inactivePoints); }},
    {"SavingTheMergedTargets",
     [](RecordedSession& s) {
       const TemporaryFolder folder;
       EXPECT_TRUE(s->saveCommonPointsFile("merged", folder.narrow()));
     }},
    {"TellingTheClusters",
     [](RecordedSession& s) {
       std::map<std::uint64_t, GroupIdSet> clusters;
       s->getGroupClusters(clusters);
     }},
    {"TellingTheLimits",
     [](RecordedSession& s) {
       std::uint64_t iterations = 0;
       double criteria = 0;
       s->getIterationLimits(iterations, criteria);
     }},
    {"TellingTheNames",
     [](RecordedSession& s) {
       std::list<NamedId> names;
       EXPECT_TRUE(s->getCommonPointNames(names));
     }},
    {"MovingACloud", [](RecordedSession& s) { EXPECT_TRUE(s->applyTransformToCloud(1, 0)); }},
    {"MovingAllClouds", [](RecordedSession& s) { EXPECT_TRUE(s->applyTransformations()); }},
    {"TellingTheMatrixFormats",
     [](RecordedSession& s) {
       std::map<std::uint64_t, std::string> formats;
       s->getMatrixFormats(formats);
     }},
    {"SavingMatrices",
     [](RecordedSession& s) {
       const TemporaryFolder folder;
       EXPECT_TRUE(s->saveGroupMatrices({1}, folder.narrow(), 0));
     }},
    {"SavingAllMatrices",
     [](RecordedSession& s) {
       const TemporaryFolder folder;
       EXPECT_TRUE(s->saveAllMatrices(folder.narrow(), 1));
     }},
    {"ReportingPoints", [](RecordedSession& s) { s->getPointsReport({0}); }},
    {"ReportingGroups", [](RecordedSession& s) { s->getGroupsReport({0}); }},
    {"ReportingResults", [](RecordedSession& s) { s->getResultsReport(); }},
    {"TellingTheReportFormats",
     [](RecordedSession& s) {
       std::map<std::uint64_t, std::string> formats;
       s->getReportFormats(formats);
     }},
    {"SavingAReport",
     [](RecordedSession& s) {
       const TemporaryFolder folder;
       s->getResultsReport();
       EXPECT_TRUE(s->saveReport((folder.path() / "report.html").string(), 1));
     }},
    {"LookingForUnnamedPoints",
     [](RecordedSession& s) {
       s->hasUnnamedPoints();
       s->hasUnnamedPointsInRegisteredGroups();
     }},
    {"TellingTheTolerances",
     [](RecordedSession& s) {
       double a = 0;
       double b = 0;
       s->getMatchDistanceTolerance(a);
       s->getTriangleMatchTolerances(a, b);
     }},
    {"MatchingByDistanceWhereAllIsNamed",
     [](RecordedSession& s) {
       s->matchPointsByDistance(0.1, s.out.names, s.out.inactiveGroups, s.out.inactivePoints);
     }},
    {"RegisteringIterativelyWithoutAnActivePoint",
     [](RecordedSession& s) {
       s->clearResults();
       s->excludeGroups({0, 1}, s.out.points, s.out.inactiveGroups, s.out.inactivePoints);
       s.host.calls.clear();
       EXPECT_TRUE(s->registerIterative(5, 0.001, s.out.discrepancies));
     }},
    {"TellingTheSpread",
     [](RecordedSession& s) {
       std::vector<std::uint64_t> counts;
       std::vector<double> edges;
       s->getMaxPointSpread();
       s->getPointSpreadHistogram(counts, edges);
     }},
};
INSTANTIATE_TEST_SUITE_P(Session, HostCallsOfAnOperationThatNeedsNoHost, ::testing::ValuesIn(operationsWithoutAHost),
                         nameOf);

using HostCallsOfARefusal = HostCallsOf;
TEST_P(HostCallsOfARefusal, AreNone) { EXPECT_EQ(calls(), nothing); }

const Operation refusals[] = {
    {"AddingNoGroup", [](RecordedSession& s) { EXPECT_FALSE(s.add({})); }},
    {"AddingGroupsOfTheSession",
     [](RecordedSession& s) {
       EXPECT_FALSE(s.add({0, 1}));
     }},
    {"RemovingNoGroup",
     [](RecordedSession& s) {
       EXPECT_FALSE(s->removeGroups({}, s.out.points, s.out.inactiveGroups, s.out.inactivePoints));
     }},
    {"RemovingNoPoint",
     [](RecordedSession& s) {
       EXPECT_FALSE(s->removePoints({}, s.out.groups, s.out.inactiveGroups, s.out.inactivePoints));
     }},
    {"RenamingAGroupToItsOwnName", [](RecordedSession& s) { EXPECT_FALSE(s->renameGroup(0, "A", s.out.points)); }},
    {"RenamingAGroupToNoName", [](RecordedSession& s) { EXPECT_FALSE(s->renameGroup(0, "", s.out.points)); }},
    {"RenamingAPointToAnotherOfItsGroup",
     [](RecordedSession& s) {
       EXPECT_FALSE(s->renamePoint(0, "T2", s.out.group, s.out.inactiveGroups, s.out.inactivePoints));
     }},
    {"RenamingAPointToABlank",
     [](RecordedSession& s) {
       EXPECT_FALSE(s->renamePoint(0, " ", s.out.group, s.out.inactiveGroups, s.out.inactivePoints));
     }},
    {"SavingTheMergedTargetsNowhere", [](RecordedSession& s) { EXPECT_FALSE(s->saveCommonPointsFile("m", "")); }},
    {"StoringUnderNoName", [](RecordedSession& s) { EXPECT_FALSE(s->storeCommonPoints("")); }},
    {"StoringNothing",
     [](RecordedSession& s) {
       s->clearResults();
       s.host.calls.clear();
       EXPECT_FALSE(s->storeCommonPoints("merged"));
     }},
    {"RegisteringIterativelyWithoutAPass",
     [](RecordedSession& s) { EXPECT_FALSE(s->registerIterative(0, 0.001, s.out.discrepancies)); }},
    {"RegisteringGroupsThatDoNotHangTogether",
     [](RecordedSession& s) {
       s->renamePoint(0, "N", s.out.group, s.out.inactiveGroups, s.out.inactivePoints);
       s->unsetBaseGroups({0}, s.out.groups, s.out.points, s.out.inactiveGroups, s.out.inactivePoints);
       s.host.calls.clear();
       EXPECT_FALSE(s->registerPairwise(s.out.discrepancies));
     }},
    {"KeepingNoCluster",
     [](RecordedSession& s) { s->keepGroupCluster(9, s.out.points, s.out.inactiveGroups, s.out.inactivePoints); }},
    {"MovingACloudThatIsNotListed", [](RecordedSession& s) { EXPECT_FALSE(s->applyTransformToCloud(1, 1)); }},
};
INSTANTIATE_TEST_SUITE_P(Session, HostCallsOfARefusal, ::testing::ValuesIn(refusals), nameOf);

TEST(HostCallsOfASession, KeepingAClusterAsksForNothing) {
  Stations stations = twoStations();
  stations.push_back({"C", {{"U1", 1, 0, 0}, {"U2", 11, 0, 0}, {"U3", 1, 7, 2}}});
  stations.push_back({"D", {{"U1", 1, 0, 0}, {"U2", 11, 0, 0}, {"U3", 1, 7, 2}}});
  RecordedSession session(stations);
  session.add({0, 1, 2, 3});
  ASSERT_FALSE(session->registerPairwise(session.out.discrepancies));
  Results& out = session.out;
  EXPECT_EQ(session.host.calls.during(
                [&] { session->keepGroupCluster(0, out.points, out.inactiveGroups, out.inactivePoints); }),
            nothing);
  EXPECT_EQ(out.points.size(), 6u);
}

TEST(HostCallsOfASession, MatchingByTrianglesRefreshesOnce) {
  Stations stations = twoStations();
  for (Target& target : stations[1].second) target.name = "?";
  RecordedSession session(stations);
  session.add({0, 1});
  Results& out = session.out;
  EXPECT_EQ(session.host.calls.during([&] {
    session->matchAllGroupsByTriangles(0.001, 0.1, out.names, out.inactiveGroups, out.inactivePoints);
  }),
            refreshed);
  EXPECT_EQ(out.names.size(), 3u);
}

TEST(HostCallsOfASession, MatchingChosenGroupsByTrianglesRefreshesOnce) {
  Stations stations = twoStations();
  for (Target& target : stations[1].second) target.name = "?";
  RecordedSession session(stations);
  session.add({0, 1});
  Results& out = session.out;
  EXPECT_EQ(session.host.calls.during([&] {
    session->matchGroupsByTriangles({0, 1}, 0.001, 0.1, out.names, out.inactiveGroups, out.inactivePoints);
  }),
            refreshed);
  EXPECT_EQ(out.names.size(), 3u);
}

}  // namespace
