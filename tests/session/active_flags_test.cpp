#include "session/active_flags.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "support/plain_rebuild.h"

namespace {

using namespace ZOR::reg;
using tiepoint::testing::plainRebuild;

RefPoint point(RefPointId id, GroupId group, CommonPointId name) {
  RefPoint p;
  p.id = id;
  p.groupId = group;
  p.commonId = name;
  p.weight = 1.0;
  p.named = true;
  p.active = false;
  return p;
}

/// A station of one point per name, with ids from `firstId`.
void addStation(RefPointList& points, GroupId group, std::initializer_list<CommonPointId> names, bool inBase = false) {
  for (CommonPointId name : names) {
    points.push_back(point(points.size(), group, name));
    points.back().inBase = inBase;
  }
}

std::set<RefPointId> activeIds(const RefPointList& points) {
  std::set<RefPointId> ids;
  for (const RefPoint& p : points) {
    if (p.active) ids.insert(p.id);
  }
  return ids;
}

std::set<RefPointId> activeAfterRebuild(RefPointList& points) {
  rebuildActiveFlags(points);
  return activeIds(points);
}

using Ids = std::set<RefPointId>;

TEST(ActiveFlags, OneGroupWithoutABaseHasNothingToRegister) {
  RefPointList points;
  addStation(points, 0, {0, 1, 2, 3});
  EXPECT_EQ(activeAfterRebuild(points), Ids{});
}

TEST(ActiveFlags, TwoGroupsOfThreeSharedNamesAreAllActive) {
  RefPointList points;
  addStation(points, 0, {0, 1, 2});
  addStation(points, 1, {0, 1, 2});
  EXPECT_EQ(activeAfterRebuild(points), (Ids{0, 1, 2, 3, 4, 5}));
}

TEST(ActiveFlags, TwoSharedNamesOutOfThreeEndWithNothingActive) {
  RefPointList points;
  addStation(points, 0, {0, 1, 2});
  addStation(points, 1, {0, 1, 3});
  EXPECT_EQ(activeAfterRebuild(points), Ids{});
}

TEST(ActiveFlags, ABaseOfTwoPointsDropsOutAndTheOtherGroupsStay) {
  RefPointList points;
  addStation(points, 0, {0, 1}, true);
  addStation(points, 1, {0, 1, 2});
  addStation(points, 2, {0, 1, 2});
  EXPECT_EQ(activeAfterRebuild(points), (Ids{2, 3, 4, 5, 6, 7}));
}

TEST(ActiveFlags, OneGroupAndABaseKeepTheThreeSharedNamesAndDropTheRest) {
  RefPointList points;
  addStation(points, 0, {0, 1, 2}, true);
  addStation(points, 1, {0, 1, 2, 3});
  EXPECT_EQ(activeAfterRebuild(points), (Ids{0, 1, 2, 3, 4, 5}));
}

TEST(ActiveFlags, ANameThatTheBaseLacksStaysWhenAnotherPointHasIt) {
  RefPointList points;
  addStation(points, 0, {0, 1, 2}, true);
  addStation(points, 1, {0, 1, 2, 3});
  addStation(points, 2, {0, 1, 2, 3});
  EXPECT_EQ(activeAfterRebuild(points), (Ids{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST(ActiveFlags, AZeroWeightIsOutUntilItIsRaised) {
  RefPointList points;
  addStation(points, 0, {0, 1, 2, 3});
  addStation(points, 1, {0, 1, 2, 3});
  points.front().weight = 0.0;
  EXPECT_EQ(activeAfterRebuild(points), (Ids{1, 2, 3, 5, 6, 7}));
  points.front().weight = 0.25;
  EXPECT_EQ(activeAfterRebuild(points), (Ids{0, 1, 2, 3, 4, 5, 6, 7}));
}

TEST(ActiveFlags, AWeightThatIsNotANumberCountsAsZeroAndANegativeOneDoesNot) {
  RefPointList points;
  addStation(points, 0, {0, 1, 2, 3});
  addStation(points, 1, {0, 1, 2, 3});
  points.front().weight = std::numeric_limits<double>::quiet_NaN();
  points.back().weight = -1.0;
  EXPECT_EQ(activeAfterRebuild(points), (Ids{1, 2, 3, 5, 6, 7}));
}

TEST(ActiveFlags, AnUnnamedPointIsNeverActive) {
  RefPointList points;
  addStation(points, 0, {0, 1, 2, 3});
  addStation(points, 1, {0, 1, 2, 3});
  points.front().named = false;
  EXPECT_EQ(activeAfterRebuild(points), (Ids{1, 2, 3, 5, 6, 7}));
}

TEST(ActiveFlags, AnExcludedPointIsOut) {
  RefPointList points;
  addStation(points, 0, {0, 1, 2, 3});
  addStation(points, 1, {0, 1, 2, 3});
  points.front().included = false;
  EXPECT_EQ(activeAfterRebuild(points), (Ids{1, 2, 3, 5, 6, 7}));
}

TEST(ActiveFlags, ABaseTargetThatNoOtherGroupSeesIsDropped) {
  RefPointList points;
  addStation(points, 0, {0, 1, 2, 9}, true);
  addStation(points, 1, {0, 1, 2});
  EXPECT_EQ(activeAfterRebuild(points), (Ids{0, 1, 2, 4, 5, 6}));
}

TEST(ActiveFlags, NamesThatTheBaseHadAtTheStartStayEvenWhenTheBaseDropsOut) {
  // The base offers only two shared names in the end, so it goes; the one other group stays.
  RefPointList points;
  addStation(points, 0, {0, 1, 7}, true);
  addStation(points, 1, {0, 1, 2});
  addStation(points, 2, {0, 1, 2});
  EXPECT_EQ(activeAfterRebuild(points), (Ids{3, 4, 5, 6, 7, 8}));
}

TEST(ActiveFlags, AThinGroupWithoutALoneNameAfterItEndsThePruning) {
  // Group 1 is thin, and every name of group 0 stands twice in it: no name is lone, so the pruning
  // ends before it would see that one group is left.
  RefPointList points;
  addStation(points, 0, {0, 1, 2, 0, 1, 2});
  addStation(points, 1, {0, 1});
  EXPECT_EQ(activeAfterRebuild(points), (Ids{0, 1, 2, 3, 4, 5}));
}

TEST(ActiveFlags, LongChainsOfConsequencesArePrunedToTheEnd) {
  // Each group loses its third name when the one before it falls.
  RefPointList points;
  constexpr GroupId chain = 2000;
  for (GroupId g = 0; g < chain; ++g) addStation(points, g, {3 * g, 3 * g + 1, 3 * g + 2, 3 * g + 3, 3 * g + 4});
  EXPECT_EQ(activeAfterRebuild(points), Ids{});
}

/// Small worlds, so that thin groups, lone names and bases meet often. Some groups are mixed in
/// their base flag, which no operation makes, and some weights are odd.
RefPointList anySession() {
  const auto groups = *rc::gen::inRange<std::size_t>(1, 7);
  const auto names = *rc::gen::inRange<std::size_t>(1, 9);
  const auto count = *rc::gen::inRange<std::size_t>(0, 40);
  const auto baseGroups = *rc::gen::container<std::vector<bool>>(groups, rc::gen::arbitrary<bool>());
  const bool withBase = *rc::gen::arbitrary<bool>();
  RefPointList points;
  for (std::size_t i = 0; i < count; ++i) {
    RefPoint p = point(i, *rc::gen::inRange<std::size_t>(0, groups), *rc::gen::inRange<std::size_t>(0, names));
    p.included = *rc::gen::weightedElement<bool>({{9, true}, {1, false}});
    p.named = *rc::gen::weightedElement<bool>({{9, true}, {1, false}});
    p.weight = *rc::gen::weightedElement<double>({{16, 1.0}, {1, 0.0}, {1, -0.5}, {1, std::nan("")}});
    p.inBase = withBase && baseGroups[static_cast<std::size_t>(p.groupId)];
    if (*rc::gen::weightedElement<bool>({{1, true}, {60, false}})) p.inBase = !p.inBase;
    p.active = *rc::gen::arbitrary<bool>();
    points.push_back(p);
  }
  return points;
}

RC_GTEST_PROP(ActiveFlags, EqualThePlainPasses, ()) {
  RefPointList points = anySession();
  RefPointList plain = points;
  rebuildActiveFlags(points);
  plainRebuild(plain);
  RC_ASSERT(activeIds(points) == activeIds(plain));
}

RC_GTEST_PROP(ActiveFlags, LeaveOnlyPointsThatASolveCanUse, ()) {
  RefPointList points = anySession();
  std::set<CommonPointId> everInBase;
  for (const RefPoint& p : points) {
    if (p.inBase) everInBase.insert(p.commonId);
  }
  rebuildActiveFlags(points);
  std::map<GroupId, int> inGroup;
  std::map<CommonPointId, int> withName;
  std::set<CommonPointId> baseNames;
  for (const RefPoint& p : points) {
    if (!p.active) continue;
    if (p.inBase) {
      baseNames.insert(p.commonId);
    } else {
      ++inGroup[p.groupId];
      ++withName[p.commonId];
    }
  }
  for (const auto& [group, count] : inGroup) RC_ASSERT(count >= 3);
  for (const auto& [name, count] : withName) RC_ASSERT(count >= 2 || everInBase.count(name) != 0);
  RC_ASSERT(baseNames.empty() || baseNames.size() >= 3);
  for (CommonPointId name : baseNames) RC_ASSERT(withName.count(name) != 0);
}

RC_GTEST_PROP(ActiveFlags, AreAFunctionOfTheSwitchesAlone, ()) {
  RefPointList points = anySession();
  RefPointList other = points;
  for (RefPoint& p : other) p.active = *rc::gen::arbitrary<bool>();
  rebuildActiveFlags(points);
  rebuildActiveFlags(other);
  RC_ASSERT(activeIds(points) == activeIds(other));
}

}  // namespace
