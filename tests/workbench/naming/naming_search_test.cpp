#include "workbench/naming/naming_search.h"

#include <gmock/gmock.h>

#include "workbench/naming/hall.h"
#include "workbench/session/workbench_session.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {
namespace {

using namespace ZOR::reg;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class Survey {
 public:
  explicit Survey(const std::vector<StationPoints>& stations) : session(stations) { session.driven->addAllGroups(); }

  NamingPlan search(const NamingLimits& limits = usualLimits) {
    Progress progress;
    return searchNames(session.workbench, session.state(), limits, progress);
  }

  WorkbenchSession session;
};

/// For each point of the session in which a plan was carried out, the first point that bears its name;
/// points without a name stand for themselves.
std::vector<std::size_t> partnersIn(const NamingPlan& plan) {
  const auto& points = (*plan.named)->state().points;
  std::vector<std::size_t> partners;
  for (std::size_t i = 0; i < points.size(); ++i) {
    std::size_t first = 0;
    while (!(first == i || (points[i].record.named && points[first].name == points[i].name))) ++first;
    partners.push_back(first);
  }
  return partners;
}

std::vector<StationTrouble> troublesOf(const NamingPlan& plan) {
  std::vector<StationTrouble> troubles;
  for (const UnplacedStation& station : plan.unplaced) troubles.push_back(station.trouble);
  return troubles;
}

// --- Joining.

TEST(ASearchForNames, JoinsTwoStations) {
  Survey survey({stationSeeing("A", {0, 1, 2, 3, 4, 5}, 0.0), stationSeeing("B", {5, 4, 3, 2, 1, 6}, 0.7)});
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, ElementsAre(0, 1));
  EXPECT_THAT(plan.unplaced, IsEmpty());
  EXPECT_THAT(plan.openLoops, IsEmpty());
  EXPECT_TRUE(plan.risks.empty());
  EXPECT_THAT(partnersIn(plan), ElementsAre(0, 1, 2, 3, 4, 5, 5, 4, 3, 2, 1, 11));
}

TEST(ASearchForNames, JoinsAChainOfStationsThatDoNotAllShareTargets) {
  Survey survey({stationSeeing("A", {0, 1, 2, 3, 8}, 0.0), stationSeeing("B", {5, 6, 7, 9}, 0.7),
                 stationSeeing("C", {0, 2, 3, 8, 5, 6, 7, 9}, 1.9)});
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, ElementsAre(0, 1, 2));
  EXPECT_THAT(partnersIn(plan), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 0, 2, 3, 4, 5, 6, 7, 8));
}

TEST(ASearchForNames, BringsItsStepsToTheSameNamesInAnotherSession) {
  Survey survey({stationSeeing("A", {0, 1, 2, 3, 8}, 0.0), stationSeeing("B", {5, 6, 7, 9}, 0.7),
                 stationSeeing("C", {0, 2, 3, 8, 5, 6, 7, 9}, 1.9)});
  const NamingPlan plan = survey.search();
  NamingSession again(*survey.session.driven);
  again.repeat(plan.steps);
  const auto& expected = (*plan.named)->state().points;
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(again.state().points[i].name, expected[i].name) << i;
}

TEST(ASearchForNames, FindsTheSameTwice) {
  Survey survey({noisy(stationSeeing("A", allTargets, 0.0), 0.002), stationSeeing("B", {5, 6, 7, 9}, 0.7),
                 stationSeeing("C", allTargets, 1.9)});
  const NamingPlan first = survey.search(), second = survey.search();
  ASSERT_EQ(first.steps.size(), second.steps.size());
  for (std::size_t i = 0; i < first.steps.size(); ++i) {
    EXPECT_EQ(first.steps[i].kind, second.steps[i].kind) << i;
    EXPECT_EQ(first.steps[i].groups, second.steps[i].groups) << i;
    EXPECT_EQ(first.steps[i].named, second.steps[i].named) << i;
  }
  EXPECT_EQ(partnersIn(first), partnersIn(second));
}

TEST(ASearchForNames, TakesTheNamesOfTheFiles) {
  const Targets seen{0, 1, 2, 3, 4, 5};
  Survey survey({named(stationSeeing("A", seen, 0.0), seen), stationSeeing("B", seen, 0.7)});
  const NamingPlan plan = survey.search();
  ASSERT_THAT(plan.placed, ElementsAre(0, 1));
  const auto& points = (*plan.named)->state().points;
  for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(points[6 + i].name, "T" + std::to_string(i));
}

TEST(ASearchForNames, JoinsByNamesAloneWhereThreeAreShared) {
  const Targets seen{0, 1, 2, 3};
  Survey survey({named(stationSeeing("A", {0, 1, 2, 3, 4}, 0.0), seen, 4), named(stationSeeing("B", seen, 0.7), seen)});
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, ElementsAre(0, 1));
  for (const NamingStep& step : plan.steps) EXPECT_NE(step.kind, NamingKind::triangles);
}

TEST(ASearchForNames, JoinsAStationThatSharesItsNamesWithSeveral) {
  // D shares a name with A and two with B, and its only triangle is that of no other station.
  Survey survey({named(stationSeeing("A", {0, 1, 2, 4}, 0.0), {0, 1, 2, 4}),
                 named(stationSeeing("B", {0, 1, 2, 5, 6}, 0.7), {0, 1, 2, 5, 6}),
                 named(stationSeeing("D", {4, 5, 6}, 1.9), {4, 5, 6}), stationSeeing("E", {0, 1, 2, 5, 6, 8}, 0.2)});
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, ElementsAre(0, 1, 2, 3));
}

TEST(ASearchForNames, BearsNoiseWithinTheLimit) {
  Survey survey({stationSeeing("A", allTargets, 0.0), noisy(stationSeeing("B", allTargets, 0.7), 0.003),
                 noisy(stationSeeing("C", {9, 8, 7, 6, 5, 4, 3}, 1.9), 0.003)});
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, ElementsAre(0, 1, 2));
  EXPECT_THAT(partnersIn(plan),
              ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 9, 8, 7, 6, 5, 4, 3));
}

TEST(ASearchForNames, LeavesNoDiscrepancyAboveTheLimit) {
  StationPoints off = stationSeeing("B", allTargets, 0.7);
  off.points[4].position.z += 0.3;
  Survey survey({stationSeeing("A", allTargets, 0.0), off});
  const NamingPlan plan = survey.search();
  ASSERT_THAT(plan.placed, ElementsAre(0, 1));
  EXPECT_LE(largestDiscrepancy((*plan.named)->state()), 0.02);
  EXPECT_FALSE((*plan.named)->state().points[14].record.named) << "the point that is off stays without a name";
}

// --- What the user has chosen, and what there is.

TEST(ASearchForNames, LeavesOutWhatTheUserExcluded) {
  Survey survey({stationSeeing("A", allTargets, 0.0), stationSeeing("B", allTargets, 0.7)});
  survey.session.driven->excludePoints({3, 14});
  const NamingPlan plan = survey.search();
  ASSERT_THAT(plan.placed, ElementsAre(0, 1));
  const SessionState& state = (*plan.named)->state();
  EXPECT_FALSE(state.points[3].record.included);
  EXPECT_FALSE(state.points[14].record.included);
  EXPECT_EQ(partnersIn(plan)[15], 5u);
}

TEST(ASearchForNames, HasNoUseForAGroupThatIsExcludedWhole) {
  Survey survey(
      {stationSeeing("A", allTargets, 0.0), stationSeeing("B", allTargets, 0.7), stationSeeing("C", allTargets, 1.9)});
  survey.session.driven->excludeGroups({1});
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, ElementsAre(0, 2));
  EXPECT_THAT(plan.unplaced, IsEmpty()) << "it isn't asked for";
}

TEST(ASearchForNames, ChangesNothingInTheSessionThatItIsFor) {
  Survey survey({stationSeeing("A", allTargets, 0.0), stationSeeing("B", allTargets, 0.7)});
  survey.search();
  for (const SessionPoint& point : survey.session.state().points) EXPECT_FALSE(point.record.named);
  EXPECT_EQ(survey.session.workbench.documents().size(), 1u);
  EXPECT_EQ(storedGroups(*survey.session.drawing()).size(), 2u);
}

// --- What can't be joined.

TEST(ASearchForNames, EndsWithoutAPlanWhereNoTwoStationsCanBeJoined) {
  Survey survey({stationSeeing("A", {0, 1, 2, 3}, 0.0), stationSeeing("B", {5, 6, 7, 8}, 0.7)});
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, IsEmpty());
  EXPECT_TRUE(plan.steps.empty());
  EXPECT_EQ(plan.named, nullptr);
  EXPECT_THAT(troublesOf(plan), ElementsAre(StationTrouble::noEqualTriangle, StationTrouble::noEqualTriangle));
}

TEST(ASearchForNames, OfOneStationOrNoneIsNoPlan) {
  EXPECT_EQ(Survey({stationSeeing("A", allTargets, 0.0)}).search().named, nullptr);
  const NamingPlan none = Survey({}).search();
  EXPECT_EQ(none.named, nullptr);
  EXPECT_THAT(none.unplaced, IsEmpty());
}

TEST(ASearchForNames, SaysWhatIsWrongWithEachStationThatItLeavesOut) {
  Survey survey({stationSeeing("A", allTargets, 0.0), stationSeeing("B", allTargets, 0.7),
                 stationSeeing("C", {0, 1}, 0.2), mirrored(stationSeeing("D", allTargets, 0.3))});
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, ElementsAre(0, 1));
  ASSERT_THAT(troublesOf(plan), ElementsAre(StationTrouble::tooFewPoints, StationTrouble::mirrored));
  EXPECT_EQ(plan.unplaced[0].group, 2u);
  EXPECT_EQ(plan.unplaced[1].group, 3u);
  EXPECT_EQ(plan.unplaced[1].points, 10u);
}

TEST(ASearchForNames, RefusesALayoutThatIsTheSameWhenItIsTurned) {
  const Targets all{0, 1, 2, 3, 4, 5};
  Survey survey({stationSeeing("A", courtyard, all, 0.0), stationSeeing("B", courtyard, all, 0.7)});
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, IsEmpty());
  EXPECT_THAT(troublesOf(plan), ElementsAre(StationTrouble::ambiguous, StationTrouble::ambiguous));
}

TEST(ASearchForNames, LaysASymmetricLayoutByTheTargetBesideIt) {
  std::vector<OdGePoint3d> targets = courtyard;
  targets.push_back({13.7, 4.4, 1.0});
  targets.push_back({11.1, -9.3, 2.0});
  const Targets all{0, 1, 2, 3, 4, 5, 6, 7};
  Survey survey({stationSeeing("A", targets, all, 0.0), stationSeeing("B", targets, all, 0.7)});
  const NamingPlan plan = survey.search();
  ASSERT_THAT(plan.placed, ElementsAre(0, 1));
  const auto partners = partnersIn(plan);
  for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(partners[8 + i], i) << i;
}

TEST(ASearchForNames, TellsOfAStationThatHangsOnThreePoints) {
  Survey survey(
      {stationSeeing("A", allTargets, 0.0), stationSeeing("B", allTargets, 0.7), stationSeeing("C", {1, 5, 7}, 1.9)});
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, ElementsAre(0, 1, 2));
  ASSERT_EQ(plan.risks.size(), 1u);
  EXPECT_EQ(plan.risks.begin()->first, 2u);
  EXPECT_GE(plan.risks.begin()->second, 0.0);
  EXPECT_LT(plan.risks.begin()->second, 0.05);
}

TEST(ASearchForNames, NamesTheTargetsOfALoopThatCloses) {
  // A to B to C to D and back to A, each with four targets of the one before.
  Survey survey({stationSeeing("A", {0, 1, 2, 3, 9, 6, 5}, 0.0), stationSeeing("B", {0, 1, 2, 3, 4, 8}, 0.7),
                 stationSeeing("C", {4, 8, 3, 2, 7, 5}, 1.9), stationSeeing("D", {7, 5, 4, 9, 6, 8}, 0.3)});
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(plan.openLoops, IsEmpty());
  EXPECT_THAT(partnersIn(plan),
              ElementsAre(0, 1, 2, 3, 4, 5, 6, 0, 1, 2, 3, 11, 12, 11, 12, 3, 2, 17, 6, 17, 6, 11, 4, 5, 12));
}

/// Rooms in a ring: four stations, each of which sees the room before it and the next one. The targets of
/// the first room, one fewer than in the others, were moved by `gap` before the last station saw them.
std::vector<StationPoints> ring(double gap) {
  const std::vector<OdGePoint3d> room{
      {0.0, 0.0, 0.0}, {4.3, 0.7, 1.1}, {1.2, 5.9, 2.6}, {6.8, 3.1, 3.7}, {8.1, 7.7, 0.4}};
  const std::vector<OdGePoint3d> corners{{0, 0, 0}, {40, 3, 1}, {44, 42, 2}, {2, 37, 3}};
  std::vector<OdGePoint3d> targets;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const double size = 1.0 + 0.17 * static_cast<double>(i);
    for (const OdGePoint3d& p : room) {
      targets.push_back({corners[i].x + size * p.x, corners[i].y + size * p.y, corners[i].z + size * p.z});
    }
  }
  std::vector<OdGePoint3d> later = targets;
  for (std::size_t i = 0; i < 5; ++i) later[i].x += gap;
  return {stationSeeing("A", targets, {0, 1, 2, 3, 5, 6, 7, 8, 9}, 0.0),
          stationSeeing("B", targets, {5, 6, 7, 8, 9, 10, 11, 12, 13, 14}, 0.7),
          stationSeeing("C", targets, {10, 11, 12, 13, 14, 15, 16, 17, 18, 19}, 1.9),
          stationSeeing("D", later, {15, 16, 17, 18, 19, 0, 1, 2, 3}, 0.3)};
}

TEST(ASearchForNames, ClosesALoopWhoseEndsDoNotFallOnOneSpot) {
  const NamingLimits limits{0.06, 0.02, 0.1, 0.005};
  Survey survey(ring(0.05));
  const NamingPlan plan = survey.search(limits);
  ASSERT_THAT(plan.placed, ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(plan.openLoops, IsEmpty());
  const auto partners = partnersIn(plan);
  EXPECT_EQ(std::vector<std::size_t>(partners.end() - 9, partners.end()),
            (std::vector<std::size_t>{24, 25, 26, 27, 28, 0, 1, 2, 3}));
}

TEST(ASearchForNames, TellsOfALoopThatStaysOpen) {
  Survey survey(ring(0.3));
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(plan.openLoops, ElementsAre(Pair(0, 3)));
  EXPECT_LE(largestDiscrepancy((*plan.named)->state()), 0.02);
}

TEST(ASearchForNames, TakesARoomThatLiesFarOffForAnotherOne) {
  Survey survey(ring(3.0));
  EXPECT_THAT(survey.search().openLoops, IsEmpty()) << "no loop is open by so much";
}

TEST(ASearchForNames, LeavesOutAStationThatTheNamesOfTheFilesPutElsewhere) {
  // C was measured with the targets of A, but three that the files name lie half a metre from where B has them.
  std::vector<OdGePoint3d> targets = hall, later = hall;
  for (const std::size_t i : Targets{7, 8, 9}) later[i].z += 0.5;
  StationPoints second = stationSeeing("B", targets, {0, 1, 2, 3, 4, 7, 8, 9}, 0.7);
  StationPoints third = stationSeeing("C", later, {0, 2, 3, 5, 6, 7, 8, 9}, 1.9);
  for (std::size_t i = 5; i < 8; ++i) second.points[i].name = third.points[i].name = "T" + std::to_string(i);
  Survey survey({stationSeeing("A", targets, {0, 1, 2, 3, 4, 5, 6}, 0.0), second, third});
  const NamingPlan plan = survey.search();
  ASSERT_EQ(plan.placed.size(), 2u);
  EXPECT_LE(largestDiscrepancy((*plan.named)->state()), 0.02);
}

TEST(ASearchForNames, TriesAStationAgainWhenMoreStationsMayDecideBetweenItsWays) {
  // The courtyard's corners differ by a centimetre, which is less than measurements may.
  std::vector<OdGePoint3d> targets = hall;
  for (const OdGePoint3d& p : {OdGePoint3d(5.010, 5.002, 0), OdGePoint3d(-5, 5.006, 0.004), OdGePoint3d(-4.995, -5, 0),
                               OdGePoint3d(5.001, -5.008, -0.006), OdGePoint3d(0, 0, 9), OdGePoint3d(0, 0, -3)}) {
    targets.push_back({p.x + 80.0, p.y, p.z});
  }
  Survey survey({stationSeeing("A", targets, {10, 11, 12, 13, 14, 15, 0, 1, 2, 3, 4}, 0.0),
                 stationSeeing("C", targets, {10, 11, 12, 13, 14, 15, 9}, 0.7),
                 stationSeeing("D", targets, {0, 1, 2, 3, 4, 9}, 1.9)});
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, ElementsAre(0, 1, 2));
  EXPECT_THAT(plan.unplaced, IsEmpty());
}

/// Stretched about its first point.
void stretch(std::vector<OdGePoint3d>& targets, const Targets& those, double by) {
  const OdGePoint3d o = targets[those.front()];
  for (const std::size_t i : those) {
    OdGePoint3d& p = targets[i];
    p = {p.x + by * (p.x - o.x), p.y + by * (p.y - o.y), p.z + by * (p.z - o.z)};
  }
}

TEST(ASearchForNames, TakesBackAStationOnThreePointsThatAnotherLinkWouldPutElsewhere) {
  // C shares a triangle with A and one with D, five metres away from where the first puts it; the sides of
  // both differ by about a centimetre.
  std::vector<OdGePoint3d> targets = hall;
  for (const OdGePoint3d& p : {OdGePoint3d(70, 0, 0), OdGePoint3d(100, 0, 0), OdGePoint3d(81, 25.75, 0),
                               OdGePoint3d(-80, 10, 5), OdGePoint3d(-50.5, 10, 5), OdGePoint3d(-69.712, 34.96, 5)}) {
    targets.push_back(p);
  }
  const Targets withA{10, 11, 12}, withD{13, 14, 15};
  std::vector<OdGePoint3d> later = targets;
  for (const std::size_t i : withD) later[i].y += 5.0;
  stretch(later, withA, 3.0e-4);
  stretch(later, withD, 3.7e-4);
  Survey survey({stationSeeing("A", targets, {1, 3, 4, 6, 9, 10, 11, 12}, 0.0),
                 stationSeeing("D", targets, {1, 3, 4, 6, 9, 13, 14, 15}, 0.7),
                 stationSeeing("C", later, {10, 11, 12, 13, 14, 15}, 1.9)});
  const NamingPlan plan = survey.search();
  EXPECT_THAT(plan.placed, ElementsAre(0, 1));
  EXPECT_THAT(troublesOf(plan), ElementsAre(StationTrouble::threePoints));
  EXPECT_TRUE(plan.risks.empty());
  EXPECT_FALSE((*plan.named)->state().points[16].record.named) << "nothing of it is left";
}

TEST(ASearchForNames, LeavesOutAStationThatChanceMightHavePlacedAsWell) {
  const NamingLimits wide{0.5, 0.5, 0.1, 0.02};
  std::vector<OdGePoint3d> targets = hall;
  for (const OdGePoint3d& p :
       {OdGePoint3d(71.3, 8.2, 1.9), OdGePoint3d(77.9, 31.4, 0.6), OdGePoint3d(60.1, 52.8, 5.2),
        OdGePoint3d(88.6, 19.7, 7.3), OdGePoint3d(95.2, 44.1, 2.8), OdGePoint3d(66.4, -13.3, 3.5)}) {
    targets.push_back(p);
  }
  StationPoints rough = stationSeeing("C", targets, {1, 5, 7, 10, 11, 12, 13, 14, 15}, 1.9);
  rough.points[1].position.z += 0.3;
  rough.points[1].position.x += 0.3;
  rough.points[2].position.x -= 0.3;
  Survey survey({stationSeeing("A", allTargets, 0.0), stationSeeing("B", allTargets, 0.7), rough});
  const NamingPlan plan = survey.search(wide);
  EXPECT_THAT(plan.placed, ElementsAre(0, 1));
  EXPECT_THAT(troublesOf(plan), ElementsAre(StationTrouble::threePoints));
}

TEST(ASearchForNames, GivesTargetsTheNameThatALaterStationBrings) {
  // C has T5 a centimetre away, so that it comes with a name of its own to the spot of an automatic one.
  StationPoints third = stationSeeing("C", {0, 1, 2, 3, 4, 5}, 1.9);
  third.points[5].name = "T5";
  third.points[5].position.z += 0.012;
  Survey survey(
      {stationSeeing("A", {0, 1, 2, 3, 4, 5, 6}, 0.0), stationSeeing("B", {0, 1, 2, 3, 4, 5, 6}, 0.7), third});
  const NamingPlan plan = survey.search();
  ASSERT_THAT(plan.placed, ElementsAre(0, 1, 2));
  const auto& points = (*plan.named)->state().points;
  EXPECT_EQ(points[5].name, "T5");
  EXPECT_EQ(points[12].name, "T5");
}

TEST(ASearchForNames, HasNoStepThatNamesNothing) {
  // The files have two names on one spot, which voids every matching by closeness; target 8 would get one by it.
  const Targets seen{0, 1, 2, 3, 4, 5, 7, 8};
  StationPoints first = stationSeeing("A", seen, 0.0), second = stationSeeing("B", seen, 0.7);
  first.points[6].name = "T7";
  second.points[6].name = "T8";
  second.points[6].position.z += 0.003;
  second.points[7].position.z += 0.012;
  Survey survey({first, second});
  const NamingPlan plan = survey.search();
  ASSERT_THAT(plan.placed, ElementsAre(0, 1));
  EXPECT_FALSE((*plan.named)->state().points[7].record.named);
  for (const NamingStep& step : plan.steps) EXPECT_TRUE(step.kind == NamingKind::solve || step.named > 0);
}

// --- Its course.

TEST(ASearchForNames, TellsHowManyStationsStand) {
  struct Counted : Progress {
    void advance(std::uint64_t done, std::uint64_t total) override {
      if (total > 0) told.emplace_back(done, total);
    }
    std::vector<std::pair<std::uint64_t, std::uint64_t>> told;
  } progress;
  Survey survey(
      {stationSeeing("A", allTargets, 0.0), stationSeeing("B", allTargets, 0.7), stationSeeing("C", allTargets, 1.9)});
  searchNames(survey.session.workbench, survey.session.state(), usualLimits, progress);
  EXPECT_THAT(progress.told, ElementsAre(Pair(2, 3), Pair(3, 3)));
}

TEST(ASearchForNames, EndsWhenItIsCancelled) {
  struct Cancelled : Progress {
    void advance(std::uint64_t, std::uint64_t total) override { isLate = total > 0; }
    bool isCancelled() const override { return isLate; }
    bool isLate = false;
  } progress;
  Survey survey(
      {stationSeeing("A", allTargets, 0.0), stationSeeing("B", allTargets, 0.7), stationSeeing("C", allTargets, 1.9)});
  try {
    searchNames(survey.session.workbench, survey.session.state(), usualLimits, progress);
    FAIL();
  } catch (const Refused& refused) {
    EXPECT_EQ(refused.refusal().kind, RefusalKind::cancelled);
  }
  EXPECT_EQ(survey.session.workbench.documents().size(), 1u) << "nothing stays open";
}

}  // namespace
}  // namespace tiepoint::workbench
