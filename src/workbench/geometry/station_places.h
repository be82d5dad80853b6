// Where an instrument stood.
#pragma once

#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// The groups whose origin lies among their points: an instrument is the origin of its own system, and
/// stands among its targets. An origin far outside of them, as in a system of a whole country, tells nothing
/// of where it stood.
ZOR::reg::GroupIdSet groupsAroundTheirOrigin(const SessionState& state);

}  // namespace tiepoint::workbench
