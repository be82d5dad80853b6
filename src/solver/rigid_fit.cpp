#include "solver/rigid_fit.h"

#include <Eigen/LU>
#include <Eigen/SVD>
#include <limits>

namespace ZOR::reg {

namespace {

/// Two points leave the rotation about their line open.
constexpr Eigen::Index minFitPoints = 3;

// Plain scalars stay in registers, where a matrix would be written and read again at each row. They also add in the
// order of the rows wherever the points lie in memory.

Eigen::Vector3d centroidOf(const PointMatrix& points) {
  double x = 0.0, y = 0.0, z = 0.0;
  for (Eigen::Index i = 0; i < points.rows(); ++i) {
    x += points(i, 0);
    y += points(i, 1);
    z += points(i, 2);
  }
  return Eigen::Vector3d(x, y, z) / static_cast<double>(points.rows());
}

/// Centres each row as it passes, so that no centred copy is made.
Eigen::Matrix3d crossCovariance(const PointMatrix& source, const Eigen::Vector3d& sourceCentroid,
                                const PointMatrix& target, const Eigen::Vector3d& targetCentroid) {
  double xx = 0.0, xy = 0.0, xz = 0.0;
  double yx = 0.0, yy = 0.0, yz = 0.0;
  double zx = 0.0, zy = 0.0, zz = 0.0;
  for (Eigen::Index i = 0; i < source.rows(); ++i) {
    const double sx = source(i, 0) - sourceCentroid.x(), tx = target(i, 0) - targetCentroid.x();
    const double sy = source(i, 1) - sourceCentroid.y(), ty = target(i, 1) - targetCentroid.y();
    const double sz = source(i, 2) - sourceCentroid.z(), tz = target(i, 2) - targetCentroid.z();
    xx += sx * tx, xy += sx * ty, xz += sx * tz;
    yx += sy * tx, yy += sy * ty, yz += sy * tz;
    zx += sz * tx, zy += sz * ty, zz += sz * tz;
  }
  Eigen::Matrix3d sum;
  sum << xx, xy, xz, yx, yy, yz, zx, zy, zz;
  return sum / static_cast<double>(source.rows() - 1);
}

/// The rotation that turns the source's directions onto the target's. Where the covariance isn't finite no rotation
/// is better than another, and the answer says so: it is not-a-number throughout.
Eigen::Matrix3d rotationFrom(const Eigen::Matrix3d& covariance) {
  const Eigen::JacobiSVD<Eigen::Matrix3d> svd(covariance, Eigen::ComputeFullU | Eigen::ComputeFullV);
  if (svd.info() != Eigen::Success) return Eigen::Matrix3d::Constant(std::numeric_limits<double>::quiet_NaN());

  const Eigen::Matrix3d& u = svd.matrixU();
  const Eigen::Matrix3d& v = svd.matrixV();
  // The weakest direction is the one to flip, so that a reflection never comes out.
  const double factor = (v * u.transpose()).determinant() > 0.0 ? 1.0 : -1.0;
  return v * Eigen::Vector3d(1.0, 1.0, factor).asDiagonal() * u.transpose();
}

}  // namespace

void fitRigidTransform(const PointMatrix& target, const PointMatrix& source, std::array<double, 9>& rotation,
                       std::array<double, 3>& translation) {
  const RigidTransform identity;
  rotation = identity.rotation;
  translation = identity.translation;
  if (target.rows() != source.rows() || target.rows() < minFitPoints) return;

  const Eigen::Vector3d targetCentroid = centroidOf(target);
  const Eigen::Vector3d sourceCentroid = centroidOf(source);
  const Eigen::Matrix3d turn = rotationFrom(crossCovariance(source, sourceCentroid, target, targetCentroid));

  Eigen::Map<Eigen::Matrix<double, 3, 3, Eigen::RowMajor>>(rotation.data()) = turn;
  Eigen::Map<Eigen::Vector3d>(translation.data()) = targetCentroid - turn * sourceCentroid;
}

RigidTransform fitRigidTransform(const PointMatrix& target, const PointMatrix& source) {
  RigidTransform sourceToTarget;
  fitRigidTransform(target, source, sourceToTarget.rotation, sourceToTarget.translation);
  return sourceToTarget;
}

}  // namespace ZOR::reg
