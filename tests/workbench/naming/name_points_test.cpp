#include <gmock/gmock.h>

#include "workbench/naming/hall.h"
#include "workbench/naming/match_run.h"
#include "workbench/session/workbench_session.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {
namespace {

using namespace ZOR::reg;
using testing::ElementsAre;
using testing::IsEmpty;

class Survey {
 public:
  explicit Survey(const std::vector<StationPoints>& stations) : session(stations) { session.driven->addAllGroups(); }

  NamingReport name(const NamingRequest& request, Unit unit = Unit::metre) {
    Progress progress;
    return namePoints(session.workbench, *session.driven, request, unit, progress);
  }

  WorkbenchSession session;
};

Survey pair() {
  return Survey({stationSeeing("A", {0, 1, 2, 3, 4, 5}, 0.0), stationSeeing("B", {0, 1, 2, 3, 4, 5}, 0.7)});
}

NamingRequest requestOf(Naming how) {
  NamingRequest request;
  request.how = how;
  return request;
}

std::vector<FindingKind> kindsOf(const NamingReport& report) {
  std::vector<FindingKind> kinds;
  for (const Finding& reason : report.reasons) kinds.push_back(reason.kind);
  return kinds;
}

/// The session stands before its first solve, with all groups in.
void expectFresh(const SessionState& state) {
  EXPECT_TRUE(state.discrepancies.empty());
  EXPECT_TRUE(state.registeredGroups.empty());
  for (const SessionPoint& point : state.points) EXPECT_TRUE(point.record.included) << point.record.id;
}

TEST(NamingOfPoints, CountsOnlyWhereNothingIsAskedFor) {
  Survey survey = pair();
  const NamingReport report = survey.name(requestOf(Naming::none));
  EXPECT_EQ(report.named, 0u);
  EXPECT_EQ(report.unnamed, 12u);
  EXPECT_THAT(report.steps, IsEmpty());
  EXPECT_THAT(report.reasons, IsEmpty());
}

// --- By triangles.

TEST(NamingByTriangles, TakesTheTolerancesOfTheSession) {
  Survey survey = pair();
  const NamingReport report = survey.name(requestOf(Naming::triangles));
  EXPECT_EQ(report.named, 12u);
  EXPECT_EQ(report.unnamed, 0u);
  ASSERT_EQ(report.steps.size(), 1u);
  EXPECT_EQ(report.steps[0].kind, NamingKind::triangles);
  EXPECT_THAT(report.steps[0].groups, ElementsAre(0, 1));
  EXPECT_EQ(report.steps[0].tolerance, 0.001);
  EXPECT_EQ(report.steps[0].minSideDifference, 0.1);
  EXPECT_EQ(report.steps[0].named, 12u);
  EXPECT_FALSE(report.limits);
  expectFresh(survey.session.state());
}

TEST(NamingByTriangles, TakesTheTolerancesOfTheRequest) {
  Survey survey = pair();
  NamingRequest request = requestOf(Naming::triangles);
  request.sideTolerance = 0.01;
  request.minSideDifference = 1000.0;
  const NamingReport report = survey.name(request);
  EXPECT_EQ(report.steps[0].tolerance, 0.01);
  EXPECT_EQ(report.steps[0].minSideDifference, 1000.0);
  EXPECT_EQ(report.named, 0u);
  EXPECT_THAT(kindsOf(report), ElementsAre(FindingKind::noUsableTriangle));
  EXPECT_EQ(report.reasons[0].limit, 1000.0);
}

TEST(NamingByTriangles, ComparesTheGroupsThatHaveAPointToUse) {
  Survey survey({stationSeeing("A", {0, 1, 2, 3}, 0.0), stationSeeing("B", {0, 1, 2, 3}, 0.7),
                 stationSeeing("C", {0, 1, 2, 3}, 1.9)});
  survey.session.driven->excludeGroups({1});
  const NamingReport report = survey.name(requestOf(Naming::triangles));
  EXPECT_THAT(report.steps[0].groups, ElementsAre(0, 2));
  EXPECT_EQ(report.named, 8u);
  EXPECT_EQ(report.unnamed, 4u);
}

// --- By closeness.

TEST(NamingByCloseness, JoinsTheGroupsByTheNamesThatThereAre) {
  const Targets seen{0, 1, 2, 3, 4, 5};
  Survey survey({named(stationSeeing("A", seen, 0.0), seen, 3), named(stationSeeing("B", seen, 0.7), seen, 3)});
  const NamingReport report = survey.name(requestOf(Naming::closeness));
  EXPECT_EQ(report.named, 6u) << "the automatic ones";
  EXPECT_EQ(report.unnamed, 0u);
  ASSERT_EQ(report.steps.size(), 1u);
  EXPECT_EQ(report.steps[0].kind, NamingKind::closeness);
  EXPECT_EQ(report.steps[0].tolerance, 0.1);
  EXPECT_EQ(report.steps[0].named, 6u);
  expectFresh(survey.session.state());
}

TEST(NamingByCloseness, TakesTheToleranceOfTheRequest) {
  const Targets seen{0, 1, 2, 3, 4, 5};
  StationPoints off = named(stationSeeing("B", seen, 0.7), seen, 3);
  off.points[4].position.z += 0.5;
  const auto namedWithin = [&](double tolerance) {
    Survey survey({named(stationSeeing("A", seen, 0.0), seen, 3), off});
    NamingRequest request = requestOf(Naming::closeness);
    request.closeness = tolerance;
    return survey.name(request).named;
  };
  EXPECT_EQ(namedWithin(0.6), 6u);
  EXPECT_EQ(namedWithin(0.4), 4u);
}

TEST(NamingByCloseness, SaysThatNothingWasSolved) {
  Survey survey = pair();
  const NamingReport report = survey.name(requestOf(Naming::closeness));
  EXPECT_EQ(report.named, 0u);
  EXPECT_THAT(kindsOf(report), ElementsAre(FindingKind::notSolved));
  EXPECT_FALSE(report.isRefused) << "the user decides";
}

TEST(NamingByCloseness, SaysThatNothingIsClose) {
  const Targets seen{0, 1, 2};
  StationPoints one = named(stationSeeing("A", {0, 1, 2, 4}, 0.0), seen);
  StationPoints other = named(stationSeeing("B", {0, 1, 2, 5}, 0.7), seen);
  Survey survey({one, other});
  const NamingReport report = survey.name(requestOf(Naming::closeness));
  EXPECT_THAT(kindsOf(report), ElementsAre(FindingKind::nothingClose));
  expectFresh(survey.session.state());
}

// --- By the search.

TEST(NamingByTheSearch, NamesWhatItJoinsAndLeavesTheSessionFresh) {
  Survey survey = pair();
  const NamingReport report = survey.name(requestOf(Naming::automatic));
  EXPECT_FALSE(report.isRefused);
  EXPECT_EQ(report.named, 12u);
  EXPECT_FALSE(report.steps.empty());
  EXPECT_THAT(report.reasons, IsEmpty());
  expectFresh(survey.session.state());
  EXPECT_TRUE(survey.session.driven->registerPairwise()) << "the session has the names";
}

TEST(NamingByTheSearch, KeepsTheUsersExclusions) {
  Survey survey = pair();
  survey.session.driven->excludePoints({2});
  survey.name(requestOf(Naming::automatic));
  for (const SessionPoint& point : survey.session.state().points) {
    EXPECT_EQ(point.record.included, point.record.id != 2) << point.record.id;
  }
}

TEST(NamingByTheSearch, HasUsualLimitsOfTheUnit) {
  const NamingReport metres = pair().name(requestOf(Naming::automatic), Unit::metre);
  ASSERT_TRUE(metres.limits);
  EXPECT_EQ(metres.limits->discrepancy, 0.02);
  EXPECT_EQ(metres.limits->side, 0.02);
  EXPECT_EQ(metres.limits->minSideDifference, 0.1);
  EXPECT_EQ(metres.limits->closeness, 0.02);
  EXPECT_EQ(pair().name(requestOf(Naming::automatic), Unit::unknown).limits->discrepancy, 0.02);
  const NamingReport millimetres = pair().name(requestOf(Naming::automatic), Unit::millimetre);
  EXPECT_EQ(millimetres.limits->discrepancy, 20.0);
  EXPECT_EQ(millimetres.limits->minSideDifference, 100.0);
}

TEST(NamingByTheSearch, TakesTheLimitForTheTolerancesThatAreNotGiven) {
  NamingRequest request = requestOf(Naming::automatic);
  request.limit = 0.5;
  const NamingReport report = pair().name(request, Unit::millimetre);
  EXPECT_EQ(report.limits->discrepancy, 0.5);
  EXPECT_EQ(report.limits->side, 0.5);
  EXPECT_EQ(report.limits->closeness, 0.5);
  EXPECT_EQ(report.limits->minSideDifference, 100.0);
}

TEST(NamingByTheSearch, TakesEachToleranceOfTheRequest) {
  NamingRequest request = requestOf(Naming::automatic);
  request.limit = 0.5;
  request.sideTolerance = 0.01;
  request.minSideDifference = 0.03;
  request.closeness = 0.04;
  const NamingReport report = pair().name(request);
  EXPECT_EQ(report.limits->side, 0.01);
  EXPECT_EQ(report.limits->minSideDifference, 0.03);
  EXPECT_EQ(report.limits->closeness, 0.04);
}

TEST(NamingByTheSearch, HasNothingToDoWhereAllPointsHaveNames) {
  const Targets seen{0, 1, 2, 3};
  Survey survey({named(stationSeeing("A", seen, 0.0), seen), named(stationSeeing("B", seen, 0.7), seen)});
  const NamingReport report = survey.name(requestOf(Naming::automatic));
  EXPECT_THAT(kindsOf(report), ElementsAre(FindingKind::nothingUnnamed));
  EXPECT_FALSE(report.isRefused);
  EXPECT_THAT(report.steps, IsEmpty());
}

TEST(NamingByTheSearch, IsRefusedWhereNoStationsCouldBeJoined) {
  Survey survey({stationSeeing("A", {0, 1, 2, 3}, 0.0), stationSeeing("B", {5, 6, 7, 8}, 0.7)});
  const NamingReport report = survey.name(requestOf(Naming::automatic));
  EXPECT_TRUE(report.isRefused);
  EXPECT_EQ(report.unnamed, 8u);
  ASSERT_THAT(kindsOf(report), ElementsAre(FindingKind::stationNoEqualTriangles));
  EXPECT_THAT(report.reasons[0].groups, ElementsAre("A", "B")) << "one reason for all that have it";
}

TEST(NamingByTheSearch, IsRefusedWhereAStationCanBeLaidInSeveralWays) {
  std::vector<OdGePoint3d> targets = hall;
  for (OdGePoint3d corner : courtyard) targets.push_back({corner.x + 80.0, corner.y, corner.z});
  const Targets square{10, 11, 12, 13, 14, 15};
  Targets all = allTargets;
  all.insert(all.end(), square.begin(), square.end());
  Survey survey({stationSeeing("A", targets, all, 0.0), stationSeeing("B", targets, allTargets, 0.7),
                 stationSeeing("C", targets, square, 1.9)});
  const NamingReport report = survey.name(requestOf(Naming::automatic));
  EXPECT_TRUE(report.isRefused) << "though A and B could be joined";
  ASSERT_THAT(kindsOf(report), ElementsAre(FindingKind::stationAmbiguous));
  EXPECT_THAT(report.reasons[0].groups, ElementsAre("C"));
  EXPECT_EQ(report.reasons[0].count, 6u);
}

TEST(NamingByTheSearch, GoesOnWithoutAStationThatFitsNowhere) {
  Survey survey({stationSeeing("A", {0, 1, 2, 3, 4, 5}, 0.0), stationSeeing("B", {0, 1, 2, 3, 4, 5}, 0.7),
                 stationSeeing("C", {6, 7, 8, 9}, 1.9)});
  const NamingReport report = survey.name(requestOf(Naming::automatic));
  EXPECT_FALSE(report.isRefused);
  EXPECT_EQ(report.named, 12u);
  EXPECT_EQ(report.unnamed, 4u);
  ASSERT_THAT(kindsOf(report), ElementsAre(FindingKind::stationNoEqualTriangles));
  EXPECT_THAT(report.reasons[0].groups, ElementsAre("C"));
  EXPECT_EQ(report.reasons[0].limit, 0.02);
}

TEST(NamingByTheSearch, TellsOfAStationOnThreePointsThatChanceMightHaveJoined) {
  const auto reasonsOf = [](double noise) {
    std::vector<OdGePoint3d> targets = hall;
    for (const OdGePoint3d& p :
         {OdGePoint3d(71.3, 8.2, 1.9), OdGePoint3d(77.9, 31.4, 0.6), OdGePoint3d(60.1, 52.8, 5.2),
          OdGePoint3d(88.6, 19.7, 7.3), OdGePoint3d(95.2, 44.1, 2.8), OdGePoint3d(66.4, -13.3, 3.5)}) {
      targets.push_back(p);
    }
    StationPoints third = stationSeeing("C", targets, {1, 5, 7, 10, 11, 12, 13, 14, 15}, 1.9);
    third.points[1].position.z += noise;
    third.points[2].position.x -= noise;
    Survey survey({stationSeeing("A", allTargets, 0.0), stationSeeing("B", allTargets, 0.7), third});
    NamingRequest request = requestOf(Naming::automatic);
    request.limit = 0.5;
    request.closeness = 0.02;
    return survey.name(request).reasons;
  };
  EXPECT_THAT(reasonsOf(0.01), IsEmpty()) << "less than one in ten thousand";
  const auto reasons = reasonsOf(0.12);
  ASSERT_EQ(reasons.size(), 1u);
  EXPECT_EQ(reasons[0].kind, FindingKind::weakLink);
  EXPECT_THAT(reasons[0].groups, ElementsAre("C"));
  EXPECT_GE(reasons[0].value, 1e-4);
  EXPECT_LT(reasons[0].value, 1e-2);
}

TEST(NamingByTheSearch, TellsOfCoordinatesThatAreNoNumbers) {
  StationPoints lost = stationSeeing("B", {0, 1, 2, 3, 4, 5}, 0.7);
  lost.points.push_back({"", {std::nan(""), 0, 0}});
  Survey survey({stationSeeing("A", {0, 1, 2, 3, 4, 5}, 0.0), lost});
  const NamingReport report = survey.name(requestOf(Naming::automatic));
  EXPECT_THAT(kindsOf(report), testing::Contains(FindingKind::notFinite));
}

TEST(NamingByTheSearch, TellsOfTwinsWhereAStationIsLeftOut) {
  StationPoints twins = stationSeeing("C", {6, 7, 8, 9}, 1.9);
  twins.points.push_back(twins.points.front());
  twins.points.back().position.x += 0.01;
  Survey survey({stationSeeing("A", {0, 1, 2, 3, 4, 5}, 0.0), stationSeeing("B", {0, 1, 2, 3, 4, 5}, 0.7), twins});
  const NamingReport report = survey.name(requestOf(Naming::automatic));
  EXPECT_THAT(kindsOf(report), ElementsAre(FindingKind::stationNoEqualTriangles, FindingKind::twinPoints));
  EXPECT_THAT(report.reasons[1].groups, ElementsAre("C"));
}

TEST(NamingByTheSearch, AsksForTheUnitWhereTheLimitsCannotBeOfIt) {
  Survey survey({stationSeeing("A", {0, 1, 2, 3}, 0.0), stationSeeing("B", {5, 6, 7, 8}, 0.7)});
  const NamingReport report = survey.name(requestOf(Naming::automatic), Unit::millimetre);
  EXPECT_EQ(kindsOf(report).front(), FindingKind::nearOneAnother);
}

TEST(NamingByTheSearch, IsAStageOfTheWork) {
  struct Told : Progress {
    void begin(Stage stage) override { stages.push_back(stage); }
    void end() override { ++ends; }
    std::vector<Stage> stages;
    int ends = 0;
  } progress;
  Survey survey = pair();
  namePoints(survey.session.workbench, *survey.session.driven, requestOf(Naming::automatic), Unit::metre, progress);
  EXPECT_THAT(progress.stages, ElementsAre(Stage::naming));
  EXPECT_EQ(progress.ends, 1);
}

}  // namespace
}  // namespace tiepoint::workbench
