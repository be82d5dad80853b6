// Why a point takes no part.
#pragma once

#include <optional>
#include <vector>

#include "workbench/values/point_reason.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// For each point of the state, in its order, why it is out; nothing for an active one. The session
/// says only that a point is out: the reason follows from which other points are eligible and in.
std::vector<std::optional<Reason>> reasonsOut(const SessionState& state);

}  // namespace tiepoint::workbench
