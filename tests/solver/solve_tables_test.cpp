#include "solver/solve_tables.h"

#include <gmock/gmock.h>

#include "solver/builders.h"
#include "solver/selection_matrix.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ZOR::reg::buildSolveTables;
using ZOR::reg::GroupRows;
using ZOR::reg::SolveTables;

TEST(SolveTables, IndexGroupsAndNamesInAscendingOrderWhateverTheListsOrder) {
  const SolveTables tables =
      buildSolveTables({measured(1, 9, 40, {1, 0, 0}), measured(2, 2, 70, {2, 0, 0}), measured(3, 9, 30, {3, 0, 0})});
  EXPECT_THAT(tables.groupIndex, ElementsAre(2, 9));
  EXPECT_THAT(tables.commonIndex, ElementsAre(30, 40, 70));
  EXPECT_EQ(tables.commonRows(), 3);
}

TEST(SolveTables, HoldForEachGroupTheRowsThatItHas) {
  const SolveTables tables = buildSolveTables(
      {measured(1, 9, 40, {1, 2, 3}, 0.5), measured(2, 2, 70, {4, 5, 6}, 0.25), measured(3, 9, 30, {7, 8, 9}, 1.0)});
  ASSERT_EQ(tables.groups.size(), 2U);

  const GroupRows& second = tables.groups[0];
  EXPECT_THAT(second.rows, ElementsAre(2));
  EXPECT_EQ(second.positions, rowsOf({{4, 5, 6}}));
  EXPECT_THAT(second.weights, ElementsAre(0.25));
  EXPECT_THAT(second.pointIds, ElementsAre(2));

  const GroupRows& ninth = tables.groups[1];
  EXPECT_THAT(ninth.rows, ElementsAre(0, 1));
  EXPECT_EQ(ninth.positions, rowsOf({{7, 8, 9}, {1, 2, 3}}));
  EXPECT_THAT(ninth.weights, ElementsAre(1.0, 0.5));
  EXPECT_THAT(ninth.pointIds, ElementsAre(3, 1));
}

TEST(SolveTables, HoldTheLastInListOrderOfTwoPointsOfOneName) {
  const SolveTables tables = buildSolveTables(
      {measured(8, 0, 5, {1, 1, 1}, 0.5), measured(9, 0, 6, {3, 3, 3}), measured(7, 0, 5, {2, 2, 2}, 0.75)});
  const GroupRows& group = tables.groups[0];
  EXPECT_THAT(group.rows, ElementsAre(0, 1));
  EXPECT_EQ(group.positions, rowsOf({{2, 2, 2}, {3, 3, 3}}));
  EXPECT_THAT(group.weights, ElementsAre(0.75, 1.0));
  EXPECT_THAT(group.pointIds, ElementsAre(7, 9));
}

TEST(SolveTables, HoldOfAnInactivePointItsIdAlone) {
  const SolveTables tables = buildSolveTables({leftOut(measured(4, 0, 5, {1, 1, 1}))});
  const GroupRows& group = tables.groups[0];
  EXPECT_EQ(group.positions, rowsOf({{0, 0, 0}}));
  EXPECT_THAT(group.weights, ElementsAre(0.0));
  EXPECT_THAT(group.pointIds, ElementsAre(4));
}

TEST(SolveTables, HoldAPointAtTheOriginWhichIsPresentByWeightAndAbsentByCoordinatesAndLength) {
  const SolveTables tables = buildSolveTables({measured(4, 0, 5, {0, 0, 0}), measured(5, 0, 6, {1, 0, 0})});
  const GroupRows& group = tables.groups[0];
  EXPECT_THAT(group.rows, ElementsAre(0, 1));
  EXPECT_THAT(ZOR::reg::selectByWeight(group.weights).selectedRows(), ElementsAre(0, 1));
  EXPECT_THAT(ZOR::reg::selectByCoordinates(group.positions).selectedRows(), ElementsAre(1));
  EXPECT_THAT(ZOR::reg::selectByLength(group.positions).selectedRows(), ElementsAre(1));
}

TEST(SolveTables, OfNoPointsAreEmpty) {
  const SolveTables tables = buildSolveTables(RefPointList());
  EXPECT_THAT(tables.groupIndex, IsEmpty());
  EXPECT_THAT(tables.commonIndex, IsEmpty());
  EXPECT_THAT(tables.groups, IsEmpty());
}

TEST(SolveTables, OverGivenIndexesPassOverPointsOutsideThem) {
  const SolveTables tables = buildSolveTables(
      {measured(1, 0, 10, {1, 0, 0}), measured(2, 1, 10, {2, 0, 0}), measured(3, 1, 11, {3, 0, 0})}, {1, 2}, {10, 12});
  EXPECT_THAT(tables.groupIndex, ElementsAre(1, 2));
  EXPECT_THAT(tables.commonIndex, ElementsAre(10, 12));
  ASSERT_EQ(tables.groups.size(), 2U);
  EXPECT_THAT(tables.groups[0].pointIds, ElementsAre(2));
  EXPECT_THAT(tables.groups[0].rows, ElementsAre(0));
  EXPECT_THAT(tables.groups[1].rows, IsEmpty());
  EXPECT_EQ(tables.groups[1].positions.rows(), 0);
}

TEST(SolveTables, FindARowByItsIdAndNoneForAnIdBeforeBetweenOrAfter) {
  const std::vector<std::uint64_t> index{3, 5, 9};
  EXPECT_EQ(ZOR::reg::rowOf(index, 3), 0U);
  EXPECT_EQ(ZOR::reg::rowOf(index, 9), 2U);
  EXPECT_EQ(ZOR::reg::rowOf(index, 2), std::nullopt);
  EXPECT_EQ(ZOR::reg::rowOf(index, 4), std::nullopt);
  EXPECT_EQ(ZOR::reg::rowOf(index, 10), std::nullopt);
}

}  // namespace
}  // namespace tiepoint::testing
