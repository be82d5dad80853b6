// The points in use of one session in another of the same drawing.
#pragma once

#include "workbench/session/driven_session.h"

namespace tiepoint::workbench {

/// Into a session that is new: the points that are in use in `state`, by their names and weights there, and
/// no others. Without a base.
void takePointsInUse(DrivenSession& session, const SessionState& state);

/// The groups of base points in use.
ZOR::reg::GroupIdSet basesInUse(const SessionState& state);

}  // namespace tiepoint::workbench
