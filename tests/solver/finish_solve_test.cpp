#include "solver/finish_solve.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "solver/builders.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ZOR::reg::buildSolveTables;
using ZOR::reg::SelectionTest;
using ZOR::reg::SolveEnding;
using ZOR::reg::SolveModel;

/// The cross about the origin's neighbour (1, 1, 1), names 0 to 5, weight 1.
SolveModel crossModel() { return {rowsOf(crossAbout({1, 1, 1})), Eigen::VectorXd::Ones(6)}; }

struct Finish : SolveMembers {
  /// Solves the list; the session holds `others` besides.
  void run(const SolveModel& model, const RefPointList& workingPoints, const SolveEnding& ending = {},
           const RefPointList& others = {}) {
    finishSolve(model, buildSolveTables(workingPoints), ending, join({workingPoints, others}), solverTable, *this,
                pointDiscrepancies);
  }
};

TEST(FinishSolve, GivesEachGroupTheMotionOfItsOwnCoordinatesOntoTheModel) {
  Finish finish;
  finish.run(crossModel(), join({crossOfStation(0, 4, {1, 1, 1}), crossOfStation(10, 8, {-9, 21, 1})}));

  EXPECT_THAT(keysOf(finish.groupTransforms), ElementsAre(4, 8));
  EXPECT_THAT(finish.groupTransforms[4].rotation, ElementsAre(1, 0, 0, 0, 1, 0, 0, 0, 1));
  EXPECT_THAT(finish.groupTransforms[4].translation, ElementsAre(0, 0, 0));
  EXPECT_THAT(finish.groupTransforms[8].rotation, ElementsAre(1, 0, 0, 0, 1, 0, 0, 0, 1));
  EXPECT_THAT(finish.groupTransforms[8].translation, ElementsAre(10, -20, 0));
}

TEST(FinishSolve, MakesNoEntryForADiscrepancyOfExactlyZero) {
  Finish finish;
  finish.pointDiscrepancies[3] = 0.25;
  finish.run(crossModel(), crossOfStation(0, 4, {1, 1, 1}));
  EXPECT_THAT(finish.pointDiscrepancies, ElementsAre(Pair(3, 0.25))) << "an earlier entry stays";
}

TEST(FinishSolve, StoresTheDistanceOfEachMovedPointFromTheModel) {
  // The targets on x are 1 too long: the fit stays exact and both miss by 1.
  RefPointList points = crossOfStation(10, 4, {0, 0, 0});
  points.front().position = {5, 0, 0};
  std::next(points.begin())->position = {-5, 0, 0};
  Finish finish;
  finish.run(crossModel(), points);
  EXPECT_THAT(finish.groupTransforms[4].translation, ElementsAre(1, 1, 1));
  EXPECT_THAT(finish.pointDiscrepancies, ElementsAre(Pair(10, 1.0), Pair(11, 1.0)));
}

TEST(FinishSolve, StoresADiscrepancyThatIsNotANumber) {
  RefPointList points = crossOfStation(10, 4, {0, 0, 0});
  points.front().position.x = std::numeric_limits<double>::quiet_NaN();
  Finish finish;
  finish.run(crossModel(), points);
  EXPECT_THAT(keysOf(finish.pointDiscrepancies), ElementsAre(10, 11, 12, 13, 14, 15));
  EXPECT_TRUE(std::isnan(finish.pointDiscrepancies[15]));
}

TEST(FinishSolve, GivesExcludedPointsNoDiscrepancy) {
  RefPointList points = crossOfStation(10, 4, {0, 0, 0});
  points.front().position = {5, 0, 0};
  std::next(points.begin())->position = {-5, 0, 0};
  SolveEnding ending;
  ending.excludedIds = {10};
  Finish finish;
  finish.run(crossModel(), points, ending);
  EXPECT_THAT(finish.pointDiscrepancies, ElementsAre(Pair(11, 1.0)));
}

TEST(FinishSolve, GivesAGroupOfTwoPointsTheIdentityAndThePlainDistances) {
  Finish finish;
  finish.run({rowsOf({{0, 0, 0}, {1, 2, 2}}), Eigen::VectorXd::Ones(2)},
             {measured(1, 4, 0, {3, 4, 0}), measured(2, 4, 1, {2, 4, 4})});
  EXPECT_THAT(finish.groupTransforms[4].rotation, ElementsAre(1, 0, 0, 0, 1, 0, 0, 0, 1));
  EXPECT_THAT(finish.groupTransforms[4].translation, ElementsAre(0, 0, 0));
  EXPECT_THAT(finish.pointDiscrepancies, ElementsAre(Pair(1, 5.0), Pair(2, 3.0)));
}

TEST(FinishSolve, ByWeightFitsAPointAtTheOriginAndLeavesOutOneOfNegativeWeight) {
  // The two points of (0, 0, 0) and (9, 9, 9) would both spoil the exact fit.
  RefPointList points = crossOfStation(0, 4, {1, 1, 1});
  points.push_back(measured(6, 4, 6, {9, 9, 9}, -1.0));
  const SolveModel model{rowsOf({{5, 1, 1}, {-3, 1, 1}, {1, 3, 1}, {1, -1, 1}, {1, 1, 2}, {1, 1, 0}, {3, 3, 3}}),
                         Eigen::VectorXd::Ones(7)};
  Finish finish;
  finish.run(model, points, {SelectionTest::byWeight, {}, {}});
  EXPECT_THAT(finish.pointDiscrepancies, IsEmpty());

  points.back() = measured(6, 4, 6, {0, 0, 0}, 1.0);
  finish.run(model, points, {SelectionTest::byWeight, {}, {}});
  EXPECT_EQ(finish.pointDiscrepancies.count(6), 1U);
}

TEST(FinishSolve, ByLengthFitsAPointOfNegativeWeightAndLeavesOutOneAtTheOrigin) {
  RefPointList points = crossOfStation(0, 4, {1, 1, 1});
  points.push_back(measured(6, 4, 6, {0, 0, 0}, 1.0));
  const SolveModel model{rowsOf({{5, 1, 1}, {-3, 1, 1}, {1, 3, 1}, {1, -1, 1}, {1, 1, 2}, {1, 1, 0}, {3, 3, 3}}),
                         Eigen::VectorXd::Ones(7)};
  Finish finish;
  finish.run(model, points, {SelectionTest::byLength, {}, {}});
  EXPECT_THAT(finish.pointDiscrepancies, IsEmpty());

  points.back() = measured(6, 4, 6, {9, 9, 9}, -1.0);
  finish.run(model, points, {SelectionTest::byLength, {}, {}});
  EXPECT_EQ(finish.pointDiscrepancies.count(6), 1U);
}

TEST(FinishSolve, PutsEveryModelRowAmongTheCommonPointsAndKeepsEarlierOnes) {
  SolveModel model = crossModel();
  model.weights[2] = 0.5;
  Finish finish;
  finish.commonPoints[99] = {{7, 7, 7}, 0.75};
  finish.commonPoints[2] = {{8, 8, 8}, 0.25};
  finish.run(model, crossOfStation(0, 4, {1, 1, 1}));
  EXPECT_THAT(keysOf(finish.commonPoints), ElementsAre(0, 1, 2, 3, 4, 5, 99));
  EXPECT_EQ(finish.commonPoints[2].position, OdGePoint3d(1, 3, 1));
  EXPECT_EQ(finish.commonPoints[2].weight, 0.5);
  EXPECT_EQ(finish.commonPoints[99].position, OdGePoint3d(7, 7, 7));
}

TEST(FinishSolve, ShowsAPointThatTheUserLeftOutUnderItsNameWithoutADiscrepancy) {
  Finish finish;
  finish.run(crossModel(), crossOfStation(0, 4, {-9, 21, 1}), {},
             {leftOut(measured(50, 4, 77, {0, 0, 0}, 0.25)), leftOut(measured(51, 4, 2, {-9, 21, 5}, 0.5))});
  EXPECT_EQ(finish.commonPoints[77].position, OdGePoint3d(10, -20, 0));
  EXPECT_EQ(finish.commonPoints[77].weight, 0.25);
  EXPECT_EQ(finish.commonPoints[2].position, OdGePoint3d(1, 1, 5)) << "it replaces the model's entry";
  EXPECT_EQ(finish.commonPoints[2].weight, 0.5);
  EXPECT_THAT(finish.pointDiscrepancies, IsEmpty());
}

TEST(FinishSolve, LetsTheLastOfSeveralLeftOutPointsOfOneNameStand) {
  Finish finish;
  finish.run(crossModel(), crossOfStation(0, 4, {1, 1, 1}), {},
             {leftOut(measured(50, 4, 77, {1, 0, 0})), leftOut(measured(51, 4, 77, {2, 0, 0}))});
  EXPECT_EQ(finish.commonPoints[77].position, OdGePoint3d(2, 0, 0));
}

TEST(FinishSolve, ShowsNoLeftOutPointOfABaseOrWithoutANameOrOfAGroupThatTookNoPart) {
  RefPoint unnamed = leftOut(measured(51, 4, 78, {1, 0, 0}));
  unnamed.named = false;
  Finish finish;
  finish.run(crossModel(), crossOfStation(0, 4, {1, 1, 1}), {},
             {leftOut(inBase(measured(50, 4, 77, {1, 0, 0}))), unnamed, leftOut(measured(52, 9, 79, {1, 0, 0}))});
  EXPECT_THAT(keysOf(finish.commonPoints), ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST(FinishSolve, GivesTheBaseGroupNoTransformationButShowsItsLeftOutPointsByItsRecord) {
  SolveEnding ending;
  ending.baseGroup = 4;
  Finish finish;
  finish.groupTransforms[4].translation = {9, 9, 9};
  finish.groupTransforms[1].translation = {9, 9, 9};
  finish.run(crossModel(), join({crossOfStation(0, 4, {1, 1, 3}), crossOfStation(10, 8, {2, 1, 1})}), ending,
             {leftOut(measured(50, 4, 77, {0, 0, 0}))});
  EXPECT_THAT(keysOf(finish.groupTransforms), ElementsAre(8));
  EXPECT_EQ(finish.solverTable.size(), 2U);
  EXPECT_EQ(finish.commonPoints[77].position, OdGePoint3d(0, 0, -2));
}

TEST(FinishSolve, ReadsTransformationsAndLeftOutPointsFromTheFirstRecordsOfAVectorThatGrew) {
  Finish finish;
  const RefPointList others{leftOut(measured(50, 4, 77, {0, 0, 0}))};
  finish.run(crossModel(), crossOfStation(0, 4, {1, 1, 3}), {}, others);
  finish.run(crossModel(), crossOfStation(0, 4, {1, 1, 8}), {}, others);
  ASSERT_EQ(finish.solverTable.size(), 2U);
  EXPECT_THAT(finish.solverTable[1].translation, ElementsAre(0, 0, -7));
  EXPECT_THAT(finish.groupTransforms[4].translation, ElementsAre(0, 0, -2));
  EXPECT_EQ(finish.commonPoints[77].position, OdGePoint3d(0, 0, -2));
  EXPECT_THAT(finish.pointDiscrepancies, IsEmpty()) << "discrepancies are those of the fit just made";
}

TEST(FinishSolve, AppendsToTheVectorThatItIsGivenAndLeavesTheSessionsTableAlone) {
  SolveMembers members;
  std::vector<RigidTransform> records;
  const RefPointList points = crossOfStation(0, 4, {1, 1, 3});
  finishSolve(crossModel(), buildSolveTables(points), {}, points, records, members, members.pointDiscrepancies);
  EXPECT_EQ(records.size(), 1U);
  EXPECT_THAT(members.solverTable, IsEmpty());
  EXPECT_THAT(keysOf(members.groupTransforms), ElementsAre(4));
  EXPECT_EQ(members.registrationMethod, ZOR::reg::methodUnknown);
}

TEST(FinishSolve, EmptiesTheTransformationsWhenThereIsNoGroup) {
  Finish finish;
  finish.groupTransforms[4].translation = {9, 9, 9};
  finish.run({PointMatrix(0, 3), Eigen::VectorXd()}, {});
  EXPECT_THAT(finish.groupTransforms, IsEmpty());
  EXPECT_THAT(finish.commonPoints, IsEmpty());
}

}  // namespace
}  // namespace tiepoint::testing
