// Why a matching named nothing, as far as the points show it. The session doesn't tell.
#pragma once

#include <map>

#include "platform/sdk/od_ge_matrix3d.h"
#include "workbench/values/finding.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// Why the triangles of these groups named nothing. Tolerances in drawing units.
Finding whyNoTriangles(const SessionState& state, const ZOR::reg::GroupIdSet& groups, double sideTolerance,
                       double minSideDifference);

/// Why closeness named nothing. `toCommon` holds the groups that were solved.
Finding reasonNothingClose(const SessionState& state, const std::map<ZOR::reg::GroupId, OdGeMatrix3d>& toCommon,
                           double tolerance);

}  // namespace tiepoint::workbench
