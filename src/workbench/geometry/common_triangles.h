// Which stations have a triangle in common.
#pragma once

#include <set>
#include <utility>

#include "workbench/geometry/station_shapes.h"

namespace tiepoint::workbench {

/// Finds the pairs of stations that have a triangle each whose sides, the shortest with the shortest
/// and so on, differ by at most a tolerance: those for which `forEachEqualPair` visits anything. One
/// pass over all triangles, where comparing all pairs of stations would take the square of their
/// number.
class CommonTriangles {
 public:
  /// `tolerance`: drawing units, above 0.
  CommonTriangles(const Stations& stations, double tolerance);

  /// False only when the two have none in common. Where triangles crowd, as in a grid of targets, so
  /// that to find all pairs would cost more than it spares, it is true of any two.
  bool mayBeBetween(ZOR::reg::GroupId one, ZOR::reg::GroupId other) const;

 private:
  bool isComplete = true;
  /// The lower id first.
  std::set<std::pair<ZOR::reg::GroupId, ZOR::reg::GroupId>> pairs;
};

}  // namespace tiepoint::workbench
