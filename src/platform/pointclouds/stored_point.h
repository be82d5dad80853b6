// The persistent form of a reference point.
#pragma once

#include "platform/sdk/od_array.h"
#include "platform/sdk/od_string.h"

namespace ZOR {

/// One measured target as a drawing keeps it.
struct _StoredPoint {
  /// "?" for a point that isn't identified.
  OdString name;
  /// Coordinates in the group's own system, drawing units.
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  double w = 0.0;
};

using StoredPointArray = OdArray<_StoredPoint, OdObjectsAllocator<_StoredPoint>>;

}  // namespace ZOR
