#include "workbench/survey/choices.h"

#include <gmock/gmock.h>

#include "workbench/survey/drawn_stations.h"
#include "workbench/survey/refusal_of.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Two stations that share four names.
class Choices : public DrawnStations {
 protected:
  Choices() { store({hallFrom("A", 0, {"T1", "T2", "T3", "T4"}), hallFrom("B", 100, {"T1", "T2", "T3", "T4"})}); }

  std::optional<NamingReport> apply() { return applyChoices(workbench, begin(), resolved, progress); }
  const SessionState& applied() {
    DrivenSession& session = begin();
    applyChoices(workbench, session, resolved, progress);
    return session.state();
  }

  ResolvedRequest resolved;
  RegistrationRequest& request = resolved.request;
  Progress progress;
};

TEST_F(Choices, AreNoneInAnEmptyRequest) {
  const SessionState& state = applied();
  EXPECT_THAT(pointsInUse(state), ElementsAre("A:T1", "A:T2", "A:T3", "A:T4", "B:T1", "B:T2", "B:T3", "B:T4"));
  EXPECT_FALSE(state.groups[0].inBase);
  EXPECT_FALSE(apply().has_value()) << "no naming was asked for";
}

TEST_F(Choices, ExcludeAPoint) {
  request.exclude = {choiceOf("A", "T1")};
  const SessionState& state = applied();
  EXPECT_FALSE(state.points[0].record.included);
  EXPECT_TRUE(state.points[4].record.included) << "of the other group";
  EXPECT_THAT(pointsInUse(state), ElementsAre("A:T2", "A:T3", "A:T4", "B:T2", "B:T3", "B:T4"));
}

TEST_F(Choices, ExcludeAGroup) {
  request.exclude = {choiceOf("B")};
  const SessionState& state = applied();
  for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(state.points[i].record.included, i < 4) << i;
}

TEST_F(Choices, WeighAPointAndAWholeGroup) {
  resolved.weights = {{choiceOf("A", "T2"), 0.5}, {choiceOf("B"), 0.25}};
  const SessionState& state = applied();
  EXPECT_EQ(state.points[0].record.weight, 1.0);
  EXPECT_EQ(state.points[1].record.weight, 0.5);
  for (std::size_t i = 4; i < 8; ++i) EXPECT_EQ(state.points[i].record.weight, 0.25) << i;
}

TEST_F(Choices, OfAWeightTheLastCounts) {
  resolved.weights = {{choiceOf("A", "T2"), 0.5}, {choiceOf("A"), 0.75}, {choiceOf("A", "T3"), 0.25}};
  const SessionState& state = applied();
  EXPECT_EQ(state.points[1].record.weight, 0.75);
  EXPECT_EQ(state.points[2].record.weight, 0.25);
}

TEST_F(Choices, TheRequestsOwnWeightsAreNotLookedAt) {
  request.weights = {{choiceOf("A", "T2"), 0.5}};
  EXPECT_EQ(applied().points[1].record.weight, 1.0) << "those that were resolved are";
}

TEST_F(Choices, MakeSeveralGroupsTheBase) {
  request.base = {"B", "A"};
  const SessionState& both = applied();
  EXPECT_TRUE(both.groups[0].inBase && both.groups[1].inBase);
  request.base = {"B"};
  const SessionState& one = applied();
  EXPECT_FALSE(one.groups[0].inBase);
  EXPECT_TRUE(one.groups[1].inBase);
}

TEST_F(Choices, OfWhatThereIsntAreRefused) {
  request.base = {"C"};
  EXPECT_EQ(refusalOf([&] { apply(); }).field, Field::base);
  request.exclude = {choiceOf("A", "T9")};
  const Refusal refusal = refusalOf([&] { apply(); });
  EXPECT_EQ(refusal.kind, RefusalKind::noSuchPoint);
  EXPECT_EQ(refusal.field, Field::exclude);
  EXPECT_EQ(refusal.point, "T9");
  request.exclude.clear();
  resolved.weights = {{choiceOf("A", "T9"), 0.5}};
  EXPECT_EQ(refusalOf([&] { apply(); }).field, Field::weight);
}

/// Two stations without names.
class ChoicesOfUnnamed : public DrawnStations {
 protected:
  ChoicesOfUnnamed() {
    store({hallFrom("A", 0, {"", "", "", ""}), hallFrom("B", 100, {"", "", "", ""})});
    request.naming.how = Naming::triangles;
    request.naming.sideTolerance = 0.01;
    request.naming.minSideDifference = 0.1;
  }

  ResolvedRequest resolved;
  RegistrationRequest& request = resolved.request;
  Progress progress;
};

TEST_F(ChoicesOfUnnamed, NameThemAndTellOfIt) {
  DrivenSession& session = begin();
  const auto report = applyChoices(workbench, session, resolved, progress);
  ASSERT_TRUE(report);
  EXPECT_EQ(report->how, Naming::triangles);
  EXPECT_EQ(report->named, 8u);
  EXPECT_EQ(report->unnamed, 0u);
  for (const SessionPoint& point : session.state().points) EXPECT_TRUE(point.record.named);
}

TEST_F(ChoicesOfUnnamed, AreAppliedToNamesThatTheNamingBrought) {
  DrivenSession& first = begin();
  applyChoices(workbench, first, resolved, progress);
  const std::string name = first.state().points[0].name;
  request.exclude = {choiceOf("A", name)};
  resolved.weights = {{choiceOf("B", name), 0.5}};
  DrivenSession& session = begin();
  applyChoices(workbench, session, resolved, progress);
  EXPECT_FALSE(session.state().points[0].record.included);
  for (const SessionPoint& point : session.state().points) {
    const bool isWeighted = point.name == name && point.record.groupId == session.state().groups[1].id;
    EXPECT_EQ(point.record.weight, isWeighted ? 0.5 : 1.0);
  }
}

TEST_F(ChoicesOfUnnamed, AreRefusedForANameThatTheNamingHasntBrought) {
  request.exclude = {choiceOf("A", "surely not")};
  const Refusal refusal = refusalOf([&] { applyChoices(workbench, begin(), resolved, progress); });
  EXPECT_EQ(refusal.kind, RefusalKind::noSuchPoint);
  EXPECT_EQ(refusal.point, "surely not");
  EXPECT_EQ(refusal.known.size(), 4u) << "the names that it has brought";
}

TEST_F(ChoicesOfUnnamed, OfAKnownGroupKeepItOutOfTheNaming) {
  request.exclude = {choiceOf("B")};
  DrivenSession& session = begin();
  const auto report = applyChoices(workbench, session, resolved, progress);
  ASSERT_TRUE(report);
  EXPECT_EQ(report->named, 0u);
  EXPECT_THAT(pointsInUse(session.state()), IsEmpty());
}

TEST_F(ChoicesOfUnnamed, TakeABaseOnlyAfterTheNaming) {
  request.naming.how = Naming::automatic;
  request.base = {"A"};
  DrivenSession& session = begin();
  const auto report = applyChoices(workbench, session, resolved, progress);
  ASSERT_TRUE(report);
  EXPECT_EQ(report->named, 8u);
  EXPECT_TRUE(session.state().groups[0].inBase);
}

TEST_F(ChoicesOfUnnamed, CanBeCancelledWhileNamesAreLookedFor) {
  request.naming.how = Naming::automatic;
  ToldProgress cancelled(0);
  EXPECT_EQ(refusalOf([&] { applyChoices(workbench, begin(), resolved, cancelled); }).kind, RefusalKind::cancelled);
  EXPECT_THAT(cancelled.stages, ElementsAre(Stage::naming));
  EXPECT_EQ(cancelled.open, 0);
}

}  // namespace
}  // namespace tiepoint::workbench
