#include "matching/match_by_triangles.h"

#include <gtest/gtest.h>

#include <cmath>

#include "matching/points.h"
#include "matching/triangle_table.h"

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

TEST(TriangleTable, PointsWithoutAPlaceMakeNoTriangle) {
  const RefPointList points{unnamedPoint(0, 0, {0, 0, 0}), unnamedPoint(1, 0, {1, 0, 0}),
                            unnamedPoint(2, 0, {std::nan(""), 3, 0})};
  EXPECT_EQ(buildTriangles(points, 0.0).corners.size(), 0u);
}

}  // namespace
