// The residual of one measurement, for Ceres.
#pragma once

#include <ceres/rotation.h>

#include <Eigen/Core>

namespace tiepoint::testing {

/// Measured place, turned and shifted, less the target, in standard deviations. The station is an
/// angle-axis and a shift.
struct CeresResidual {
  Eigen::Vector3d place;
  double sigma;

  template <typename T>
  bool operator()(const T* station, const T* target, T* residual) const {
    const T point[3] = {T(place.x()), T(place.y()), T(place.z())};
    ceres::AngleAxisRotatePoint(station, point, residual);
    for (int axis = 0; axis < 3; ++axis) residual[axis] = (residual[axis] + station[3 + axis] - target[axis]) / sigma;
    return true;
  }
};

}  // namespace tiepoint::testing
