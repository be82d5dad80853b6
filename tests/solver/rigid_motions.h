// Rigid motions and scattered points for the laws.
#pragma once

#include <Eigen/Geometry>

#include "records/rigid_transform.h"
#include "solver/arbitrary.h"
#include "solver/rigid_fit.h"

namespace tiepoint::testing {

/// A whole number of thousandths within +-`bound`.
inline double arbitraryCoordinate(double bound) {
  const auto limit = static_cast<int>(bound * 1000.0);
  return arbitraryBetween(-limit, limit) / 1000.0;
}

inline Eigen::Vector3d arbitraryVector(double bound) {
  const double x = arbitraryCoordinate(bound);
  const double y = arbitraryCoordinate(bound);
  return {x, y, arbitraryCoordinate(bound)};
}

inline Eigen::Matrix3d arbitraryRotation() {
  Eigen::Vector4d q;
  do {
    for (int i = 0; i < 4; ++i) q[i] = arbitraryBetween(-1000, 1000);
  } while (q.norm() < 1.0);
  return Eigen::Quaterniond(q).normalized().toRotationMatrix();
}

inline ZOR::reg::RigidTransform asTransform(const Eigen::Matrix3d& rotation, const Eigen::Vector3d& translation) {
  ZOR::reg::RigidTransform transform;
  Eigen::Map<Eigen::Matrix<double, 3, 3, Eigen::RowMajor>>(transform.rotation.data()) = rotation;
  Eigen::Map<Eigen::Vector3d>(transform.translation.data()) = translation;
  return transform;
}

inline ZOR::reg::RigidTransform arbitraryMotion(double translationBound) {
  return asTransform(arbitraryRotation(), arbitraryVector(translationBound));
}

inline Eigen::Matrix3d rotationOf(const ZOR::reg::RigidTransform& transform) {
  return Eigen::Map<const Eigen::Matrix<double, 3, 3, Eigen::RowMajor>>(transform.rotation.data());
}

inline ZOR::reg::PointMatrix moved(const ZOR::reg::PointMatrix& points, const ZOR::reg::RigidTransform& motion) {
  ZOR::reg::PointMatrix result(points.rows(), 3);
  for (Eigen::Index row = 0; row < points.rows(); ++row) {
    const OdGePoint3d p = apply(motion, {points(row, 0), points(row, 1), points(row, 2)});
    result.row(row) << p.x, p.y, p.z;
  }
  return result;
}

/// How far the rotation is from a proper one: the largest entry of R^T R - 1, or det - 1.
inline double improperness(const Eigen::Matrix3d& rotation) {
  const double skew = (rotation.transpose() * rotation - Eigen::Matrix3d::Identity()).cwiseAbs().maxCoeff();
  return std::max(skew, std::abs(rotation.determinant() - 1.0));
}

}  // namespace tiepoint::testing
