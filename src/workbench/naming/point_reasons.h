// What in the points themselves hinders a search for names.
#pragma once

#include <vector>

#include "workbench/geometry/station_shapes.h"
#include "workbench/values/finding.h"
#include "workbench/values/naming_limits.h"

namespace tiepoint::workbench {

/// Groups with a coordinate that isn't a finite number: such a point counts as close to every other, so
/// that no two targets can be told apart.
std::vector<Finding> notFiniteReasons(const SessionState& state);

/// Stations with two points nearer to one another than `side`, the widest tolerance for the sides of
/// equal triangles.
std::vector<Finding> twinReasons(const SessionState& state, const Stations& stations, double side);

/// Stations that span so little, or so much, that the limits hardly are of their unit.
std::vector<Finding> spanReasons(const SessionState& state, const Stations& stations, const NamingLimits& limits);

}  // namespace tiepoint::workbench
