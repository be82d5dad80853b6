#include "matching/match_by_distance.h"

#include <gtest/gtest.h>

#include <cmath>

#include "matching/points.h"

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

}  // namespace
