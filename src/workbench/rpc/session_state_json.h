// What a session holds, as JSON.
#pragma once

#include "workbench/rpc/json_types.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// An object of all of it; names are text, whatever a session calls them.
OrderedJson toJson(const SessionState& state);

}  // namespace tiepoint::workbench
