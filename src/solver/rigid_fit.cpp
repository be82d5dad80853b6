#include "solver/rigid_fit.h"

#include <Eigen/LU>
#include <Eigen/SVD>
#include <limits>

namespace ZOR::reg {

namespace {

/// Two points leave the rotation about their line open.
constexpr Eigen::Index minFitPoints = 3;

/// The vector kernels may add in any order; a plain loop gives the same doubles wherever the points lie in memory.
Eigen::Vector3d centroidOf(const PointMatrix& points) {
  Eigen::Vector3d sum = Eigen::Vector3d::Zero();
  for (Eigen::Index i = 0; i < points.rows(); ++i) sum += points.row(i).transpose();
  return sum / static_cast<double>(points.rows());
}

/// Centres each row as it passes, so that no centred copy is made.
Eigen::Matrix3d crossCovariance(const PointMatrix& source, const Eigen::Vector3d& sourceCentroid,
                                const PointMatrix& target, const Eigen::Vector3d& targetCentroid) {
  Eigen::Matrix3d sum = Eigen::Matrix3d::Zero();
  for (Eigen::Index i = 0; i < source.rows(); ++i) {
    const Eigen::Vector3d sourceCentred = source.row(i).transpose() - sourceCentroid;
    const Eigen::Vector3d targetCentred = target.row(i).transpose() - targetCentroid;
    sum += sourceCentred * targetCentred.transpose();
  }
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
