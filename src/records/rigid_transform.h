// A rotation and a translation, from a group's own system to the common one.
#pragma once

#include <array>

#include "platform/sdk/od_ge_point3d.h"

namespace ZOR::reg {

/// Takes a point p of a group to rotation x p + translation in the common system.
struct RigidTransform {
  /// Row after row.
  std::array<double, 9> rotation{1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0};
  /// Drawing units.
  std::array<double, 3> translation{0.0, 0.0, 0.0};
};

/// rotation x p + translation.
inline OdGePoint3d apply(const RigidTransform& transform, const OdGePoint3d& p) {
  const auto& r = transform.rotation;
  const auto& t = transform.translation;
  return {r[0] * p.x + r[1] * p.y + r[2] * p.z + t[0], r[3] * p.x + r[4] * p.y + r[5] * p.z + t[1],
          r[6] * p.x + r[7] * p.y + r[8] * p.z + t[2]};
}

}  // namespace ZOR::reg
