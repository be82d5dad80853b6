// Merged targets that a session doesn't tell.
//
// A solve stores the merged targets by name, and then each point that is out of a registered group under its
// own name, over the merged target of that name. After an exclusion that target is the very one to look at.
#pragma once

#include <vector>

#include "workbench/host/workbench.h"
#include "workbench/values/registration.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// A point that is out stands in the place of a merged target. To be asked of a state that has been solved.
bool hidesTargets(const SessionState& state);

/// The merged targets of the points in use: those that a session of these points alone comes to by the same
/// solve. It takes as long as the solve, and changes nothing in the drawing or the session. Empty when that
/// session can't be solved.
std::vector<MergedTarget> targetsInUse(Workbench& workbench, const SessionState& state, RegistrationMethod method);

}  // namespace tiepoint::workbench
