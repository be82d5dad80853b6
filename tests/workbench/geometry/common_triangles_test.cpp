#include "workbench/geometry/common_triangles.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

#include "solver/arbitrary.h"
#include "workbench/geometry/shapes.h"

namespace tiepoint::workbench {
namespace {

using tiepoint::testing::arbitraryBetween;

Stations stationsAt(const std::vector<Points>& shapes) {
  Stations stations;
  for (const Points& points : shapes) stations[stations.size()].shape = shapeOf(points);
  return stations;
}

[[maybe_unused]] bool haveEqualPair(const Station& one, const Station& other, double tolerance) {
  bool found = false;
  forEachEqualPair(one.shape.triangles, other.shape.triangles, tolerance, [&](const Triangle&, const Triangle&) {
    found = true;
    return false;
  });
  return found;
}

const Points nineTwelveFifteen{{0, 0, 0}, {9, 0, 0}, {9, 12, 0}};

TEST(CommonTriangles, AreFoundInAnyPositionAndNotWhereSidesDiffer) {
  const CommonTriangles common(stationsAt({irregular, nineTwelveFifteen, turned(irregular)}), 0.01);
  EXPECT_TRUE(common.mayBeBetween(0, 2));
  EXPECT_TRUE(common.mayBeBetween(2, 0));
  EXPECT_FALSE(common.mayBeBetween(0, 1));
  EXPECT_FALSE(common.mayBeBetween(1, 2));
}

TEST(CommonTriangles, AreFoundWhereSidesDifferByJustTheTolerance) {
  // The middle side grows by a quarter, the others stay.
  Stations stations = stationsAt({nineTwelveFifteen, nineTwelveFifteen});
  stations.at(1).shape.triangles.at(0).sides[1] = 12.25;
  EXPECT_TRUE(CommonTriangles(stations, 0.25).mayBeBetween(0, 1));
  EXPECT_FALSE(CommonTriangles(stations, 0.249).mayBeBetween(0, 1));
}

TEST(CommonTriangles, MayBeAnywhereWhereNoCellsCanTell) {
  const Stations stations = stationsAt({irregular, nineTwelveFifteen});
  EXPECT_TRUE(CommonTriangles(stations, 1e-12).mayBeBetween(0, 1));
  EXPECT_TRUE(CommonTriangles(stations, std::numeric_limits<double>::denorm_min()).mayBeBetween(0, 1));
  EXPECT_TRUE(CommonTriangles(stationsAt({{}, {}}), 0.01).mayBeBetween(0, 1));
}

TEST(CommonTriangles, MayBeAnywhereWhereTrianglesCrowd) {
  Stations stations = stationsAt({nineTwelveFifteen, irregular});
  stations.at(0).shape.triangles.assign(2000, stations.at(0).shape.triangles.front());
  EXPECT_TRUE(CommonTriangles(stations, 0.01).mayBeBetween(0, 1));
}

/// On a coarse lattice many sides are equal or differ by just the tolerance.
RC_GTEST_PROP(CommonTriangles, AreThoseOfAllPairsOfStations, ()) {
  std::vector<Points> shapes(arbitraryBetween<std::size_t>(2, 6));
  for (Points& points : shapes) {
    points.resize(arbitraryBetween<std::size_t>(3, 5));
    const auto step = [] { return 0.5 * arbitraryBetween(0, 24); };
    for (Eigen::Vector3d& point : points) point = {step(), step(), step()};
  }
  const double tolerance = *rc::gen::element(0.01, 0.25, 0.5, 1.0);
  const Stations stations = stationsAt(shapes);
  const CommonTriangles common(stations, tolerance);
  std::size_t found = 0, all = 0;
  for (const auto& [one, first] : stations) {
    for (const auto& [other, second] : stations) {
      if (one == other) continue;
      ++all;
      const bool areThere = haveEqualPair(first, second, tolerance);
      found += areThere ? 1 : 0;
      if (areThere) RC_ASSERT(common.mayBeBetween(one, other));
      const bool hasAny = std::any_of(stations.begin(), stations.end(),
                                      [](const auto& entry) { return !entry.second.shape.triangles.empty(); });
      if (hasAny) RC_ASSERT(common.mayBeBetween(one, other) == areThere);
    }
  }
  RC_CLASSIFY(found > 0 && found < all, "some pairs of stations");
}

}  // namespace
}  // namespace tiepoint::workbench
