// A rigid motion as people read it: an angle about an axis, and a shift.
#pragma once

#include <array>

#include "platform/sdk/od_ge_matrix3d.h"

namespace tiepoint::workbench {

/// A point p goes to its rotation by `angleDegrees` (0 to 180, right-handed) about `axis` through
/// the origin, plus `shift`.
struct AxisAngleShift {
  double angleDegrees = 0.0;
  /// Unit length; (1, 0, 0) when nothing turns.
  std::array<double, 3> axis{1.0, 0.0, 0.0};
  /// Drawing units.
  std::array<double, 3> shift{0.0, 0.0, 0.0};
};

AxisAngleShift axisAngleShift(const OdGeMatrix3d& motion);

/// All entries are finite, the rotation's columns are orthonormal within rounding, and it is no
/// reflection.
bool isRigid(const OdGeMatrix3d& motion);

}  // namespace tiepoint::workbench
