#include "solver/solve_input.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "solver/builders.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ZOR::reg::PointDiscrepancies;
using ZOR::reg::prepareSolvePoints;

/// The outputs start with something in them, which every run has to take out.
struct Prepared {
  explicit Prepared(const RefPointList& sessionPoints) {
    prepareSolvePoints(sessionPoints, workingPoints, pointDiscrepancies);
  }
  std::vector<RefPointId> ids() const {
    std::vector<RefPointId> all;
    for (const RefPoint& point : workingPoints) all.push_back(point.id);
    return all;
  }
  std::vector<GroupId> groups() const {
    std::vector<GroupId> all;
    for (const RefPoint& point : workingPoints) all.push_back(point.groupId);
    return all;
  }

  RefPointList workingPoints{measured(900, 900, 900, {9, 9, 9})};
  PointDiscrepancies pointDiscrepancies{{900, 9.0}};
};

TEST(SolveInput, IsEmptyWithoutAnActivePoint) {
  const Prepared prepared({leftOut(measured(1, 0, 0, {1, 1, 1})), leftOut(inBase(measured(2, 1, 0, {1, 1, 1})))});
  EXPECT_THAT(prepared.workingPoints, IsEmpty());
  EXPECT_THAT(prepared.pointDiscrepancies, IsEmpty());
}

TEST(SolveInput, WithOneBaseGroupKeepsListOrderAndGroupIdsAndMergesNothing) {
  const Prepared prepared({inBase(measured(5, 7, 0, {1, 1, 1})), measured(3, 2, 0, {2, 2, 2}),
                           inBase(measured(4, 7, 0, {3, 3, 3})), leftOut(measured(6, 2, 1, {4, 4, 4}))});
  EXPECT_THAT(prepared.ids(), ElementsAre(5, 3, 4));
  EXPECT_THAT(prepared.groups(), ElementsAre(7, 2, 7));
  EXPECT_EQ(prepared.workingPoints.back().position, OdGePoint3d(3, 3, 3));
  EXPECT_THAT(prepared.pointDiscrepancies, IsEmpty());
}

TEST(SolveInput, CountsABaseGroupByItsActivePointsAlone) {
  const Prepared prepared({inBase(measured(1, 7, 0, {1, 1, 1})), leftOut(inBase(measured(2, 3, 0, {2, 2, 2})))});
  EXPECT_THAT(prepared.groups(), ElementsAre(7));
  EXPECT_THAT(prepared.pointDiscrepancies, IsEmpty());
}

TEST(SolveInput, MovesTheSinglePointsOfTwoBaseGroupsToTheSmallerGroupUnderTheirOwnIds) {
  const Prepared prepared(
      {inBase(measured(5, 7, 0, {1, 2, 3})), measured(3, 2, 0, {2, 2, 2}), inBase(measured(4, 6, 1, {3, 3, 3}))});
  EXPECT_THAT(prepared.ids(), ElementsAre(3, 5, 4));
  EXPECT_THAT(prepared.groups(), ElementsAre(2, 6, 6));
  EXPECT_EQ(std::next(prepared.workingPoints.begin())->position, OdGePoint3d(1, 2, 3));
  EXPECT_THAT(prepared.pointDiscrepancies, IsEmpty());
}

TEST(SolveInput, MergesANameOfTwoBaseGroupsToTheMeanByWeight) {
  // (1 x 3 + 0.5 x 6) / 1.5 = 4 along x; y and z alike.
  const Prepared prepared({inBase(measured(8, 7, 4, {3, 0, 30}, 1.0)), inBase(measured(2, 6, 4, {6, 3, 60}, 0.5))});
  ASSERT_THAT(prepared.ids(), ElementsAre(8));
  const RefPoint& merged = prepared.workingPoints.front();
  EXPECT_THAT(merged.position, IsNearPoint(OdGePoint3d(4, 1, 40), 1e-14));
  EXPECT_EQ(merged.weight, 0.75);
  EXPECT_EQ(merged.groupId, 6U);
  EXPECT_EQ(merged.commonId, 4U);
  EXPECT_TRUE(merged.inBase);
  // Distances of (1, 1, 10) and (2, 2, 20).
  EXPECT_THAT(prepared.pointDiscrepancies, ElementsAre(Pair(2, ::testing::DoubleNear(std::sqrt(408.0), 1e-14)),
                                                       Pair(8, ::testing::DoubleNear(std::sqrt(102.0), 1e-14))));
}

TEST(SolveInput, FormsTheReciprocalOfTheWeightsBeforeItMultiplies) {
  // Weights 1 and 2: the sum of x is 5, and 5 / 3 would end in 67.
  const Prepared prepared({inBase(measured(1, 0, 4, {1, 0, 0}, 1.0)), inBase(measured(2, 1, 4, {2, 0, 0}, 2.0))});
  EXPECT_EQ(prepared.workingPoints.front().position, OdGePoint3d(1.6666666666666665, 0, 0));
}

TEST(SolveInput, MergesPointsOfOneNameWithinOneBaseGroupByTheSameRule) {
  const Prepared prepared({inBase(measured(1, 5, 4, {0, 0, 0})), inBase(measured(2, 5, 4, {2, 0, 0})),
                           inBase(measured(3, 6, 9, {7, 7, 7}))});
  EXPECT_THAT(prepared.ids(), ElementsAre(3, 1));
  EXPECT_EQ(prepared.workingPoints.back().position, OdGePoint3d(1, 0, 0));
  EXPECT_EQ(prepared.workingPoints.back().weight, 1.0);
  EXPECT_THAT(prepared.pointDiscrepancies, ElementsAre(Pair(1, 1.0), Pair(2, 1.0)));
}

TEST(SolveInput, PutsNonBasePointsFirstThenSingleBasePointsThenMergedOnesByName) {
  const Prepared prepared({inBase(measured(1, 5, 9, {1, 0, 0})), inBase(measured(2, 5, 8, {1, 0, 0})),
                           inBase(measured(3, 6, 9, {1, 0, 0})), measured(4, 0, 9, {1, 0, 0}),
                           inBase(measured(5, 6, 7, {1, 0, 0})), inBase(measured(6, 6, 8, {1, 0, 0})),
                           inBase(measured(7, 5, 6, {1, 0, 0})), measured(8, 1, 7, {1, 0, 0})});
  EXPECT_THAT(prepared.ids(), ElementsAre(4, 8, 5, 7, 2, 1));
}

TEST(SolveInput, KeepsTheFlagsOfTheFirstPointInAMergedOne) {
  RefPoint first = inBase(measured(1, 5, 4, {0, 0, 0}));
  first.autoNamed = true;
  const Prepared prepared({first, inBase(measured(2, 6, 4, {2, 0, 0}))});
  const RefPoint& merged = prepared.workingPoints.front();
  EXPECT_TRUE(merged.autoNamed);
  EXPECT_TRUE(merged.named);
  EXPECT_TRUE(merged.active);
  EXPECT_TRUE(merged.included);
}

TEST(SolveInput, GivesAMergedPointADiscrepancyOfZeroAsAnEntryToo) {
  const Prepared prepared({inBase(measured(1, 5, 4, {1, 1, 1})), inBase(measured(2, 6, 4, {1, 1, 1}))});
  EXPECT_THAT(prepared.pointDiscrepancies, ElementsAre(Pair(1, 0.0), Pair(2, 0.0)));
}

TEST(SolveInput, KeepsAPointAtTheOriginOfItsGroup) {
  const Prepared prepared({measured(1, 0, 0, {0, 0, 0}), measured(2, 1, 0, {1, 0, 0})});
  EXPECT_THAT(prepared.ids(), ElementsAre(1, 2));
}

TEST(SolveInput, HasNoPlaceForAMergedPointWhoseWeightsCancel) {
  const Prepared prepared({inBase(measured(1, 5, 4, {1, 1, 1}, 0.5)), inBase(measured(2, 6, 4, {2, 2, 2}, -0.5))});
  EXPECT_EQ(prepared.workingPoints.front().position.x, -std::numeric_limits<double>::infinity());
  EXPECT_EQ(prepared.workingPoints.front().weight, 0.0);
}

TEST(SolveInput, NamesTheGroupOfTheFirstBasePointAsTheBase) {
  EXPECT_EQ(
      ZOR::reg::baseGroupOf({measured(1, 3, 0, {}), inBase(measured(2, 9, 0, {})), inBase(measured(3, 4, 0, {}))}), 9U);
  EXPECT_EQ(ZOR::reg::baseGroupOf({measured(1, 3, 0, {})}), std::nullopt);
}

TEST(SolveInput, CollectsTheIdsOfAllBasePoints) {
  EXPECT_THAT(
      ZOR::reg::basePointsOf({inBase(measured(7, 3, 0, {})), measured(1, 9, 0, {}), inBase(measured(3, 4, 0, {}))}),
      ElementsAre(3, 7));
}

}  // namespace
}  // namespace tiepoint::testing
