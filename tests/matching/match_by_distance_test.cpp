#include "matching/match_by_distance.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "matching/plain_matchers.h"
#include "matching/points.h"
#include "solver/arbitrary.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

/// Groups 0 to 3 stand as they are.
GroupTransforms unmovedGroups() { return {{0, {}}, {1, {}}, {2, {}}, {3, {}}}; }

NamingChanges match(const RefPointList& points, const GroupTransforms& transforms = unmovedGroups(),
                    double tolerance = 0.1) {
  NamingChanges changes;
  changes.existingAssignments[99] = 99;
  changes.newAssignments[99] = 99;
  matchByDistance(points, transforms, tolerance, changes);
  return changes;
}

const OdGePoint3d here{1, 2, 3};
const OdGePoint3d nearby{1.05, 2, 3};
const OdGePoint3d there{50, 2, 3};
const OdGePoint3d nearThere{50.05, 2, 3};

TEST(MatchByDistance, WithoutSolvedGroupsThereIsNothing) {
  EXPECT_TRUE(match({unnamedPoint(0, 0, here), unnamedPoint(1, 1, nearby)}, {}).isEmpty());
}

TEST(MatchByDistance, PointsOfAnUnsolvedGroupTakeNoPart) {
  EXPECT_TRUE(match({unnamedPoint(0, 0, here), unnamedPoint(1, 7, nearby)}).isEmpty());
}

TEST(MatchByDistance, BindingNamesAloneAreLeftAloneEvenInConflict) {
  EXPECT_TRUE(match({manualPoint(0, 0, 4, here), manualPoint(1, 1, 5, nearby)}).isEmpty());
}

TEST(MatchByDistance, SpotsOfUnnamedPointsGetLabelsFromZero) {
  const NamingChanges changes = match(
      {unnamedPoint(0, 0, here), unnamedPoint(1, 0, there), unnamedPoint(2, 1, nearby), unnamedPoint(3, 1, nearThere)});
  EXPECT_EQ(changes.newAssignments, (Assignments{{0, 0}, {2, 0}, {1, 1}, {3, 1}}));
  EXPECT_TRUE(changes.existingAssignments.empty());
}

TEST(MatchByDistance, PointsOfOneGroupFormASpotAsWell) {
  EXPECT_EQ(match({unnamedPoint(0, 0, here), unnamedPoint(1, 0, nearby)}).newAssignments,
            (Assignments{{0, 0}, {1, 0}}));
}

TEST(MatchByDistance, AnUnnamedPointJoinsABindingNameAndIsReportedAlone) {
  const NamingChanges changes = match({manualPoint(0, 0, 4, here), unnamedPoint(1, 1, nearby)});
  EXPECT_EQ(changes.existingAssignments, (Assignments{{1, 4}}));
  EXPECT_TRUE(changes.newAssignments.empty());
}

TEST(MatchByDistance, AnAutomaticNameIsReportedWithThePointThatJoinsIt) {
  const NamingChanges changes = match({autoPoint(0, 0, 9, here), unnamedPoint(1, 1, nearby)});
  EXPECT_EQ(changes.existingAssignments, (Assignments{{0, 9}, {1, 9}}));
  EXPECT_TRUE(changes.newAssignments.empty());
}

TEST(MatchByDistance, TwoNamesAndAnUnnamedPointMakeANewNameForAll) {
  const NamingChanges changes =
      match({manualPoint(0, 0, 4, here), autoPoint(1, 1, 9, nearby), unnamedPoint(2, 2, {1.1, 2, 3})});
  EXPECT_EQ(changes.newAssignments, (Assignments{{0, 0}, {1, 0}, {2, 0}}));
  EXPECT_TRUE(changes.existingAssignments.empty());
}

TEST(MatchByDistance, TwoBindingNamesOnASpotVoidTheWholeMatching) {
  EXPECT_TRUE(match({unnamedPoint(0, 0, here), unnamedPoint(1, 1, nearby), manualPoint(2, 0, 4, there),
                     manualPoint(3, 1, 5, nearThere)})
                  .isEmpty());
  EXPECT_TRUE(match({manualPoint(0, 0, 4, here), manualPoint(1, 1, 5, nearby), autoPoint(2, 2, 9, there)}).isEmpty());
}

TEST(MatchByDistance, ASpotWhosePointsAllHaveANameStays) {
  EXPECT_TRUE(match({manualPoint(0, 0, 4, here), autoPoint(1, 1, 4, nearby)}).isEmpty());
  EXPECT_TRUE(match({autoPoint(0, 0, 4, here), autoPoint(1, 1, 5, nearby)}).isEmpty());
  EXPECT_TRUE(match({manualPoint(0, 0, 4, here), autoPoint(1, 1, 5, nearby)}).isEmpty());
}

TEST(MatchByDistance, ADistanceEqualToTheToleranceDoesNotLink) {
  EXPECT_TRUE(match({unnamedPoint(0, 0, {0, 0, 0}), unnamedPoint(1, 1, {0.5, 0, 0})}, unmovedGroups(), 0.5).isEmpty());
  EXPECT_FALSE(
      match({unnamedPoint(0, 0, {0, 0, 0}), unnamedPoint(1, 1, {0.5, 0, 0})}, unmovedGroups(), std::nextafter(0.5, 1.0))
          .isEmpty());
}

TEST(MatchByDistance, PointsMeetInTheCommonSystem) {
  GroupTransforms transforms = unmovedGroups();
  transforms[1].translation = {-49, 0, 0};
  EXPECT_EQ(match({unnamedPoint(0, 0, here), unnamedPoint(1, 1, there)}, transforms).newAssignments,
            (Assignments{{0, 0}, {1, 0}}));
}

TEST(MatchByDistance, APointWithoutAPlaceLiesOnEverySpot) {
  const double lost = std::nan("");
  EXPECT_EQ(
      match({unnamedPoint(0, 0, here), unnamedPoint(1, 1, {lost, 2, 3}), unnamedPoint(2, 2, there)}).newAssignments,
      (Assignments{{0, 0}, {1, 0}, {2, 0}}));
}

/// Of a small grid, so that points meet, lie exactly a tolerance apart, or have no place at all.
OdGePoint3d arbitraryPlace() {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const auto coordinate = [] {
    const std::vector<double> odd{std::nan(""), infinity, -infinity, 1e-170, 1e300};
    return onceIn(60) ? *rc::gen::elementOf(odd) : 0.5 * arbitraryBetween(0, 6);
  };
  const double x = coordinate();
  const double y = coordinate();
  return {x, y, onceIn(4) ? coordinate() : 0.0};
}

RefPoint arbitraryPoint(RefPointId id) {
  RefPoint point = unnamedPoint(id, arbitraryBetween<GroupId>(0, 4), arbitraryPlace());
  point.commonId = arbitraryBetween<CommonPointId>(0, 6);
  point.named = !onceIn(3);
  // An unnamed point may bear the mark of a name that it lost.
  point.autoNamed = !onceIn(4);
  return point;
}

RC_GTEST_PROP(MatchByDistance, DecidesWhatTheComparisonOfAllPairsDecides, ()) {
  RefPointList points;
  const auto count = arbitraryBetween<RefPointId>(0, 16);
  for (RefPointId id = 0; id < count; ++id) points.push_back(arbitraryPoint(id));
  GroupTransforms transforms = unmovedGroups();
  transforms[1].rotation = {0, -1, 0, 1, 0, 0, 0, 0, 1};
  transforms[2].translation = {0.5, 0, -0.5};
  const std::vector<double> tolerances{0.0, -1.0, std::nan(""), 1e-200, 0.5, 0.6, 1.0, 1e300};
  const double tolerance = *rc::gen::elementOf(tolerances);
  const NamingChanges changes = match(points, transforms, tolerance);
  const NamingChanges plain = matchByDistancePlainly(points, transforms, tolerance);
  RC_ASSERT(changes.existingAssignments == plain.existingAssignments);
  RC_ASSERT(changes.newAssignments == plain.newAssignments);
  RC_CLASSIFY(!plain.isEmpty(), "names something");
}

}  // namespace
