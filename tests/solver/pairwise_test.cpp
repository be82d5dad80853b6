#include "solver/pairwise.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "solver/builders.h"
#include "solver/solve_input.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ZOR::reg::formOneCluster;
using ZOR::reg::GroupMerges;
using ZOR::reg::methodPairwise;
using ZOR::reg::methodPairwiseWithBase;

/// Coordinates of tens, some operations of a fit each rounding at 2^-53 of them.
constexpr double pointRounding = 1e-12;

struct Pairwise : SolveMembers {
  /// Prepares and solves the session's points with the fusions that their names give.
  void run(const RefPointList& sessionPoints) {
    RefPointList workingPoints;
    prepareSolvePoints(sessionPoints, workingPoints, pointDiscrepancies);
    const ZOR::reg::GroupNameSets names = ZOR::reg::collectGroupNames(workingPoints);
    ZOR::reg::GroupClusters clusters;
    std::map<GroupId, GroupMerges> mergeLists;
    findGroupClusters(names, clusters, mergeLists);
    ASSERT_TRUE(formOneCluster(names, clusters));
    solvePairwise(workingPoints, mergeLists.begin()->second, sessionPoints, *this, pointDiscrepancies);
  }
};

TEST(Pairwise, FitsTwoGroupsOfThreeCommonNamesAndModelsTheUnionOfTheirNames) {
  Pairwise solve;
  solve.run({measured(1, 0, 0, {1, 0, 0}), measured(2, 0, 1, {4, 0, 0}), measured(3, 0, 2, {0, 5, 1}),
             measured(4, 0, 8, {7, 7, 7}, 0.5), measured(5, 1, 0, {11, 0, 0}), measured(6, 1, 1, {14, 0, 0}),
             measured(7, 1, 2, {10, 5, 1}), measured(8, 1, 9, {16, 6, 6}, 0.25)});
  EXPECT_EQ(solve.registrationMethod, methodPairwise);
  EXPECT_THAT(keysOf(solve.groupTransforms), ElementsAre(0, 1));
  EXPECT_THAT(keysOf(solve.commonPoints), ElementsAre(0, 1, 2, 8, 9));
  EXPECT_THAT(solve.commonPoints[1].position, IsNearPoint(OdGePoint3d(4, 0, 0), pointRounding));
  EXPECT_EQ(solve.commonPoints[8].position, OdGePoint3d(7, 7, 7));
  EXPECT_EQ(solve.commonPoints[8].weight, 0.5);
  EXPECT_THAT(solve.commonPoints[9].position, IsNearPoint(OdGePoint3d(6, 6, 6), pointRounding));
  EXPECT_EQ(solve.commonPoints[9].weight, 0.25);
}

TEST(Pairwise, WeighsACommonPointByTheTwoGroupsAndAveragesItsWeight) {
  // Both groups see the cross; group 1's is longer by 5 on both sides along x, weight 0.25.
  RefPointList longer = crossOfStation(10, 1, {1, 1, 1}, 0.25);
  longer.front().position = {10, 1, 1};
  std::next(longer.begin())->position = {-8, 1, 1};
  Pairwise solve;
  solve.run(join({crossOfStation(0, 0, {1, 1, 1}, 1.0), longer}));
  // (1 x 5 + 0.25 x 10) / 1.25 = 6.
  EXPECT_EQ(solve.commonPoints[0].position, OdGePoint3d(6, 1, 1));
  EXPECT_EQ(solve.commonPoints[0].weight, 0.625);
  EXPECT_THAT(solve.pointDiscrepancies,
              ElementsAre(std::pair(0, 1.0), std::pair(1, 1.0), std::pair(10, 4.0), std::pair(11, 4.0)));
}

TEST(Pairwise, KeepsTheWeightOfAPointThatThreeGroupsOfOneWeightHave) {
  Pairwise solve;
  solve.run(join({crossOfStation(0, 0, {1, 1, 1}, 0.375), crossOfStation(10, 1, {11, 1, 1}, 0.375),
                  crossOfStation(20, 2, {21, 1, 1}, 0.375)}));
  for (const auto& entry : solve.commonPoints) EXPECT_EQ(entry.second.weight, 0.375);
  EXPECT_EQ(solve.commonPoints[0].position, OdGePoint3d(5, 1, 1));
  EXPECT_THAT(solve.pointDiscrepancies, IsEmpty());
}

TEST(Pairwise, BringsAlongAllThatAnAbsorbedGroupHadGathered) {
  // 2 absorbs 3, whose cross bears the names 10 to 15 and who has the name 20 besides; then 0
  // absorbs 2 over its own cross.
  RefPointList names10(crossOfStation(30, 2, {1, 1, 101}));
  RefPointList group3(crossOfStation(40, 3, {-49, 1, 1}));
  for (RefPointList* list : {&names10, &group3}) {
    for (RefPoint& point : *list) point.commonId += 10;
  }
  group3.push_back(measured(50, 3, 20, {-48, 2, 2}));
  RefPointList group2(crossOfStation(20, 2, {1, 1, 1}));
  Pairwise solve;
  solve.run(join({crossOfStation(0, 0, {8, 1, 1}), group2, names10, group3}));
  // Group 3 goes to group 2 by (50, 0, 100), group 2 to group 0 by (7, 0, 0).
  EXPECT_THAT(solve.commonPoints[20].position, IsNearPoint(OdGePoint3d(9, 2, 102), pointRounding));
  EXPECT_THAT(apply(solve.groupTransforms[3], {0, 0, 0}), IsNearPoint(OdGePoint3d(57, 0, 100), pointRounding));
}

TEST(Pairwise, PutsTheModelOntoTheBaseByOneRigidMotionAndChangesNothingElse) {
  // Group 1's targets are off by whole numbers, so that the model isn't exact in any group.
  RefPointList group1 = crossOfStation(10, 1, {11, 1, 1});
  group1.front().position.y += 1;
  group1.back().position.x += 2;
  const RefPointList group0 = crossOfStation(0, 0, {1, 1, 1});
  const RefPointList group2 = crossOfStation(20, 2, {21, 1, 51});
  Pairwise free;
  free.run(join({group0, group1, group2}));
  Pairwise based;
  based.run(join({group0, group1, inBase(group2)}));

  EXPECT_EQ(free.registrationMethod, methodPairwise);
  EXPECT_EQ(based.registrationMethod, methodPairwiseWithBase);
  const RigidTransform freeToBase = ZOR::reg::fitRigidTransform(rowsOf(crossAbout({21, 1, 51})), [&] {
    std::vector<OdGePoint3d> model;
    for (const auto& entry : free.commonPoints) model.push_back(entry.second.position);
    return rowsOf(model);
  }());
  for (const auto& [name, common] : free.commonPoints) {
    EXPECT_THAT(based.commonPoints[name].position, IsNearPoint(apply(freeToBase, common.position), pointRounding));
    EXPECT_EQ(based.commonPoints[name].weight, common.weight);
  }
}

TEST(Pairwise, WithABaseThatFitsExactlyBringsTheOtherGroupsOntoItsCoordinates) {
  Pairwise solve;
  solve.run(join(
      {crossOfStation(0, 0, {1, 1, 1}), inBase(crossOfStation(10, 1, {11, 1, 1})), crossOfStation(20, 2, {1, 31, 1})}));
  EXPECT_THAT(keysOf(solve.groupTransforms), ElementsAre(0, 2));
  EXPECT_THAT(solve.groupTransforms[0].translation, ElementsAre(10, 0, 0));
  EXPECT_THAT(solve.groupTransforms[2].translation, ElementsAre(10, -30, 0));
  EXPECT_EQ(solve.commonPoints[0].position, OdGePoint3d(15, 1, 1));
}

TEST(Pairwise, GivesBasePointsNoDiscrepancyButThoseOfTheirMerging) {
  RefPointList group1 = crossOfStation(10, 1, {11, 1, 1});
  group1.front().position.x += 1;
  std::next(group1.begin())->position.x -= 1;
  // Groups 3 and 5 are one base; of the name 20 they have two points, one unit either side.
  const RefPointList others{inBase(measured(50, 3, 20, {1, 1, 9})), inBase(measured(51, 5, 20, {1, 1, 11})),
                            inBase(measured(52, 5, 21, {1, 1, -8}))};
  Pairwise solve;
  solve.run(join({group1, inBase(crossOfStation(30, 3, {1, 1, 1})), others}));
  EXPECT_THAT(keysOf(solve.pointDiscrepancies), ElementsAre(10, 11, 50, 51));
  EXPECT_EQ(solve.pointDiscrepancies[10], 0.5);
  EXPECT_EQ(solve.pointDiscrepancies[50], 1.0);
  EXPECT_EQ(solve.commonPoints[20].position, OdGePoint3d(1, 1, 10));
}

TEST(Pairwise, SelectsAPointAtTheOriginByItsWeightButDoesNotMoveIt) {
  // Group 1 has three points; without the one at its origin there would be two and no fit at all.
  Pairwise solve;
  solve.run({measured(1, 0, 0, {10, 0, 0}), measured(2, 0, 1, {12, 0, 0}), measured(3, 0, 2, {10, 2, 0}),
             measured(4, 1, 0, {0, 0, 0}), measured(5, 1, 1, {2, 0, 0}), measured(6, 1, 2, {0, 2, 0})});
  EXPECT_EQ(solve.commonPoints[0].position, OdGePoint3d(5, 0, 0));
  EXPECT_THAT(solve.commonPoints[1].position, IsNearPoint(OdGePoint3d(12, 0, 0), pointRounding));
  EXPECT_THAT(solve.commonPoints[2].position, IsNearPoint(OdGePoint3d(10, 2, 0), pointRounding));
}

TEST(Pairwise, ShowsAPointThatTheUserLeftOutWithoutADiscrepancy) {
  Pairwise solve;
  solve.run(join({crossOfStation(0, 0, {1, 1, 1}),
                  crossOfStation(10, 1, {11, 1, 1}),
                  {leftOut(measured(90, 1, 77, {10, 5, 5}, 0.125))},
                  {leftOut(measured(91, 2, 78, {1, 1, 1}))}}));
  EXPECT_EQ(solve.commonPoints[77].position, OdGePoint3d(0, 5, 5));
  EXPECT_EQ(solve.commonPoints[77].weight, 0.125);
  EXPECT_EQ(solve.commonPoints.count(78), 0U);
  EXPECT_THAT(solve.pointDiscrepancies, IsEmpty());
}

TEST(Pairwise, FitsTheLastInListOrderOfTwoPointsOfOneName) {
  RefPointList group1 = crossOfStation(10, 1, {11, 1, 1});
  group1.push_front(measured(19, 1, 0, {500, 500, 500}));
  Pairwise solve;
  solve.run(join({crossOfStation(0, 0, {1, 1, 1}), group1}));
  EXPECT_THAT(solve.groupTransforms[1].translation, ElementsAre(-10, 0, 0));
  EXPECT_THAT(solve.pointDiscrepancies, IsEmpty());
}

class PairwiseOfABrokenStation : public ::testing::TestWithParam<double> {};

TEST_P(PairwiseOfABrokenStation, EndsWithResultsThatAreNotNumbers) {
  RefPointList broken = crossOfStation(10, 1, {11, 1, 1});
  broken.front().position.y = GetParam();
  Pairwise solve;
  solve.run(join({crossOfStation(0, 0, {1, 1, 1}), broken, crossOfStation(20, 2, {21, 1, 1})}));
  EXPECT_EQ(solve.registrationMethod, methodPairwise);
  EXPECT_THAT(keysOf(solve.groupTransforms), ElementsAre(0, 1, 2));
  EXPECT_EQ(solve.pointDiscrepancies.size(), 18U);
  EXPECT_TRUE(std::isnan(solve.pointDiscrepancies[15]));
  EXPECT_TRUE(std::isnan(solve.commonPoints[5].position.z));
}

INSTANTIATE_TEST_SUITE_P(Values, PairwiseOfABrokenStation,
                         ::testing::Values(std::numeric_limits<double>::quiet_NaN(),
                                           std::numeric_limits<double>::infinity()));

TEST(Pairwise, GivesAMirroredStationAProperRotationAndItsPointsDiscrepancies) {
  RefPointList mirrored = crossOfStation(10, 1, {11, 1, 1});
  std::swap(mirrored.front().position, std::next(mirrored.begin())->position);
  Pairwise solve;
  solve.run(join({crossOfStation(0, 0, {1, 1, 1}), mirrored}));
  // Half a turn about y, and the weakest axis, z, given up: the model's z targets fall together.
  EXPECT_THAT(solve.groupTransforms[1].rotation, ElementsAre(-1, 0, 0, 0, 1, 0, 0, 0, -1));
  EXPECT_EQ(solve.commonPoints[4].position, OdGePoint3d(1, 1, 1));
  EXPECT_THAT(solve.pointDiscrepancies,
              ElementsAre(std::pair(4, 1.0), std::pair(5, 1.0), std::pair(14, 1.0), std::pair(15, 1.0)));
}

TEST(Pairwise, JoinsStationsThatShareTargetsOnOneLineAlone) {
  Pairwise solve;
  solve.run({measured(1, 0, 0, {1, 2, 0}), measured(2, 0, 1, {1, 4, 0}), measured(3, 0, 2, {1, 9, 0}),
             measured(4, 1, 0, {5, 5, 2}), measured(5, 1, 1, {5, 5, 4}), measured(6, 1, 2, {5, 5, 9}),
             measured(7, 1, 3, {5, 8, 4})});
  EXPECT_THAT(solve.commonPoints[1].position, IsNearPoint(OdGePoint3d(1, 4, 0), pointRounding));
  // Three units off the line, on which side isn't settled.
  const OdGePoint3d offLine = solve.commonPoints[3].position;
  EXPECT_NEAR(offLine.y, 4.0, pointRounding);
  EXPECT_NEAR(std::hypot(offLine.x - 1.0, offLine.z), 3.0, pointRounding);
}

TEST(Pairwise, RunTwiceWithoutClearingKeepsTheTransformationsOfTheFirstRun) {
  Pairwise solve;
  const RefPointList others{leftOut(measured(90, 1, 77, {10, 5, 5}))};
  solve.run(join({crossOfStation(0, 0, {1, 1, 1}), crossOfStation(10, 1, {11, 1, 1}), others}));
  solve.run(join({crossOfStation(0, 0, {1, 1, 1}), crossOfStation(10, 1, {1, 1, 41}), others}));
  ASSERT_EQ(solve.solverTable.size(), 4U);
  EXPECT_THAT(solve.solverTable[3].translation, ElementsAre(0, 0, -40));
  EXPECT_THAT(solve.groupTransforms[1].translation, ElementsAre(-10, 0, 0));
  EXPECT_EQ(solve.commonPoints[77].position, OdGePoint3d(0, 5, 5));
}

}  // namespace
}  // namespace tiepoint::testing
