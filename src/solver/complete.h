// Complete registration: every group onto one that stays as it is.
#pragma once

#include "records/tables.h"
#include "solver/solve_results.h"

namespace ZOR::reg {

/// Takes the reference group's points as the model and fits every other group onto it in one step.
/// Points whose name the reference group lacks are left out. With a base group that isn't the
/// reference the model is moved onto the base first. The reference group gets no transformation.
///
/// `pointDiscrepancies` is added to, not emptied.
void solveComplete(const RefPointList& workingPoints, GroupId referenceGroup, const RefPointList& sessionPoints,
                   SolveResults& results, PointDiscrepancies& pointDiscrepancies);

}  // namespace ZOR::reg
