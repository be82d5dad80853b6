// A transformation as the matrix files and the results report show it.
#pragma once

#include <array>

#include "records/rigid_transform.h"

namespace ZOR::reg {

/// [m | t] over (0, 0, 0, 1), row after row; m is the transpose of the rotation.
std::array<std::array<double, 4>, 4> transposedMatrix(const RigidTransform& transform);

/// The turns of m about Z, then X, then Z; radians.
std::array<double, 3> zxzAngles(const RigidTransform& transform);

}  // namespace ZOR::reg
