// Targets that came to two names: one in the stations that were joined first, another in those that
// brought it with them.
#pragma once

#include "workbench/geometry/target_field.h"

namespace tiepoint::workbench {

/// For each point of these groups whose automatic name gives way to another one of the same target: that
/// point, and one whose name it takes. A name from a file stays, and of two automatic ones the older.
///
/// Two names are of one target when each point of one lies at most `reach` (drawing units) from each
/// point of the other. Two that a group has both are two targets, and where the files have two names none gives way.
/// Each name is taken by one other at most; what is left is for the next call.
PointPairs doubledNames(const SessionState& state, const ZOR::reg::GroupIdSet& groups,
                        const std::map<ZOR::reg::GroupId, OdGeMatrix3d>& toCommon, double reach);

}  // namespace tiepoint::workbench
