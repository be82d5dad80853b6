#include "workbench/geometry/pose_matrix.h"

namespace tiepoint::workbench {

OdGeMatrix3d matrixOf(const analysis::Pose& pose) {
  OdGeMatrix3d matrix;
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) matrix(row, column) = pose.rotation(row, column);
    matrix(row, 3) = pose.shift(row);
  }
  return matrix;
}

analysis::Pose poseOf(const OdGeMatrix3d& motion) {
  analysis::Pose pose;
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) pose.rotation(row, column) = motion(row, column);
    pose.shift(row) = motion(row, 3);
  }
  return pose;
}

}  // namespace tiepoint::workbench
