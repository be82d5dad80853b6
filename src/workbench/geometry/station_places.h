// Where an instrument stood.
#pragma once

#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// An instrument is the origin of its own system, and stands among its targets. An origin far outside of
/// them, as in a system of a whole country, tells nothing of where it stood.
bool originIsAmongItsPoints(const SessionState& state, ZOR::reg::GroupId group);

}  // namespace tiepoint::workbench
