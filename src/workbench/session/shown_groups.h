// What the module shows of a session in the active drawing.
#pragma once

#include <vector>

#include "platform/sdk/od_gi_drawable.h"
#include "workbench/host/workbench.h"
#include "workbench/values/session_state.h"
#include "workbench/values/shown_group.h"

namespace tiepoint::workbench {

/// All that the module has in the active drawing's views.
std::vector<const OdGiDrawable*> drawablesOf(Workbench& workbench);

/// The groups that the module draws, with their colours: it draws those that are shown and have points,
/// in ascending id, three lines a point. `hidden` are those that the session was told to hide.
ShownGroups shownGroups(Workbench& workbench, const SessionState& state, const ZOR::reg::GroupIdSet& hidden);

/// Before a session begins: markers of many points are offered to the module smaller than it would draw
/// them, unless the profile says how large they are. `area` is the picture's, in pixels.
void scaleMarkers(Workbench& workbench, double area);

}  // namespace tiepoint::workbench
