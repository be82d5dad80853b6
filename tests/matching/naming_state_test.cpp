#include "matching/naming_state.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "matching/plain_naming.h"
#include "matching/points.h"
#include "solver/arbitrary.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

NamingChanges changesOf(const NamingState& state) {
  NamingChanges changes;
  changes.existingAssignments[99] = 99;
  changes.newAssignments[99] = 99;
  state.collectChanges(changes);
  return changes;
}

TEST(NamingState, OnWhichNothingWasDoneHasNoChanges) {
  const NamingChanges changes = changesOf(NamingState({manualPoint(0, 0, 5), autoPoint(1, 1, 6), unnamedPoint(2, 2)}));
  EXPECT_TRUE(changes.isEmpty());
}

TEST(NamingState, TwoMembersOfOneGroupAreRefusedWhateverTheirNames) {
  NamingState state({unnamedPoint(1, 0), unnamedPoint(2, 0), manualPoint(3, 1, 5), manualPoint(4, 1, 5)});
  EXPECT_FALSE(state.uniteCorrespondence({1, 2}));
  EXPECT_FALSE(state.uniteCorrespondence({3, 4}));
  EXPECT_FALSE(state.uniteCorrespondence({1, 1}));
  EXPECT_TRUE(changesOf(state).isEmpty());
}

TEST(NamingState, TwoBindingNamesAreRefusedAndOneIsNothingToDo) {
  NamingState state({manualPoint(0, 0, 5), manualPoint(1, 1, 7), manualPoint(2, 2, 5)});
  EXPECT_FALSE(state.uniteCorrespondence({0, 1}));
  EXPECT_TRUE(state.uniteCorrespondence({0, 2}));
  EXPECT_TRUE(changesOf(state).isEmpty());
}

TEST(NamingState, UnnamedMembersGetOneLabelAfterTheOther) {
  NamingState state({unnamedPoint(0, 0), unnamedPoint(1, 1), unnamedPoint(2, 0), unnamedPoint(3, 1)});
  EXPECT_TRUE(state.uniteCorrespondence({0, 1}));
  EXPECT_TRUE(state.uniteCorrespondence({2, 3}));
  EXPECT_EQ(changesOf(state).newAssignments, (Assignments{{0, 0}, {1, 0}, {2, 1}, {3, 1}}));
  EXPECT_TRUE(changesOf(state).existingAssignments.empty());
}

TEST(NamingState, TheNextLabelFillsTheGapsOfTheAutomaticNames) {
  NamingState state({autoPoint(0, 0, 0), autoPoint(1, 1, 2), manualPoint(2, 2, 1), unnamedPoint(3, 3)});
  EXPECT_EQ(state.nextLabel(), 1u);
  EXPECT_TRUE(state.uniteCorrespondence({3}));
  EXPECT_EQ(state.nextLabel(), 3u);
}

TEST(NamingState, ALabelThatNobodyBearsAnyMoreIsFreeAgain) {
  NamingState state({autoPoint(0, 0, 0), autoPoint(1, 1, 1), manualPoint(2, 2, 5)});
  EXPECT_EQ(state.nextLabel(), 2u);
  EXPECT_TRUE(state.uniteCorrespondence({0, 2}));
  EXPECT_EQ(state.nextLabel(), 0u);
}

TEST(NamingState, ALabelThatItsBearersLeftForASmallerOneIsFreeAgain) {
  NamingState state({autoPoint(0, 0, 0), autoPoint(1, 1, 1)});
  EXPECT_EQ(state.nextLabel(), 2u);
  EXPECT_TRUE(state.uniteCorrespondence({0, 1}));
  EXPECT_EQ(state.nextLabel(), 1u);
}

TEST(NamingState, ALabelOfThisRunIsNotGivenTwiceThoughNobodyBearsItAnyMore) {
  NamingState state({unnamedPoint(0, 0), unnamedPoint(1, 1), manualPoint(2, 2, 5)});
  EXPECT_TRUE(state.uniteCorrespondence({0, 1}));
  EXPECT_TRUE(state.uniteCorrespondence({0, 2}));
  EXPECT_EQ(changesOf(state).existingAssignments, (Assignments{{0, 5}, {1, 5}}));
  EXPECT_EQ(state.nextLabel(), 1u);
}

TEST(NamingState, OfTwoAutomaticNamesTheSmallerStandsForTheMembersAlone) {
  NamingState state({autoPoint(0, 0, 3), autoPoint(1, 1, 9), autoPoint(2, 2, 9)});
  EXPECT_TRUE(state.uniteCorrespondence({0, 1}));
  EXPECT_EQ(changesOf(state).existingAssignments, (Assignments{{1, 3}}));
  EXPECT_TRUE(changesOf(state).newAssignments.empty());
}

TEST(NamingState, UnnamedMembersJoinTheSmallestAutomaticName) {
  NamingState state({autoPoint(0, 0, 9), autoPoint(1, 1, 3), unnamedPoint(2, 2)});
  EXPECT_TRUE(state.uniteCorrespondence({0, 1, 2}));
  EXPECT_EQ(changesOf(state).existingAssignments, (Assignments{{0, 3}, {2, 3}}));
}

TEST(NamingState, ABindingNameTakesAnAutomaticOneOverEverywhere) {
  NamingState state({manualPoint(0, 0, 5), autoPoint(1, 1, 9), autoPoint(2, 2, 9), unnamedPoint(3, 3)});
  EXPECT_TRUE(state.uniteCorrespondence({0, 1}));
  EXPECT_EQ(changesOf(state).existingAssignments, (Assignments{{1, 5}, {2, 5}}));
}

TEST(NamingState, ANewLabelMayEqualTheNumberOfABindingName) {
  NamingState state({manualPoint(0, 0, 0), unnamedPoint(1, 1), unnamedPoint(2, 2)});
  EXPECT_TRUE(state.uniteCorrespondence({1, 2}));
  EXPECT_EQ(changesOf(state).newAssignments, (Assignments{{1, 0}, {2, 0}}));
}

TEST(NamingState, AMemberThatItDoesNotKnowGetsNoName) {
  NamingState state({unnamedPoint(1, 1), unnamedPoint(2, 2), autoPoint(3, 3, 7), manualPoint(4, 4, 8)});
  EXPECT_TRUE(state.uniteCorrespondence({50}));
  EXPECT_TRUE(changesOf(state).isEmpty());
  EXPECT_TRUE(state.uniteCorrespondence({50, 1}));
  EXPECT_TRUE(state.uniteCorrespondence({2, 3, 51}));
  EXPECT_EQ(changesOf(state).newAssignments, (Assignments{{1, 0}}));
  EXPECT_EQ(changesOf(state).existingAssignments, (Assignments{{2, 7}}));
  EXPECT_FALSE(state.uniteCorrespondence({50, 51})) << "both count as points of group 0";
}

RC_GTEST_PROP(NamingState, FollowsThePlainRulesUnderAnyScript, ()) {
  RefPointList points;
  const auto count = arbitraryBetween<RefPointId>(1, 14);
  for (RefPointId id = 0; id < count; ++id) {
    const auto group = arbitraryBetween<GroupId>(0, 4);
    const auto name = arbitraryBetween<CommonPointId>(0, 4);
    const int kind = arbitraryBetween(0, 2);
    points.push_back(kind == 0   ? unnamedPoint(id, group)
                     : kind == 1 ? manualPoint(id, group, name)
                                 : autoPoint(id, group, name));
  }
  NamingState state(points);
  PlainNaming plain(points);
  const int steps = arbitraryBetween(0, 12);
  for (int step = 0; step < steps; ++step) {
    std::list<RefPointId> members;
    const int size = arbitraryBetween(0, 4);
    for (int i = 0; i < size; ++i) members.push_back(arbitraryBetween<RefPointId>(0, onceIn(20) ? count : count - 1));
    RC_ASSERT(state.uniteCorrespondence(members) == plain.unite(members));
    RC_ASSERT(state.nextLabel() == plain.next());
    NamingChanges changes;
    state.collectChanges(changes);
    RC_ASSERT(changes.existingAssignments == plain.changes().existingAssignments);
    RC_ASSERT(changes.newAssignments == plain.changes().newAssignments);
  }
}

}  // namespace
