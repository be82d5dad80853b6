#include "files/transposed_matrix.h"

#include <Eigen/Core>
#include <Eigen/Geometry>

namespace ZOR::reg {

std::array<std::array<double, 4>, 4> transposedMatrix(const RigidTransform& transform) {
  const auto& r = transform.rotation;
  const auto& t = transform.translation;
  return {{{r[0], r[3], r[6], t[0]}, {r[1], r[4], r[7], t[1]}, {r[2], r[5], r[8], t[2]}, {0.0, 0.0, 0.0, 1.0}}};
}

std::array<double, 3> zxzAngles(const RigidTransform& transform) {
  // Column-major over the row-major values: the transpose.
  const Eigen::Map<const Eigen::Matrix3d> transposed(transform.rotation.data());
  const Eigen::Vector3d angles = transposed.eulerAngles(2, 0, 2);
  return {angles[0], angles[1], angles[2]};
}

}  // namespace ZOR::reg
