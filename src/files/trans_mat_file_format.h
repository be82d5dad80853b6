// Text formats of a transformation.
#pragma once

#include <string>

#include "records/rigid_transform.h"

namespace ZOR::reg {

/// One format of matrix files.
class iTransMatFileFormat {
 public:
  /// The text that names the format in a dialog.
  virtual std::string description() const = 0;
  /// The whole text of a file for that transformation.
  virtual std::string formatMatrix(const RigidTransform& transform) const = 0;
  virtual ~iTransMatFileFormat() = default;
};

}  // namespace ZOR::reg
