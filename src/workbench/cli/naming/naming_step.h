// One step on the way to names for points that have none.
#pragma once

#include <cstddef>

#include "records/tables.h"

namespace tiepoint::workbench::cli {

enum class NamingKind {
  /// Points of some groups by equal triangles; no transformation is needed.
  triangles,
  /// Some groups solved together, the others left aside.
  solve,
  /// Points that the solve before it has put on one spot.
  closeness
};

struct NamingStep {
  NamingKind kind = NamingKind::triangles;
  /// Triangles: the groups that are compared; solve: those that are joined. None for closeness.
  ZOR::reg::GroupIdSet groups;
  /// Triangles: how far the sides of equal ones may be apart; closeness: how far apart the points of
  /// one spot may lie. Drawing units.
  double tolerance = 0.0;
  /// Triangles: how much any two sides of a usable one differ at least. Drawing units.
  double minSideDifference = 0.0;
  /// How many points got a name, or another one.
  std::size_t named = 0;
};

}  // namespace tiepoint::workbench::cli
