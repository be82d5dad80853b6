// One target measured in one group.
#pragma once

#include "platform/sdk/od_ge_point3d.h"
#include "records/ids.h"

namespace ZOR::reg {

/// The name of a point that isn't identified yet.
inline constexpr const char* unidentifiedName = "?";

struct RefPoint {
  RefPointId id = 0;
  GroupId groupId = 0;
  CommonPointId commonId = 0;
  /// In the group's own system, drawing units; never changed by a solve.
  OdGePoint3d position;
  /// 0.0 to 1.0 when set by the user, anything when read; 0.0 takes the point out of the solve.
  double weight = 0.0;
  /// The user's switch.
  bool included = true;
  /// Derived: the point takes part in the next solve.
  bool active = true;
  /// The point's group is a base group; the same for all points of a group.
  bool inBase = false;
  /// The name is anything but "?".
  bool named = false;
  /// The name was given by automatic naming.
  bool autoNamed = false;
};

}  // namespace ZOR::reg
