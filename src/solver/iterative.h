// Iterative registration: all groups alike, in a loop of alternating steps.
#pragma once

#include <cstdint>
#include <optional>

#include "records/tables.h"
#include "solver/solve_results.h"

namespace ZOR::reg {

/// When the loop ends.
struct IterationLimits {
  /// The loop makes one pass more at the most.
  std::uint64_t maxIterations = 0;
  /// The loop ends when no row of the model has moved farther in a pass; drawing units.
  double convergenceCriteria = 0.0;
};

/// How the loop ended.
struct IterationEnd {
  /// Passes before the last one.
  std::uint64_t iterations = 0;
  /// How far the model moved in the last pass; drawing units. No bound on the residuals.
  double movement = 0.0;
};

/// A generalised Procrustes alignment (J. C. Gower, 1975), rigid and weighted: in each pass the
/// model is the weighted mean of where the groups put each target, and then each group is moved
/// rigidly onto the model. Targets of a base group are pinned where the base has them. Groups that
/// share nothing with others are accepted, and fit themselves.
///
/// With fewer than two groups nothing is changed, and nothing returned. `workingPoints` comes from
/// prepareSolvePoints; `sessionPoints` gives the inactive named points their place among the common points.
std::optional<IterationEnd> solveIterative(const RefPointList& workingPoints, const IterationLimits& limits,
                                           const RefPointList& sessionPoints, SolveResults& results,
                                           PointDiscrepancies& pointDiscrepancies);

}  // namespace ZOR::reg
