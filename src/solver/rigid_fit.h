// The one numeric kernel: a rotation and a translation between two sets of the same targets.
#pragma once

#include <Eigen/Core>

#include "records/rigid_transform.h"

namespace ZOR::reg {

/// N x 3, one point a row, drawing units.
using PointMatrix = Eigen::Matrix<double, Eigen::Dynamic, 3>;

/// The rigid motion that carries `source` onto `target` with the least sum of squared distances:
/// target = rotation x source + translation. Row i of both is the same target. No weights, no
/// scale, no outliers (W. Kabsch, 1976; the sign correction keeps reflections out).
///
/// Gives the identity when the row counts differ or are below 3, and not-a-number throughout when a
/// coordinate isn't finite or is so large that the sums overflow.
void fitRigidTransform(const PointMatrix& target, const PointMatrix& source, std::array<double, 9>& rotation,
                       std::array<double, 3>& translation);

/// The same as one record, from `source` to `target`.
RigidTransform fitRigidTransform(const PointMatrix& target, const PointMatrix& source);

}  // namespace ZOR::reg
