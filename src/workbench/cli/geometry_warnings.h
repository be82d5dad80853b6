// What the solver takes without a word although the result means little.
#pragma once

#include "workbench/cli/output.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench::cli {

/// Throws CommandError(refused) when a point in use has a coordinate that isn't a finite number: no
/// transformation can come of it.
void requireFiniteCoordinates(const SessionState& state);

/// Warns of groups whose points in use lie on one line, as the rotation about it is then free, of
/// weights outside 0 to 1, and of targets that stand more than once in a group.
void warnOfGeometry(const SessionState& state, Warnings& warnings);

}  // namespace tiepoint::workbench::cli
