#include "matching/match_by_triangles.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "matching/hall.h"
#include "matching/plain_matchers.h"
#include "matching/points.h"
#include "matching/triangle_table.h"
#include "solver/arbitrary.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

NamingChanges match(const RefPointList& points, double sideTolerance = 0.001, double minSideDifference = 0.1) {
  NamingChanges changes;
  changes.existingAssignments[99] = 99;
  matchByTriangles(points, sideTolerance, minSideDifference, changes);
  return changes;
}

/// A right triangle with sides 3, 4 and 5. The first corner lies opposite the 5, the second opposite
/// the 4, the third opposite the 3.
const OdGePoint3d rightAngle{0, 0, 0};
const OdGePoint3d threeAway{3, 0, 0};
const OdGePoint3d fourAway{0, 4, 0};

/// The same triangle elsewhere, turned, its corners in another order.
RefPointList twoEqualTriangles() {
  return {unnamedPoint(0, 0, rightAngle),    unnamedPoint(1, 0, threeAway),     unnamedPoint(2, 0, fourAway),
          unnamedPoint(10, 1, {100, 14, 0}), unnamedPoint(11, 1, {100, 10, 0}), unnamedPoint(12, 1, {100, 10, 3})};
}

TEST(MatchByTriangles, TooFewPointsOrGroupsOrNothingUnnamedGivesNothing) {
  RefPointList five = twoEqualTriangles();
  five.pop_back();
  EXPECT_TRUE(match(five).isEmpty());
  RefPointList oneGroup = twoEqualTriangles();
  for (RefPoint& point : oneGroup) point.groupId = 0;
  EXPECT_TRUE(match(oneGroup).isEmpty());
  RefPointList named = twoEqualTriangles();
  for (RefPoint& point : named) point.named = true;
  EXPECT_TRUE(match(named).isEmpty());
}

TEST(MatchByTriangles, AutomaticNamesAreRevisedOnlyWhereSomethingIsUnnamed) {
  RefPointList points = twoEqualTriangles();
  CommonPointId name = 20;
  for (RefPoint& point : points) {
    point.named = point.autoNamed = true;
    point.commonId = name++;
  }
  EXPECT_TRUE(match(points).isEmpty());
  points.push_back(unnamedPoint(50, 1, {500, 600, 700}));
  EXPECT_EQ(match(points).existingAssignments, (Assignments{{10, 22}, {12, 21}, {11, 20}}));
}

TEST(MatchByTriangles, CornersPairByTheirOppositeSides) {
  const NamingChanges changes = match(twoEqualTriangles());
  // 3 lies opposite point 2 and point 10, 4 opposite 1 and 12, 5 opposite 0 and 11.
  EXPECT_EQ(changes.newAssignments, (Assignments{{2, 0}, {10, 0}, {1, 1}, {12, 1}, {0, 2}, {11, 2}}));
  EXPECT_TRUE(changes.existingAssignments.empty());
}

TEST(MatchByTriangles, AnIsoscelesTriangleTellsNothing) {
  RefPointList points;
  for (const GroupId group : {0U, 1U}) {
    points.push_back(unnamedPoint(10 * group, group, {0, 0, 0}));
    points.push_back(unnamedPoint(10 * group + 1, group, {4, 0, 0}));
    points.push_back(unnamedPoint(10 * group + 2, group, {0, 4.05, 0}));
  }
  EXPECT_TRUE(match(points).isEmpty());
  EXPECT_FALSE(match(points, 0.001, 0.01).isEmpty());
}

TEST(MatchByTriangles, SidesThatDifferByExactlyTheMinimumAreTooClose) {
  EXPECT_TRUE(match(twoEqualTriangles(), 0.001, 1.0).isEmpty());
  EXPECT_FALSE(match(twoEqualTriangles(), 0.001, std::nextafter(1.0, 0.0)).isEmpty());
}

TEST(MatchByTriangles, TwoEqualTrianglesInOneGroupVoidTheWholeMatching) {
  RefPointList points = twoEqualTriangles();
  points.push_back(unnamedPoint(13, 1, {200, 0, 0}));
  points.push_back(unnamedPoint(14, 1, {203, 0, 0}));
  points.push_back(unnamedPoint(15, 1, {200, 4, 0}));
  EXPECT_TRUE(match(points).isEmpty());
}

TEST(MatchByTriangles, ThreeGroupsGiveEachNameThreePoints) {
  RefPointList points = twoEqualTriangles();
  points.push_back(unnamedPoint(20, 2, rightAngle));
  points.push_back(unnamedPoint(21, 2, fourAway));
  points.push_back(unnamedPoint(22, 2, threeAway));
  EXPECT_EQ(match(points).newAssignments,
            (Assignments{{2, 0}, {10, 0}, {21, 0}, {1, 1}, {12, 1}, {22, 1}, {0, 2}, {11, 2}, {20, 2}}));
}

TEST(MatchByTriangles, AUsersNameSpreadsToTheOtherCorner) {
  RefPointList points = twoEqualTriangles();
  points.front().named = true;
  points.front().commonId = 77;
  const NamingChanges changes = match(points);
  EXPECT_EQ(changes.existingAssignments, (Assignments{{11, 77}}));
  EXPECT_EQ(changes.newAssignments, (Assignments{{2, 0}, {10, 0}, {1, 1}, {12, 1}}));
}

TEST(MatchByTriangles, GroupsOfOneOrTwoPointsHaveNoTriangle) {
  RefPointList points = twoEqualTriangles();
  points.push_back(unnamedPoint(20, 2, rightAngle));
  points.push_back(unnamedPoint(21, 3, rightAngle));
  points.push_back(unnamedPoint(22, 3, threeAway));
  EXPECT_EQ(match(points).newAssignments.size(), 6u);
}

TEST(MatchByTriangles, TwoEqualTrianglesThatShareASideVoidTheWholeMatchingToo) {
  RefPointList points = twoEqualTriangles();
  points.push_back(unnamedPoint(13, 1, {100, 6, 0}));
  points.push_back(unnamedPoint(14, 1, {100, 10, -3}));
  EXPECT_TRUE(match(points).isEmpty());
}

TEST(MatchByTriangles, AContradictionVoidsWhatWentWellBeforeIt) {
  RefPointList points = twoEqualTriangles();
  points.front().named = true;
  points.front().commonId = 77;
  // Point 11 is the corner of point 0.
  std::next(points.begin(), 4)->named = true;
  std::next(points.begin(), 4)->commonId = 78;
  EXPECT_TRUE(match(points).isEmpty());
}

bool agreesWithAllPairs(const RefPointList& points, double sideTolerance, double minSideDifference) {
  const NamingChanges changes = match(points, sideTolerance, minSideDifference);
  const NamingChanges plain = matchByTrianglesPlainly(points, sideTolerance, minSideDifference);
  return changes.existingAssignments == plain.existingAssignments && changes.newAssignments == plain.newAssignments;
}

RefPoint arbitraryKind(RefPointId id, GroupId group, const OdGePoint3d& place) {
  const auto name = arbitraryBetween<CommonPointId>(0, 9);
  if (onceIn(8)) return manualPoint(id, group, name, place);
  return onceIn(4) ? autoPoint(id, group, name, place) : unnamedPoint(id, group, place);
}

/// Stations that see most of a few targets, every so often with names that contradict.
RC_GTEST_PROP(MatchByTriangles, DecidesInAHallWhatTheComparisonOfAllPairsDecides, (std::uint64_t seed)) {
  std::mt19937_64 random(seed);
  Hall hall(8, random);
  RefPointList points;
  const auto stations = arbitraryBetween<GroupId>(1, 5);
  for (GroupId station = 0; station < stations; ++station) {
    const std::vector<Hall::Target> targets = hall.someTargets(arbitraryBetween<std::size_t>(2, 8));
    const std::vector<OdGePoint3d> places = hall.seenByAStation(targets);
    for (std::size_t i = 0; i < targets.size(); ++i) {
      RefPoint point = arbitraryKind(points.size(), station, places[i]);
      // Mostly the name of the target itself.
      if (point.named && !onceIn(20)) point.commonId = targets[i] + 100;
      points.push_back(point);
    }
  }
  RC_ASSERT(agreesWithAllPairs(points, 0.001, 0.1));
  RC_CLASSIFY(!match(points).isEmpty(), "names something");
}

/// Places of a small grid: equal triangles everywhere, sides exactly a tolerance apart, lost points.
RC_GTEST_PROP(MatchByTriangles, DecidesOnAGridWhatTheComparisonOfAllPairsDecides, ()) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const std::vector<double> odd{std::nan(""), infinity, -infinity, 1e-170, 1e300};
  const int size = arbitraryBetween(3, 40);
  const auto coordinate = [&] { return onceIn(60) ? *rc::gen::elementOf(odd) : 1.0 * arbitraryBetween(0, size); };
  RefPointList points;
  const auto count = arbitraryBetween<RefPointId>(5, 14);
  for (RefPointId id = 0; id < count; ++id) {
    const double x = coordinate();
    const double y = coordinate();
    points.push_back(arbitraryKind(id, arbitraryBetween<GroupId>(0, 3), {x, y, onceIn(3) ? coordinate() : 0.0}));
  }
  const std::vector<double> tolerances{0.0, -1.0, std::nan(""), 1e-200, 0.001, 1.0, 5.0, infinity};
  const std::vector<double> differences{-1.0, 0.0, 0.1, 1.0, 2.0, std::nan(""), infinity};
  const double sideTolerance = *rc::gen::elementOf(tolerances);
  RC_ASSERT(agreesWithAllPairs(points, sideTolerance, *rc::gen::elementOf(differences)));
}

TEST(TriangleTable, ListsTheTriplesInLexicographicOrder) {
  const RefPointList points{unnamedPoint(7, 0, {0, 0, 0}), unnamedPoint(3, 0, {1, 0, 0}), unnamedPoint(5, 0, {0, 3, 0}),
                            unnamedPoint(9, 0, {0, 0, 7})};
  const TriangleTable table = buildTriangles(points, 0.0);
  ASSERT_EQ(table.corners.size(), 4u);
  // Ids 3, 5, 7, 9; sides: 3-5 and so on follow from the places above.
  EXPECT_EQ(table.corners[0], (TriangleCorners{5, 3, 7}));
  EXPECT_EQ(table.corners[1], (TriangleCorners{9, 5, 3}));
  EXPECT_EQ(table.corners[2], (TriangleCorners{9, 3, 7}));
  EXPECT_EQ(table.corners[3], (TriangleCorners{9, 5, 7}));
  EXPECT_EQ(table.sides(2, 0), 1.0);
  EXPECT_EQ(table.sides(2, 1), 7.0);
  EXPECT_EQ(table.sides(2, 2), std::sqrt(50.0));
}

RefPointList onALine(double first, double second, double third) {
  return {unnamedPoint(0, 0, {first, 0, 0}), unnamedPoint(1, 0, {second, 0, 0}), unnamedPoint(2, 0, {third, 0, 0})};
}

TEST(TriangleTable, EachTwoSidesDifferByMoreThanTheMinimum) {
  const double below = std::nextafter(1.0, 0.0);
  // 3, 4 and 7: the shorter two are 1 apart; 1, 9 and 10: the longer two.
  for (const RefPointList& points : {onALine(0, 3, 7), onALine(0, 1, 10)}) {
    EXPECT_EQ(buildTriangles(points, 1.0).corners.size(), 0u);
    EXPECT_EQ(buildTriangles(points, below).corners.size(), 1u);
  }
}

TEST(TriangleTable, CornersOppositeEqualSidesKeepTheOrderOfTheirIds) {
  const RefPointList points{unnamedPoint(0, 0, {0, 0, 0}), unnamedPoint(1, 0, {1, 0, 0}),
                            unnamedPoint(2, 0, {0, 1, 0})};
  const TriangleTable table = buildTriangles(points, -1.0);
  ASSERT_EQ(table.corners.size(), 1u);
  EXPECT_EQ(table.corners[0], (TriangleCorners{1, 2, 0}));
  EXPECT_EQ(buildTriangles(points, 0.0).corners.size(), 0u);
}

/// In another order of the sum the last digit is another one.
TEST(TriangleTable, SumsASideOverYThenZThenX) {
  const RefPointList points{unnamedPoint(0, 0, {0, 0, 0}), unnamedPoint(1, 0, {0.1, 0.4, 1.0}),
                            unnamedPoint(2, 0, {50, 0, 0})};
  const TriangleTable table = buildTriangles(points, 0.0);
  ASSERT_EQ(table.corners.size(), 1u);
  EXPECT_EQ(table.sides(0, 0), 1.0816653826391969);
}

TEST(TriangleTable, PointsWithoutAPlaceMakeNoTriangle) {
  const RefPointList points{unnamedPoint(0, 0, {0, 0, 0}), unnamedPoint(1, 0, {1, 0, 0}),
                            unnamedPoint(2, 0, {std::nan(""), 3, 0})};
  EXPECT_EQ(buildTriangles(points, 0.0).corners.size(), 0u);
}

}  // namespace
