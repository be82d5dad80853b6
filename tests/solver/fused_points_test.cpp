#include "solver/fused_points.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "solver/builders.h"

namespace tiepoint::testing {
namespace {

using ZOR::reg::buildSolveTables;
using ZOR::reg::FusedPoints;
using ZOR::reg::SolveTables;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// What group 0 becomes when it absorbs the others in turn. Two crosses of the same names, one
/// shifted by (10, 0, 0), hold the fit exact; the name in question is 6.
struct Fusion {
  explicit Fusion(const RefPointList& points) {
    const SolveTables tables = buildSolveTables(points);
    FusedPoints survivor(tables.groups.front());
    for (std::size_t g = 1; g < tables.groups.size(); ++g) survivor.absorb(FusedPoints(tables.groups[g]));
    positions = PointMatrix::Zero(tables.commonRows(), 3);
    weights = Eigen::VectorXd::Zero(tables.commonRows());
    survivor.copyTo(positions, weights);
  }
  PointMatrix positions;
  Eigen::VectorXd weights;
};

RefPointList surveyWith(std::initializer_list<RefPoint> points) {
  return join({crossOfStation(0, 0, {11, 1, 1}), crossOfStation(10, 1, {1, 1, 1}), RefPointList(points)});
}

TEST(FusedPoints, BlendANameOfBothByWeightAndAverageItsWeights) {
  // The names 6 and 7 lie on the x axis of either cross, 8 and 13 from the centre, so that the fit
  // stays exact. (1 x 19 + 0.25 x 24) / 1.25 = 20 along x.
  const Fusion fusion(surveyWith({measured(20, 0, 6, {19, 1, 1}, 1.0), measured(21, 1, 6, {14, 1, 1}, 0.25),
                                  measured(22, 0, 7, {3, 1, 1}, 1.0), measured(23, 1, 7, {-12, 1, 1}, 0.25)}));
  EXPECT_EQ(rowAt(fusion.positions, 6), OdGePoint3d(20, 1, 1));
  EXPECT_EQ(fusion.weights[6], 0.625);
  EXPECT_EQ(rowAt(fusion.positions, 7), OdGePoint3d(2, 1, 1));
}

TEST(FusedPoints, TakeANameThatOnlyTheAbsorbedGroupHasToItsMovedPlaceWithItsWeight) {
  const Fusion fusion(surveyWith({measured(21, 1, 6, {20, 5, 10}, 0.25)}));
  EXPECT_EQ(rowAt(fusion.positions, 6), OdGePoint3d(30, 5, 10));
  EXPECT_EQ(fusion.weights[6], 0.25);
}

TEST(FusedPoints, KeepANameThatOnlyTheSurvivorHas) {
  const Fusion fusion(surveyWith({measured(21, 0, 6, {20, 5, 10}, 0.25)}));
  EXPECT_EQ(rowAt(fusion.positions, 6), OdGePoint3d(20, 5, 10));
  EXPECT_EQ(fusion.weights[6], 0.25);
}

TEST(FusedPoints, FitWithoutANegativeWeightButBlendByIt) {
  // (1 x (20, 5, 0) - 0.5 x (30, 5, 10)) / 0.5.
  const Fusion fusion(surveyWith({measured(20, 0, 6, {20, 5, 0}, 1.0), measured(21, 1, 6, {20, 5, 10}, -0.5)}));
  EXPECT_EQ(rowAt(fusion.positions, 6), OdGePoint3d(10, 5, -10));
  EXPECT_EQ(fusion.weights[6], 0.25);
  EXPECT_EQ(rowAt(fusion.positions, 0), OdGePoint3d(15, 1, 1));
}

TEST(FusedPoints, FitWithoutAWeightThatIsNotANumberButBlendByIt) {
  const Fusion fusion(surveyWith({measured(20, 0, 6, {20, 5, 0}, notANumber), measured(21, 1, 6, {20, 5, 10}, 1.0)}));
  EXPECT_TRUE(std::isnan(fusion.positions(6, 0)));
  EXPECT_TRUE(std::isnan(fusion.weights[6]));
  EXPECT_EQ(rowAt(fusion.positions, 0), OdGePoint3d(15, 1, 1));
}

TEST(FusedPoints, CountANameWhoseWeightsCancelledAsNotTheirs) {
  // After group 1 the weight is (1 - 1) x 0.5 = 0.0, so group 2's point is taken as it is.
  const RefPointList survey =
      join({surveyWith({measured(20, 0, 6, {20, 5, 0}, 1.0), measured(21, 1, 6, {9, 9, 9}, -1.0)}),
            crossOfStation(30, 2, {1, 1, 101}),
            {measured(40, 2, 6, {1, 2, 103}, 0.5)}});
  const Fusion fusion(survey);
  EXPECT_EQ(rowAt(fusion.positions, 6), OdGePoint3d(11, 2, 3));
  EXPECT_EQ(fusion.weights[6], 0.5);
}

TEST(FusedPoints, PassOverAnAbsorbedPointOfWeightZero) {
  const Fusion fusion(surveyWith(
      {measured(20, 0, 6, {20, 5, 0}, 1.0), measured(21, 1, 6, {20, 5, 10}, 0.0), measured(22, 1, 7, {1, 2, 3}, 0.0)}));
  EXPECT_EQ(rowAt(fusion.positions, 6), OdGePoint3d(20, 5, 0));
  EXPECT_EQ(fusion.weights[6], 1.0);
  EXPECT_EQ(rowAt(fusion.positions, 7), OdGePoint3d(0, 0, 0));
  EXPECT_EQ(fusion.weights[7], 0.0);
}

TEST(FusedPoints, LeaveAnAbsorbedPointAtTheOriginThereAndBlendItByWeight) {
  const Fusion fusion(surveyWith(
      {measured(21, 1, 6, {0, 0, 0}, 0.5), measured(22, 0, 7, {8, 4, 2}, -1.0), measured(23, 1, 7, {0, 0, 0}, 3.0)}));
  EXPECT_EQ(rowAt(fusion.positions, 6), OdGePoint3d(0, 0, 0));
  EXPECT_EQ(fusion.weights[6], 0.5);
  EXPECT_EQ(rowAt(fusion.positions, 7), OdGePoint3d(-4, -2, -1));
  EXPECT_EQ(fusion.weights[7], 1.0);
}

TEST(FusedPoints, AbsorbAGroupOfFewerThanThreeCommonNamesWhereItLies) {
  const Fusion fusion({measured(1, 0, 0, {1, 0, 0}), measured(2, 0, 1, {2, 0, 0}), measured(3, 1, 0, {3, 0, 0}),
                       measured(4, 1, 1, {4, 0, 0}), measured(5, 1, 2, {5, 0, 0})});
  EXPECT_EQ(fusion.positions, rowsOf({{2, 0, 0}, {3, 0, 0}, {5, 0, 0}}));
}

}  // namespace
}  // namespace tiepoint::testing
