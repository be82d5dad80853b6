#include "workbench/naming/naming_session.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>
#include <utility>

#include "solver/arbitrary.h"
#include "support/session_builder.h"
#include "workbench/session/watched_session.h"

namespace tiepoint::workbench {
namespace {

using namespace ZOR::reg;
using tiepoint::testing::arbitraryBetween;
using tiepoint::testing::triangle;

const GroupIdSet allStations{0, 1, 2, 3};
/// Of station 1, which has three others.
constexpr RefPointId leftOut = 4;

/// Four stations in one system, the targets of which join all of them.
struct FourStations {
  FourStations() : watched(stations()), driven(*watched.mirrored) {
    watched.add(allStations);
    driven.excludePoints({leftOut});
  }

  static std::vector<WatchedSession::Station> stations() {
    std::vector<WatchedSession::Station> all;
    for (const char* const name : {"A", "B", "C", "D"}) {
      auto targets = triangle("T1", "T2", "T3");
      targets.push_back(triangle("T4", "T5", "T6", 7).front());
      all.emplace_back(name, targets);
    }
    return all;
  }

  WatchedSession watched;
  DrivenSession driven;
};

/// Each point by itself: those of these groups but for the one that the user has excluded.
void expectIncluded(const SessionState& state, const GroupIdSet& groups) {
  for (const SessionPoint& point : state.points) {
    const bool isWanted = groups.count(point.record.groupId) != 0 && point.record.id != leftOut;
    EXPECT_EQ(point.record.included, isWanted) << point.record.id;
  }
}

TEST(NamingSession, SolvesWithThePointsOfTheseGroupsThatTheUserHasNotExcluded) {
  FourStations survey;
  NamingSession naming(survey.driven);
  EXPECT_TRUE(naming.solve({0, 2}));
  expectIncluded(naming.state(), {0, 2});
  EXPECT_TRUE(naming.solve({0, 1, 2}));
  expectIncluded(naming.state(), {0, 1, 2});
  EXPECT_TRUE(naming.solve({1, 3}));
  expectIncluded(naming.state(), {1, 3});
}

TEST(NamingSession, LetsAllGroupsTakePartAgainInTheEnd) {
  FourStations survey;
  NamingSession naming(survey.driven);
  naming.solve({2, 3});
  naming.finish();
  expectIncluded(naming.state(), allStations);
  EXPECT_TRUE(naming.state().discrepancies.empty());
}

RC_GTEST_PROP(NamingSession, IncludesWhateverWasSolvedBeforeTheSamePoints, ()) {
  FourStations survey;
  NamingSession naming(survey.driven);
  const int solves = arbitraryBetween(1, 8);
  for (int i = 0; i < solves; ++i) {
    GroupIdSet groups;
    for (const GroupId group : allStations) {
      if (arbitraryBetween(0, 1) == 1) groups.insert(group);
    }
    naming.solve(groups);
    for (const SessionPoint& point : naming.state().points) {
      const bool isWanted = groups.count(point.record.groupId) != 0 && point.record.id != leftOut;
      RC_ASSERT(point.record.included == isWanted);
    }
  }
}

NamingStep solveStep(const GroupIdSet& groups) { return {NamingKind::solve, groups, 0.0, 0.0, 0}; }

TEST(NamingSession, RepeatsTheLastSolve) {
  FourStations survey;
  NamingSession naming(survey.driven);
  naming.repeat({solveStep({0, 1}), solveStep({0, 2}), solveStep({0, 3})});
  expectIncluded(naming.state(), {0, 3});
  EXPECT_EQ(naming.state().discrepancies.size(), 8u);
}

TEST(NamingSession, RepeatsASolveThatClosenessSees) {
  auto targets = triangle("T1", "T2", "T3");
  targets.push_back(triangle("?", "?", "?", 30).front());
  WatchedSession watched({{"A", targets}, {"B", targets}});
  watched.add({0, 1});
  DrivenSession driven(*watched.mirrored);
  NamingSession naming(driven);
  naming.repeat({solveStep({0, 1}), {NamingKind::closeness, {}, 0.01, 0.0, 2}, solveStep({0, 1})});
  EXPECT_TRUE(naming.state().points[3].record.named);
  EXPECT_EQ(naming.state().points[3].name, naming.state().points[7].name);
}

TEST(NamingSession, HasTheGroupsWithAPointToUse) {
  FourStations survey;
  survey.driven.excludeGroups({2});
  EXPECT_EQ(NamingSession(survey.driven).groups(), (GroupIdSet{0, 1, 3})) << "all but one point of 1 are in";
}

TEST(NamingSession, SaysThatOneOfTheGroupsTakesNoPart) {
  FourStations survey;
  NamingSession naming(survey.driven);
  EXPECT_FALSE(naming.solve({0, 77})) << "a group that there isn't";
  EXPECT_TRUE(naming.solve({0, 1}));
  EXPECT_FALSE(naming.solve({2})) << "one alone";
  EXPECT_FALSE(naming.solve({}));
}

TEST(NamingSession, SaysThatAGroupHasTooFewPointsLeft) {
  FourStations survey;
  survey.driven.excludePoints({12, 13});
  NamingSession naming(survey.driven);
  EXPECT_EQ(naming.groups(), allStations);
  EXPECT_FALSE(naming.solve({0, 1, 3})) << "though the other two can be joined";
  EXPECT_TRUE(naming.solve({0, 1}));
}

TEST(NamingSession, CountsThePointsThatTookTheOthersName) {
  auto first = triangle("T1", "T2", "T3"), second = triangle("U1", "U2", "T3");
  WatchedSession watched({{"A", first}, {"B", second}});
  watched.add({0, 1});
  DrivenSession driven(*watched.mirrored);
  NamingSession naming(driven);
  EXPECT_EQ(naming.unite({{3, 0}, {4, 1}, {4, 2}}), 2u) << "B has T3 already";
  EXPECT_EQ(naming.state().points[3].name, "T1");
  EXPECT_EQ(naming.state().points[4].name, "T2");
  EXPECT_EQ(naming.unite({}), 0u);
}

TEST(NamingSession, MatchesTheTrianglesOfTheGroupsThatItIsTold) {
  auto unnamed = triangle("?", "?", "?");
  unnamed.push_back({"?", 20, 30, 40});
  WatchedSession watched({{"A", unnamed}, {"B", unnamed}, {"C", unnamed}});
  watched.add({0, 1, 2});
  DrivenSession driven(*watched.mirrored);
  NamingSession naming(driven);
  EXPECT_EQ(naming.matchByTriangles({1, 2}, 0.001, 0.1), 8u);
  for (const SessionPoint& point : naming.state().points) {
    EXPECT_EQ(point.record.named, point.record.groupId != 0) << point.record.id;
  }
  EXPECT_EQ(naming.matchByTriangles({0, 1, 2}, 0.001, 0.1), 4u);
}

TEST(NamingSession, RepeatsMatchingsAndUnionsWithTheSolvesBetweenThem) {
  auto unnamed = triangle("?", "?", "?");
  unnamed.push_back({"?", 20, 30, 40});
  auto other = triangle("U1", "U2", "U3");
  WatchedSession watched({{"A", unnamed}, {"B", unnamed}, {"C", other}});
  watched.add({0, 1, 2});
  DrivenSession driven(*watched.mirrored);
  NamingSession naming(driven);
  naming.repeat({{NamingKind::triangles, {0, 1}, 0.001, 0.1, 8},
                 {NamingKind::unite, {}, 0.01, 0.0, 3, {{8, 0}, {9, 1}, {10, 2}}},
                 solveStep({0, 1, 2})});
  EXPECT_EQ(naming.state().points[8].name, naming.state().points[0].name);
  EXPECT_EQ(naming.state().points[8].name, naming.state().points[4].name);
  EXPECT_EQ(naming.state().registeredGroups, (GroupIdSet{0, 1, 2}));
}

TEST(NamingSession, GoesOnAsAnotherOneWithItsInclusions) {
  FourStations kept;
  NamingSession naming(kept.driven);
  MirroredSession beside(std::make_unique<MultiRegistrator>());
  DrivenSession driven(beside);
  driven.addAllGroups();
  driven.excludePoints({leftOut});
  NamingSession named(driven);
  named.solve({0, 3});
  naming.become(std::move(named));
  expectIncluded(naming.state(), {0, 3});
  EXPECT_EQ(naming.state().discrepancies.size(), 8u);
  naming.finish();
  expectIncluded(naming.state(), allStations);
}

}  // namespace
}  // namespace tiepoint::workbench
