// From the session's points to the list that a solve works on.
#pragma once

#include "records/tables.h"

namespace ZOR::reg {

/// Puts the active points into `workingPoints`: the non-base points first, then the base points.
/// Several base groups become one, under the smallest of their ids: base points of one name merge
/// to their weighted mean, and the distance of each from it goes to `pointDiscrepancies`. Both
/// outputs are emptied first.
void prepareSolvePoints(const RefPointList& sessionPoints, RefPointList& workingPoints,
                        PointDiscrepancies& pointDiscrepancies);

}  // namespace ZOR::reg
