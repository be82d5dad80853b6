// The search for the least sum of squares: Gauss-Newton steps, damped only where one fails.
#pragma once

#include "workbench/analysis/elimination.h"
#include "workbench/analysis/normal_equations.h"
#include "workbench/analysis/sparse_factor.h"

namespace tiepoint::workbench::analysis {

struct Minimum {
  Placements placements;
  Elimination elimination;
  int iterations = 0;
  /// No step above 1e-12 of the survey's extent, or above what rounding makes of one in a soft network; and
  /// the sum no longer falls.
  bool converged = false;
};

/// From these placements down to the next local minimum. Levelled stations must stand level, held stations
/// and the frame where they belong. `equations` and `factor` are of this survey; what they hold afterwards
/// is of no use.
Minimum minimise(const Survey& survey, Placements start, NormalEquations& equations, SparseFactor& factor);

}  // namespace tiepoint::workbench::analysis
