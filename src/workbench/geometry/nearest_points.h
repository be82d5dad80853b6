// How near to one another points of a registered survey lie.
#pragma once

#include "workbench/geometry/close_points.h"

namespace tiepoint::workbench {

/// Lengths in drawing units.
struct NearestPoints {
  /// From a point without a name to any other.
  double toUnnamed = 0.0;
  /// Between two points that bear different names.
  double betweenNames = 0.0;
};

/// Lower bounds of the smallest such distances, below them by no more than what rounding adds to
/// places of this size, so that who puts the points there by other sums finds none nearer. Distances
/// above `maxDistance` aren't looked for; where none is below it, `maxDistance`. 0 where a position isn't finite: no
/// bound can be given for it.
NearestPoints nearestPoints(const std::vector<PlacedPoint>& placed, double maxDistance);

}  // namespace tiepoint::workbench
