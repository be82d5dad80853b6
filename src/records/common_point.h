// One target, merged from all groups that saw it.
#pragma once

#include "platform/sdk/od_ge_point3d.h"

namespace ZOR::reg {

struct CommonPoint {
  /// In the common system, drawing units.
  OdGePoint3d position;
  double weight = 0.0;
};

}  // namespace ZOR::reg
