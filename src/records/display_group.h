// What is drawn for one group.
#pragma once

#include <cstdint>
#include <list>
#include <map>

#include "platform/sdk/od_ge_point3d.h"
#include "platform/sdk/od_string.h"
#include "records/ids.h"

namespace ZOR::reg {

/// One marker.
struct DisplayPoint {
  OdGePoint3d position;
  OdString name;
  RefPointId id = 0;
};

struct DisplayGroup {
  OdString name;
  /// Index of the drawing's 256-colour palette.
  std::uint16_t color = 0;
  std::list<DisplayPoint> points;
};

using DisplayGroups = std::map<GroupId, DisplayGroup>;

}  // namespace ZOR::reg
