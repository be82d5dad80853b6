// Stations that no rigid motion can bring together, although their names do.
#pragma once

#include <vector>

#include "workbench/values/finding.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// Each group is held against the one with which it shares the most targets in use. Found are those
/// whose shared targets lie several times as far apart in the one as in the other, which is what two
/// units look like (otherUnit: `value` times, wider in the group of index `count`), and those
/// that fit only as a mirror image, which is what exchanged columns look like (mirrorImages).
std::vector<Finding> mismatches(const SessionState& state);

}  // namespace tiepoint::workbench
