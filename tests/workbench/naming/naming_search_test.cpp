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
