// A group of points as a view shows it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

#include "records/tables.h"

namespace tiepoint::workbench {

struct ShownGroup {
  /// Of the drawing's palette.
  std::uint16_t color = 7;
  std::size_t points = 0;
};

/// Those that are shown.
using ShownGroups = std::map<ZOR::reg::GroupId, ShownGroup>;

}  // namespace tiepoint::workbench
