// What the solver accepts silently although the result means little.
#pragma once

#include <vector>

#include "workbench/values/finding.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// Throws Refused (notFinite) when a point in use has a coordinate that isn't a finite number: no
/// transformation can come of it.
void requireFiniteCoordinates(const SessionState& state);

/// Targets that stand more than once in a group, groups whose points in use lie on one line, as the
/// rotation about it is then free, and weights outside 0 to 1; in that order.
std::vector<Finding> groupTroubles(const SessionState& state);

}  // namespace tiepoint::workbench
