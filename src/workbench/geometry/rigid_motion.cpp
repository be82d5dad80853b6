#include "workbench/geometry/rigid_motion.h"

#include <Eigen/Geometry>

namespace tiepoint::workbench {

namespace {

/// Far above the rounding of a fit, far below anything that could be seen.
constexpr double orthonormalWithin = 1e-9;
constexpr double degreesPerRadian = 57.295779513082320877;

Eigen::Matrix3d rotationOf(const OdGeMatrix3d& motion) {
  Eigen::Matrix3d rotation;
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) rotation(row, column) = motion(row, column);
  }
  return rotation;
}

}  // namespace

AxisAngleShift axisAngleShift(const OdGeMatrix3d& motion) {
  const Eigen::AngleAxisd turn(rotationOf(motion));
  return {turn.angle() * degreesPerRadian,
          {turn.axis().x(), turn.axis().y(), turn.axis().z()},
          {motion(0, 3), motion(1, 3), motion(2, 3)}};
}

bool isRigid(const OdGeMatrix3d& motion) {
  const Eigen::Matrix3d rotation = rotationOf(motion);
  const Eigen::Vector3d shift(motion(0, 3), motion(1, 3), motion(2, 3));
  if (!rotation.allFinite() || !shift.allFinite()) return false;
  const double deviation = (rotation.transpose() * rotation - Eigen::Matrix3d::Identity()).cwiseAbs().maxCoeff();
  return deviation < orthonormalWithin && rotation.determinant() > 0.0;
}

}  // namespace tiepoint::workbench
