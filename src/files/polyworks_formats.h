// The two matrix formats of PolyWorks.
//
// Both write [m | t] where m is the transpose of the rotation: they read its nine values by
// columns. The translation is left as it is.
#pragma once

#include "files/trans_mat_file_format.h"

namespace ZOR::reg {

/// Three Z-X-Z angles in radians, for all their labels ROT_X, ROT_Y and ROT_Z, and the shift.
class PW_TRF_TransMatFileFormat : public iTransMatFileFormat {
 public:
  std::string description() const override;
  std::string formatMatrix(const RigidTransform& transform) const override;
};

/// A 4x4 matrix, row after row.
class PW_4x4_TransMatFileFormat : public iTransMatFileFormat {
 public:
  std::string description() const override;
  std::string formatMatrix(const RigidTransform& transform) const override;
};

}  // namespace ZOR::reg
