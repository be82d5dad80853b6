// Stations that no rigid motion can bring together, although their names do.
#pragma once

#include "workbench/cli/output.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench::cli {

/// Each group is held against the one with which it shares the most targets in use. Warns where these
/// lie several times as far apart in the one as in the other, which is what two units look like, and
/// where they fit only as a mirror image, which is what exchanged columns look like.
void warnOfMismatches(const SessionState& state, Warnings& warnings);

}  // namespace tiepoint::workbench::cli
