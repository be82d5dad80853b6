#include "workbench/session/driven_session.h"

#include <gmock/gmock.h>

#include <limits>

#include "workbench/session/shown_groups.h"
#include "workbench/session/workbench_session.h"
#include "workbench/view/recording_draw.h"

namespace tiepoint::workbench {
namespace {

using namespace ZOR::reg;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

std::vector<StationPoints> threeStations() {
  return {stationAt("A", 0.0), stationAt("B", 100.0), stationAt("C", -50.0)};
}

/// Two that see one hall, and one that sees another.
std::vector<StationPoints> twoHalls() {
  std::vector<StationPoints> stations = threeStations();
  for (MeasuredPoint& point : stations[2].points) point.name += " of the yard";
  return stations;
}

/// The groups with a point that the user hasn't excluded.
GroupIdSet includedGroups(const SessionState& state) {
  GroupIdSet groups;
  for (const SessionPoint& point : state.points) {
    if (point.record.included) groups.insert(point.record.groupId);
  }
  return groups;
}

GroupIdSet groupsInSession(const SessionState& state) {
  GroupIdSet groups;
  for (const SessionGroup& group : state.groups) {
    if (group.inSession) groups.insert(group.id);
  }
  return groups;
}

/// Where the first line of each drawn marker lies on the x axis, at its middle.
std::vector<double> markerPlaces(Workbench& workbench) {
  RecordingDraw draw{View()};
  for (const OdGiDrawable* drawable : drawablesOf(workbench)) draw.draw(*drawable);
  std::vector<double> places;
  for (std::size_t i = 0; i < draw.lines().size(); i += 3) {
    places.push_back((draw.lines()[i].from.x + draw.lines()[i].to.x) / 2.0);
  }
  return places;
}

// --- Membership.

TEST(DrivenSession, TakesAllGroupsOfTheDrawing) {
  WorkbenchSession session(threeStations());
  EXPECT_TRUE(session.driven->addAllGroups());
  EXPECT_THAT(groupsInSession(session.state()), ElementsAre(0, 1, 2));
  EXPECT_EQ(session.state().points.size(), 12u);
}

TEST(DrivenSession, SaysThatAnEmptyDrawingHasNone) {
  WorkbenchSession session;
  EXPECT_FALSE(session.driven->addAllGroups());
  EXPECT_THAT(session.state().points, IsEmpty());
}

TEST(DrivenSession, TakesSomeGroupsAndKnowsTheOthersByName) {
  WorkbenchSession session(threeStations());
  EXPECT_TRUE(session.driven->addGroups({1, 7}));
  EXPECT_THAT(groupsInSession(session.state()), ElementsAre(1));
  EXPECT_EQ(session.state().group(2).name, "C");
}

TEST(DrivenSession, SaysThatNoGroupIsLeftToPutIn) {
  WorkbenchSession session(threeStations());
  EXPECT_FALSE(session.driven->addGroups({}));
  ASSERT_TRUE(session.driven->addGroups({1}));
  EXPECT_FALSE(session.driven->addGroups({1}));
  EXPECT_THAT(groupsInSession(session.state()), ElementsAre(1));
}

TEST(DrivenSession, PassesOverGroupsThatTheDrawingLacks) {
  WorkbenchSession session(threeStations());
  EXPECT_TRUE(session.driven->addGroups({7}));
  EXPECT_THAT(groupsInSession(session.state()), IsEmpty());
  EXPECT_THAT(session.state().points, IsEmpty());
}

TEST(DrivenSession, TakesTheGroupsThatTheDrawingGotMeanwhile) {
  WorkbenchSession session(threeStations());
  session.driven->addAllGroups();
  EXPECT_FALSE(session.driven->addAllGroups()) << "all are in";
  session.store({stationAt("D", 7.0)});
  EXPECT_TRUE(session.driven->addAllGroups());
  EXPECT_EQ(session.state().group(3).name, "D");
  EXPECT_TRUE(session.state().group(3).inSession);
}

TEST(DrivenSession, TakesRemovedGroupsAgainAsTheyWereRead) {
  WorkbenchSession session(threeStations());
  session.driven->addAllGroups();
  ASSERT_TRUE(session.driven->setWeight({4}, 0.5));
  session.driven->removeGroups({1});
  EXPECT_THAT(groupsInSession(session.state()), ElementsAre(0, 2));
  EXPECT_TRUE(session.driven->addGroups({1}));
  for (const SessionPoint& point : session.state().points) EXPECT_EQ(point.record.weight, 1.0);
}

// --- Switches.

TEST(DrivenSession, SwitchesGroupsOffAndOn) {
  WorkbenchSession session(threeStations());
  session.driven->addAllGroups();
  session.driven->excludeGroups({0, 2});
  EXPECT_THAT(includedGroups(session.state()), ElementsAre(1));
  session.driven->includeGroups({2});
  EXPECT_THAT(includedGroups(session.state()), ElementsAre(1, 2));
}

TEST(DrivenSession, SwitchesPointsOffByThemselves) {
  WorkbenchSession session(threeStations());
  session.driven->addAllGroups();
  session.driven->excludePoints({1, 5, 999});
  for (const SessionPoint& point : session.state().points) {
    EXPECT_EQ(point.record.included, point.record.id != 1 && point.record.id != 5) << point.record.id;
  }
}

TEST(DrivenSession, MakesGroupsTheBase) {
  WorkbenchSession session(threeStations());
  session.driven->addAllGroups();
  session.driven->setBase({2});
  EXPECT_FALSE(session.state().group(0).inBase);
  EXPECT_TRUE(session.state().group(2).inBase);
}

TEST(DrivenSession, RefusesWeightsOutsideZeroToOne) {
  WorkbenchSession session(threeStations());
  session.driven->addAllGroups();
  EXPECT_TRUE(session.driven->setWeight({0}, 0.0));
  EXPECT_TRUE(session.driven->setWeight({1}, 1.0));
  for (const double weight : {-0.001, 1.001, notANumber}) {
    EXPECT_FALSE(session.driven->setWeight({0, 1}, weight)) << weight;
  }
  EXPECT_EQ(session.state().points[0].record.weight, 0.0);
  EXPECT_EQ(session.state().points[1].record.weight, 1.0);
}

// --- Solving.

TEST(DrivenSession, RegistersGroupsThatHangTogether) {
  WorkbenchSession session(threeStations());
  session.driven->addAllGroups();
  EXPECT_TRUE(session.driven->registerPairwise());
  EXPECT_THAT(session.state().registeredGroups, ElementsAre(0, 1, 2));
  EXPECT_THAT(session.driven->clusters(), IsEmpty());
}

TEST(DrivenSession, TellsWhichGroupsHangTogetherWhereNotAllDo) {
  WorkbenchSession session(twoHalls());
  session.store({{"D", twoHalls()[2].points}});
  session.driven->addAllGroups();
  EXPECT_FALSE(session.driven->registerPairwise());
  EXPECT_EQ(session.driven->clusters(), (GroupClusters{{0, {0, 1}}, {1, {2, 3}}}));
  EXPECT_THAT(session.state().discrepancies, IsEmpty());
}

TEST(DrivenSession, RegistersTheClusterThatIsKept) {
  WorkbenchSession session(twoHalls());
  session.store({{"D", twoHalls()[2].points}});
  session.driven->addAllGroups();
  session.driven->registerPairwise();
  session.driven->keepCluster(1);
  EXPECT_THAT(includedGroups(session.state()), ElementsAre(2, 3));
  EXPECT_TRUE(session.driven->registerPairwise());
  EXPECT_EQ(session.state().registeredGroups, (GroupIdSet{2, 3}));
}

TEST(DrivenSession, KeepsAllGroupsOfAClusterThatThereIsNot) {
  WorkbenchSession session(threeStations());
  session.driven->addAllGroups();
  session.driven->keepCluster(5);
  EXPECT_THAT(includedGroups(session.state()), ElementsAre(0, 1, 2));
}

TEST(DrivenSession, RefusesLimitsThatAreNotAboveZero) {
  WorkbenchSession session(threeStations());
  session.driven->addAllGroups();
  EXPECT_FALSE(session.driven->registerIterative(0, 0.001));
  EXPECT_FALSE(session.driven->registerIterative(10, 0.0));
  EXPECT_FALSE(session.driven->registerIterative(10, -0.001));
  EXPECT_FALSE(session.driven->registerIterative(10, notANumber));
  EXPECT_THAT(session.state().registeredGroups, IsEmpty());
  EXPECT_TRUE(session.driven->registerIterative(10, 0.001));
  EXPECT_THAT(session.state().registeredGroups, ElementsAre(0, 1, 2));
  EXPECT_EQ(session.state().maxIterations, 10u);
}

TEST(DrivenSession, LeavesTheTransformationsWhereOneGroupIsLeftToIterate) {
  WorkbenchSession session(threeStations());
  session.driven->addAllGroups();
  ASSERT_TRUE(session.driven->registerPairwise());
  session.driven->excludeGroups({1, 2});
  EXPECT_TRUE(session.driven->registerIterative(10, 0.001));
  EXPECT_THAT(session.state().registeredGroups, ElementsAre(0, 1, 2));
}

TEST(DrivenSession, ShowsEveryPointWhereItWasMeasuredOnceItsMarkersAreRestored) {
  WorkbenchSession session({stationAt("A", 0.0), stationAt("B", 100.0)});
  session.driven->addAllGroups();
  session.driven->setBase({0});
  const std::vector<double> measured = markerPlaces(session.workbench);
  ASSERT_THAT(measured, ElementsAre(0.0, 8.0, 3.0, 12.0, -100.0, -92.0, -97.0, -88.0));
  ASSERT_TRUE(session.driven->registerPairwise());
  EXPECT_NEAR(markerPlaces(session.workbench)[4], 0.0, 1e-9) << "the solve has moved it";
  session.driven->restoreMarkers();
  EXPECT_EQ(markerPlaces(session.workbench), measured);
}

TEST(DrivenSession, BringsBackMarkersThatWereTakenAwayWithTheResults) {
  WorkbenchSession session({stationAt("A", 0.0)});
  session.driven->addAllGroups();
  session.driven->clearResults();
  EXPECT_THAT(markerPlaces(session.workbench), IsEmpty());
  session.driven->restoreMarkers();
  EXPECT_THAT(markerPlaces(session.workbench), ElementsAre(0.0, 8.0, 3.0, 12.0));
  EXPECT_EQ(session.state().points.size(), 4u) << "nothing was removed";
}

TEST(DrivenSession, ForgetsItsResults) {
  WorkbenchSession session(threeStations());
  session.driven->addAllGroups();
  session.driven->registerPairwise();
  session.driven->clearResults();
  EXPECT_THAT(session.state().discrepancies, IsEmpty());
  EXPECT_THAT(session.state().registeredGroups, IsEmpty());
}

// --- Matching.

TEST(DrivenSession, CountsThePointsThatEqualTrianglesName) {
  WorkbenchSession session({unnamedStationAt("A", 0.0), unnamedStationAt("B", 100.0)});
  session.driven->addAllGroups();
  EXPECT_EQ(session.driven->matchAllByTriangles(0.001, 0.1), 8u);
  for (const SessionPoint& point : session.state().points) EXPECT_TRUE(point.record.autoNamed);
  EXPECT_EQ(session.driven->matchAllByTriangles(0.001, 0.1), 0u) << "all have names";
}

TEST(DrivenSession, ComparesTheTrianglesOfTheGroupsThatItIsTold) {
  WorkbenchSession session({unnamedStationAt("A", 0.0), unnamedStationAt("B", 100.0), unnamedStationAt("C", 50.0)});
  session.driven->addAllGroups();
  EXPECT_EQ(session.driven->matchByTriangles({0, 2}, 0.001, 0.1), 8u);
  for (const SessionPoint& point : session.state().points) {
    EXPECT_EQ(point.record.named, point.record.groupId != 1) << point.record.id;
  }
}

TEST(DrivenSession, NamesNothingWhereNoTrianglesAreEqual) {
  StationPoints other = unnamedStationAt("B", 100.0);
  for (MeasuredPoint& point : other.points) point.position.x *= 2.0;
  WorkbenchSession session({unnamedStationAt("A", 0.0), other});
  session.driven->addAllGroups();
  EXPECT_EQ(session.driven->matchAllByTriangles(0.001, 0.1), 0u);
}

TEST(DrivenSession, NamesPointsOnOneSpotAfterASolveOnly) {
  std::vector<StationPoints> stations{stationAt("A", 0.0), stationAt("B", 100.0)};
  for (StationPoints& station : stations) station.points[3].name.clear();
  WorkbenchSession session(stations);
  session.driven->addAllGroups();
  EXPECT_EQ(session.driven->matchByCloseness(0.01), 0u);
  ASSERT_TRUE(session.driven->registerPairwise());
  EXPECT_EQ(session.driven->matchByCloseness(0.01), 2u);
  EXPECT_EQ(session.state().points[3].name, session.state().points[7].name);
}

TEST(DrivenSession, GivesAPointTheNameOfAnother) {
  WorkbenchSession session({stationAt("A", 0.0), {"B", {{"\xD0\xA6", {0, 0, 0}}, {"", {1, 1, 1}}}}});
  session.driven->addAllGroups();
  EXPECT_TRUE(session.driven->adoptName(1, 4));
  EXPECT_EQ(session.state().points[1].name, "\xD0\xA6");
  EXPECT_EQ(session.state().points[1].record.commonId, session.state().points[4].record.commonId);
  EXPECT_TRUE(session.driven->adoptName(5, 2));
  EXPECT_TRUE(session.state().points[5].record.named);
}

TEST(DrivenSession, GivesNoNameThatTheGroupHasAlready) {
  WorkbenchSession session(threeStations());
  session.driven->addAllGroups();
  EXPECT_FALSE(session.driven->adoptName(1, 4));
  EXPECT_EQ(session.state().points[1].name, "T2");
}

}  // namespace
}  // namespace tiepoint::workbench
