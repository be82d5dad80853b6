#include "workbench/session/point_index.h"

#include <gmock/gmock.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <map>

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using ZOR::reg::RefPointId;

constexpr RefPointId greatestId = 18446744073709551615u;

std::vector<SessionPoint> pointsOf(const std::vector<RefPointId>& ids) {
  std::vector<SessionPoint> points(ids.size());
  for (std::size_t i = 0; i < ids.size(); ++i) points[i].record.id = ids[i];
  return points;
}

PointIndex builtFrom(const std::vector<RefPointId>& ids) {
  PointIndex index;
  index.rebuild(pointsOf(ids));
  return index;
}

TEST(PointIndex, OfNothingFindsNothing) {
  EXPECT_EQ(PointIndex().indexOf(0), PointIndex::none);
  EXPECT_EQ(builtFrom({}).indexOf(greatestId), PointIndex::none);
}

TEST(PointIndex, FindsEachIndexWhereNoIdIsMissing) {
  const PointIndex index = builtFrom({5, 6, 7});
  EXPECT_EQ(index.indexOf(5), 0u);
  EXPECT_EQ(index.indexOf(6), 1u);
  EXPECT_EQ(index.indexOf(7), 2u);
  EXPECT_EQ(index.indexOf(4), PointIndex::none);
  EXPECT_EQ(index.indexOf(8), PointIndex::none);
}

TEST(PointIndex, FindsEachIndexWhereIdsAreMissing) {
  const PointIndex index = builtFrom({2, 5, 6, 20, greatestId});
  EXPECT_EQ(index.indexOf(2), 0u);
  EXPECT_EQ(index.indexOf(20), 3u);
  EXPECT_EQ(index.indexOf(greatestId), 4u);
  EXPECT_EQ(index.indexOf(3), PointIndex::none);
  EXPECT_EQ(index.indexOf(21), PointIndex::none);
  EXPECT_EQ(index.indexOf(0), PointIndex::none);
}

TEST(PointIndex, GivesTheIndexInTheListWhateverTheOrderOfTheIds) {
  const PointIndex index = builtFrom({30, 10, 20});
  EXPECT_EQ(index.indexOf(10), 1u);
  EXPECT_EQ(index.indexOf(20), 2u);
  EXPECT_EQ(index.indexOf(30), 0u);
}

TEST(PointIndex, GrowsByIdsThatLieBeforeTheOnesThatItKnows) {
  PointIndex index = builtFrom({10, 11});
  index.grow(pointsOf({10, 11, 3, 12, 1}));
  EXPECT_EQ(index.indexOf(1), 4u);
  EXPECT_EQ(index.indexOf(3), 2u);
  EXPECT_EQ(index.indexOf(10), 0u);
  EXPECT_EQ(index.indexOf(11), 1u);
  EXPECT_EQ(index.indexOf(12), 3u);
}

TEST(PointIndex, StaysAsItIsWhenItGrowsByNothing) {
  PointIndex index = builtFrom({4, 2});
  index.grow(pointsOf({4, 2}));
  EXPECT_EQ(index.indexOf(4), 0u);
  EXPECT_EQ(index.indexOf(2), 1u);
}

TEST(PointIndex, ForgetsWhatIsGoneWhenItIsRebuilt) {
  PointIndex index = builtFrom({1, 2, 3});
  index.rebuild(pointsOf({3}));
  EXPECT_EQ(index.indexOf(3), 0u);
  EXPECT_EQ(index.indexOf(1), PointIndex::none);
}

RC_GTEST_PROP(PointIndex, FindsWhatALookThroughTheListFinds, ()) {
  const auto unique = *rc::gen::unique<std::vector<std::uint8_t>>(rc::gen::inRange<std::uint8_t>(0, 60));
  const std::vector<RefPointId> ids(unique.begin(), unique.end());
  const auto points = pointsOf(ids);
  const auto first = *rc::gen::inRange<std::size_t>(0, ids.size() + 1);
  PointIndex index;
  index.grow({points.begin(), points.begin() + static_cast<std::ptrdiff_t>(first)});
  index.grow(points);
  for (RefPointId id = 0; id < 62; ++id) {
    const auto found = std::find(ids.begin(), ids.end(), id);
    const auto expected = found == ids.end() ? PointIndex::none : static_cast<std::size_t>(found - ids.begin());
    RC_ASSERT(index.indexOf(id) == expected);
  }
}

/// What a set of ids marks when it is told `now`, in order.
std::vector<std::pair<std::uint64_t, bool>> marksOf(ToldIds& told, const std::set<std::uint64_t>& now) {
  std::vector<std::pair<std::uint64_t, bool>> marks;
  told.replace(now, [&](std::uint64_t id, bool isIn) { marks.emplace_back(id, isIn); });
  return marks;
}

TEST(ToldIds, MarkAllThatAreInAtFirst) {
  ToldIds told;
  EXPECT_THAT(marksOf(told, {3, 7}), ElementsAre(Pair(3, true), Pair(7, true)));
}

TEST(ToldIds, MarkThoseThatWereAndAreNotAsOut) {
  ToldIds told;
  marksOf(told, {1, 3, 5, 7});
  EXPECT_THAT(marksOf(told, {3, 4}),
              ElementsAre(Pair(1, false), Pair(5, false), Pair(7, false), Pair(3, true), Pair(4, true)));
}

TEST(ToldIds, MarkThoseThatStayAgain) {
  ToldIds told;
  marksOf(told, {3});
  EXPECT_THAT(marksOf(told, {3}), ElementsAre(Pair(3, true))) << "a point may have come back under its id";
}

TEST(ToldIds, ForgetThoseThatWereMarkedAsOut) {
  ToldIds told;
  marksOf(told, {3});
  EXPECT_THAT(marksOf(told, {}), ElementsAre(Pair(3, false)));
  EXPECT_THAT(marksOf(told, {}), IsEmpty());
}

TEST(ToldIds, CountThoseThatWereAddedAmongThem) {
  ToldIds told;
  marksOf(told, {2, 4});
  told.add({1, 3, 4});
  EXPECT_THAT(marksOf(told, {4}), ElementsAre(Pair(1, false), Pair(2, false), Pair(3, false), Pair(4, true)));
}

RC_GTEST_PROP(ToldIds, LeaveEveryMarkAsTheLastSetSays, (const std::vector<std::set<std::uint8_t>>& sets)) {
  ToldIds told;
  std::map<std::uint64_t, bool> marks;
  for (const auto& set : sets) {
    const std::set<std::uint64_t> now(set.begin(), set.end());
    told.replace(now, [&](std::uint64_t id, bool isIn) { marks[id] = isIn; });
    for (const auto& [id, isIn] : marks) RC_ASSERT(isIn == (now.count(id) != 0));
    for (const std::uint64_t id : now) RC_ASSERT(marks.count(id) == 1);
  }
}

}  // namespace
}  // namespace tiepoint::workbench
