// Pairwise registration: fusions of two groups at a time.
#pragma once

#include "solver/group_clusters.h"
#include "solver/solve_results.h"

namespace ZOR::reg {

/// Replays the fusions: each absorbed group is fitted onto its survivor over the names that both
/// have with weight, and the two are blended. The last survivor is the model that every group is
/// then fitted to; with a base the model is moved onto it first.
///
/// `workingPoints` comes from prepareSolvePoints, `merges` from findGroupClusters and isn't empty;
/// `sessionPoints` gives the inactive named points their place among the common points.
void solvePairwise(const RefPointList& workingPoints, const GroupMerges& merges, const RefPointList& sessionPoints,
                   SolveResults& results, PointDiscrepancies& pointDiscrepancies);

}  // namespace ZOR::reg
