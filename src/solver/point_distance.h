// How far two points lie apart.
#pragma once

#include <cmath>

#include "platform/sdk/od_ge_point3d.h"

namespace ZOR::reg {

/// Euclidean, drawing units.
inline double distance(const OdGePoint3d& a, const OdGePoint3d& b) {
  const OdGeVector3d d = a - b;
  return std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
}

}  // namespace ZOR::reg
