#include "workbench/analysis/placement.h"

#include <Eigen/Dense>
#include <cmath>

namespace tiepoint::workbench::analysis {

namespace {

/// The sum of centre and shift with the error of its rounding (Knuth's two-sum).
void addExactly(const Placement& placement, const Eigen::Vector3d& shift, Placement& next) {
  const Eigen::Vector3d sum = placement.centre + shift;
  const Eigen::Vector3d part = sum - placement.centre;
  const Eigen::Vector3d error = (placement.centre - (sum - part)) + (shift - part);
  const Eigen::Vector3d remainder = placement.remainder + error;
  next.centre = sum + remainder;
  next.remainder = remainder - (next.centre - sum);
}

}  // namespace

Eigen::Matrix3d crossMatrix(const Eigen::Vector3d& v) {
  Eigen::Matrix3d cross;
  cross << 0.0, -v.z(), v.y(), v.z(), 0.0, -v.x(), -v.y(), v.x(), 0.0;
  return cross;
}

Eigen::Matrix3d rotationBy(const Eigen::Vector3d& turn) {
  const double angle = turn.norm();
  if (angle == 0.0) return Eigen::Matrix3d::Identity();
  return Eigen::AngleAxisd(angle, turn / angle).toRotationMatrix();
}

Eigen::Matrix3d nearestRotation(const Eigen::Matrix3d& matrix) {
  const Eigen::JacobiSVD<Eigen::Matrix3d> svd(matrix, Eigen::ComputeFullU | Eigen::ComputeFullV);
  const double sign = (svd.matrixU() * svd.matrixV().transpose()).determinant() < 0.0 ? -1.0 : 1.0;
  return svd.matrixU() * Eigen::Vector3d(1.0, 1.0, sign).asDiagonal() * svd.matrixV().transpose();
}

Eigen::Matrix3d nearestLevelRotation(const Eigen::Matrix3d& matrix) {
  const double cosine = matrix(0, 0) + matrix(1, 1);
  const double sine = matrix(1, 0) - matrix(0, 1);
  const double length = std::hypot(cosine, sine);
  Eigen::Matrix3d level = Eigen::Matrix3d::Identity();
  if (length == 0.0) return level;
  level.topLeftCorner<2, 2>() << cosine / length, -sine / length, sine / length, cosine / length;
  return level;
}

PointRows pointRows(const Eigen::Vector3d& arm, bool levelled) {
  PointRows rows(3, levelled ? 4 : 6);
  if (levelled) {
    rows.col(0) = Eigen::Vector3d(-arm.y(), arm.x(), 0.0);
  } else {
    rows.leftCols<3>() = -crossMatrix(arm);
  }
  rows.rightCols<3>().setIdentity();
  return rows;
}

Eigen::Vector3d turnOf(const StationVector& motion) {
  return motion.size() == 4 ? Eigen::Vector3d(0.0, 0.0, motion(0)) : Eigen::Vector3d(motion.head<3>());
}

Eigen::Vector3d shiftOf(const StationVector& motion) { return motion.tail<3>(); }

Placement moved(const Placement& placement, const StationVector& motion) {
  Placement next;
  const Eigen::Matrix3d turned = rotationBy(turnOf(motion)) * placement.rotation;
  // Products of rotations drift; the nearest rotation to one that is a rotation to rounding doesn't.
  next.rotation = motion.size() == 4 ? nearestLevelRotation(turned) : nearestRotation(turned);
  addExactly(placement, shiftOf(motion), next);
  return next;
}

Pose poseOf(const Survey& survey, std::size_t station, const Placement& placement) {
  const Eigen::Vector3d& middle = survey.stations[station].middle;
  // Held stations and the frame stand at the identity, not near it.
  if (!survey.stations[station].moves()) return {};
  return {placement.rotation, placement.centre + (survey.origin - placement.rotation * middle)};
}

Placement placementOf(const Survey& survey, std::size_t station, const Pose& pose) {
  const Eigen::Vector3d& middle = survey.stations[station].middle;
  return {pose.rotation, pose.rotation * middle + (pose.shift - survey.origin)};
}

}  // namespace tiepoint::workbench::analysis
