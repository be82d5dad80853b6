// How far two rows of three numbers lie apart.
#pragma once

#include <cmath>

#include "matching/row_columns.h"

namespace ZOR::reg {

/// The order of the sum is part of the value.
inline double rowDistance(double dx, double dy, double dz) { return std::sqrt(dx * dx + (dy * dy + dz * dz)); }

inline double rowDistance(const PlacedRow& a, const PlacedRow& b) {
  return rowDistance(a.x - b.x, a.y - b.y, a.z - b.z);
}

}  // namespace ZOR::reg
