// One step on the way to names for points that have none.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "records/tables.h"

namespace tiepoint::workbench {

using PointPairs = std::vector<std::pair<ZOR::reg::RefPointId, ZOR::reg::RefPointId>>;

enum class NamingKind {
  /// Points of some groups by equal triangles; no transformation is needed.
  triangles,
  /// Some groups solved together, the others left aside.
  solve,
  /// Points that coincide after the solve before it.
  closeness,
  /// Points take the other name where one target has come to two.
  unite
};

struct NamingStep {
  NamingKind kind = NamingKind::triangles;
  /// Triangles: the groups that are compared; solve: those that are joined. None for the others.
  ZOR::reg::GroupIdSet groups;
  /// Triangles: how far the sides of equal ones may be apart; closeness and unite: how far apart the
  /// points of one target may lie. Drawing units.
  double tolerance = 0.0;
  /// Triangles: how much any two sides of a usable one differ at least. Drawing units.
  double minSideDifference = 0.0;
  /// How many points got a name, or another one.
  std::size_t named = 0;
  /// Unite: a point, and one whose name it takes.
  PointPairs takers = {};
};

}  // namespace tiepoint::workbench
