// The drawing SDK's 4x4 matrix: column vectors, translation in the last column.
#pragma once

#include "drawing_sdk_export.h"
#include "platform/sdk/od_ge_point3d.h"

class DRAWING_SDK_EXPORT OdGeMatrix3d {
 public:
  /// The identity.
  OdGeMatrix3d() { setToIdentity(); }

  OdGeMatrix3d& setToIdentity();

  double& operator()(int row, int column) { return entry[row][column]; }
  double operator()(int row, int column) const { return entry[row][column]; }

  /// The inverse; a singular matrix gives entries that aren't finite.
  OdGeMatrix3d inverse() const;

  friend DRAWING_SDK_EXPORT OdGeMatrix3d operator*(const OdGeMatrix3d& a, const OdGeMatrix3d& b);
  friend DRAWING_SDK_EXPORT bool operator==(const OdGeMatrix3d& a, const OdGeMatrix3d& b);
  friend bool operator!=(const OdGeMatrix3d& a, const OdGeMatrix3d& b) { return !(a == b); }

  double entry[4][4];
};

inline OdGePoint3d& OdGePoint3d::p_transform(const OdGeMatrix3d& m) {
  const OdGePoint3d p = *this;
  x = m(0, 0) * p.x + m(0, 1) * p.y + m(0, 2) * p.z + m(0, 3);
  y = m(1, 0) * p.x + m(1, 1) * p.y + m(1, 2) * p.z + m(1, 3);
  z = m(2, 0) * p.x + m(2, 1) * p.y + m(2, 2) * p.z + m(2, 3);
  return *this;
}
