#include "solver/model_to_base.h"

#include <gmock/gmock.h>

#include "solver/builders.h"

namespace tiepoint::testing {
namespace {

using ZOR::reg::GroupRows;
using ZOR::reg::moveModelToBase;

GroupRows baseOf(const std::vector<Eigen::Index>& rows, const std::vector<OdGePoint3d>& points) {
  GroupRows base;
  base.rows = rows;
  base.positions = rowsOf(points);
  return base;
}

TEST(ModelToBase, MovesEveryRowByTheFitOfTheRowsThatTheBaseHas) {
  // The base has the cross in rows 1 to 6, shifted by (10, 0, -5); rows 0 and 7 are none of its.
  std::vector<OdGePoint3d> rows = crossAbout({1, 1, 1});
  rows.insert(rows.begin(), OdGePoint3d(0, 0, 0));
  rows.push_back({100, 200, 300});
  PointMatrix model = rowsOf(rows);
  moveModelToBase(baseOf({1, 2, 3, 4, 5, 6}, crossAbout({11, 1, -4})), model);

  std::vector<OdGePoint3d> expected = crossAbout({11, 1, -4});
  expected.insert(expected.begin(), OdGePoint3d(10, 0, -5));
  expected.push_back({110, 200, 295});
  EXPECT_EQ(model, rowsOf(expected));
}

class ModelToBaseWithAnAbsentPoint : public ::testing::TestWithParam<OdGePoint3d> {};

TEST_P(ModelToBaseWithAnAbsentPoint, FitsWithoutIt) {
  // Row 6 of the model lies far from where the shift of the cross would take the base's point.
  std::vector<OdGePoint3d> rows = crossAbout({1, 1, 1});
  rows.push_back({50, 60, 70});
  PointMatrix model = rowsOf(rows);
  std::vector<OdGePoint3d> base = crossAbout({11, 1, -4});
  base.push_back(GetParam());
  moveModelToBase(baseOf({0, 1, 2, 3, 4, 5, 6}, base), model);
  EXPECT_EQ(rowAt(model, 0), OdGePoint3d(15, 1, -4));
  EXPECT_EQ(rowAt(model, 6), OdGePoint3d(60, 60, 65));
}

/// The origin, and a point so near it that its squared length is 0.0.
INSTANTIATE_TEST_SUITE_P(Points, ModelToBaseWithAnAbsentPoint,
                         ::testing::Values(OdGePoint3d(0, 0, 0), OdGePoint3d(0, 1e-200, 0)));

TEST(ModelToBase, LeavesTheModelToABaseOfTwoPoints) {
  PointMatrix model = rowsOf({{1, 2, 3}, {4, 5, 6}, {7, 8, 10}});
  moveModelToBase(baseOf({0, 2}, {{9, 9, 9}, {1, 1, 1}}), model);
  EXPECT_EQ(model, rowsOf({{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}));
}

}  // namespace
}  // namespace tiepoint::testing
