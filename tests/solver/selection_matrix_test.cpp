#include "solver/selection_matrix.h"

#include <gmock/gmock.h>

#include <limits>

#include "solver/builders.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace ZOR::reg;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

TEST(SelectionMatrix, PicksTheSelectedRowsInAscendingOrder) {
  const SelectionMatrix selection({1, 3});
  const PointMatrix picked = selection.pick(rowsOf({{0, 0, 0}, {1, 2, 3}, {4, 5, 6}, {7, 8, 9}}));
  EXPECT_EQ(selection.count(), 2);
  EXPECT_EQ(picked, rowsOf({{1, 2, 3}, {7, 8, 9}}));
}

TEST(SelectionMatrix, ScattersValuesBackAndLeavesZeroElsewhere) {
  const SelectionMatrix selection({1, 3});
  EXPECT_EQ(selection.scatter(valuesOf({5.0, 6.0}), 5), valuesOf({0.0, 5.0, 0.0, 6.0, 0.0}));
}

TEST(SelectionMatrix, ScattersRowsBackAndLeavesZeroElsewhere) {
  const SelectionMatrix selection({0, 2});
  EXPECT_EQ(selection.scatter(rowsOf({{1, 2, 3}, {4, 5, 6}}), 3), rowsOf({{1, 2, 3}, {0, 0, 0}, {4, 5, 6}}));
}

TEST(SelectionMatrix, WithoutASelectionPicksNothingAndScattersZeros) {
  const SelectionMatrix selection;
  EXPECT_EQ(selection.count(), 0);
  EXPECT_EQ(selection.pick(rowsOf({{1, 2, 3}})).rows(), 0);
  EXPECT_EQ(selection.scatter(Eigen::VectorXd(), 2), valuesOf({0.0, 0.0}));
}

TEST(SelectionMatrix, PicksTheSameRowsFromALargerTable) {
  const SelectionMatrix selection({0, 2});
  EXPECT_THAT(selection.among({4, 7, 9}).selectedRows(), ElementsAre(4, 9));
}

TEST(SelectionByWeight, TakesWeightsAboveZeroAlone) {
  const auto weights = valuesOf({1.0, 0.0, -0.5, smallest, -0.0, infinite, notANumber});
  EXPECT_THAT(selectByWeight(weights).selectedRows(), ElementsAre(0, 3, 5));
}

TEST(SelectionByCoordinates, LeavesOutTheOriginAlone) {
  const PointMatrix points = rowsOf(
      {{0, 0, 0}, {0, 0, 1}, {0, -1, 0}, {1e-200, 0, 0}, {-0.0, -0.0, 0}, {0, 0, notANumber}, {-smallest, 0, 0}});
  EXPECT_THAT(selectByCoordinates(points).selectedRows(), ElementsAre(1, 2, 3, 5, 6));
}

TEST(SelectionByLength, LeavesOutRowsWhoseSquaredLengthIsZero) {
  // The square of 1e-200 is below the smallest number, so that row counts as absent here.
  const PointMatrix points =
      rowsOf({{0, 0, 0}, {0, 0, 1}, {0, -1, 0}, {1e-200, 0, 0}, {-0.0, -0.0, 0}, {0, 0, notANumber}, {0, 1e-160, 0}});
  EXPECT_THAT(selectByLength(points).selectedRows(), ElementsAre(1, 2, 5, 6));
}

TEST(Selection, OfNoRowsIsEmpty) {
  EXPECT_THAT(selectByWeight(Eigen::VectorXd()).selectedRows(), IsEmpty());
  EXPECT_THAT(selectByCoordinates(PointMatrix(0, 3)).selectedRows(), IsEmpty());
  EXPECT_THAT(selectByLength(PointMatrix(0, 3)).selectedRows(), IsEmpty());
}

}  // namespace
}  // namespace tiepoint::testing
