// Why a matching named nothing, as far as the points show it. The session doesn't tell.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/sdk/od_ge_matrix3d.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench::cli {

/// One reason, for programs and for people.
struct MatchReason {
  std::string key;
  std::string text;
};

/// Why the triangles of these groups named nothing. Tolerances in drawing units.
MatchReason whyNoTriangles(const SessionState& state, const ZOR::reg::GroupIdSet& groups, double sideTolerance,
                           double minSideDifference);

/// Why closeness named nothing. `toCommon` holds the groups that were solved.
MatchReason whyNothingClose(const SessionState& state, const std::map<ZOR::reg::GroupId, OdGeMatrix3d>& toCommon,
                            double tolerance);

}  // namespace tiepoint::workbench::cli
