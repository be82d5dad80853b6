// From the session's points to the list that a solve works on.
#pragma once

#include <optional>

#include "records/tables.h"

namespace ZOR::reg {

/// Puts the active points into `workingPoints`, in list order. Several base groups become one,
/// under the smallest of their ids: then the non-base points come first, the base points whose
/// name occurs once in the base second, and last, in the order of their names' ids, the weighted
/// means of the base points that share a name. A mean bears the flags and the id of its first
/// point and the mean of the weights; the distance of each of its points from it goes to
/// `pointDiscrepancies`. Both outputs are emptied first.
void prepareSolvePoints(const RefPointList& sessionPoints, RefPointList& workingPoints,
                        PointDiscrepancies& pointDiscrepancies);

/// The group of the first base point; prepareSolvePoints leaves at most one base group.
std::optional<GroupId> baseGroupOf(const RefPointList& workingPoints);

/// The ids of all base points.
RefPointIdSet basePointsOf(const RefPointList& workingPoints);

}  // namespace ZOR::reg
