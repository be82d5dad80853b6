// Measured points in memory.
#pragma once

#include <string>
#include <vector>

#include "platform/sdk/od_ge_point3d.h"

namespace tiepoint::workbench {

struct MeasuredPoint {
  /// UTF-8; empty, or "?", for a point without a name.
  std::string name;
  /// In the station's system, drawing units.
  OdGePoint3d position;
  /// 0 to 1.
  double weight = 1.0;
};

/// What one station saw; it becomes one group.
struct StationPoints {
  /// UTF-8.
  std::string name;
  std::vector<MeasuredPoint> points;
};

}  // namespace tiepoint::workbench
