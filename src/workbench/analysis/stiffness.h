// How firmly the measurements hold the stations together, and the motion that they oppose least.
#pragma once

#include <optional>

#include "workbench/analysis/solution.h"
#include "workbench/values/adjustment_result.h"

namespace tiepoint::workbench::analysis {

struct Softness {
  Stiffness network;
  /// Where the stiffness is no more than rounding; not where it is small by the length of a chain alone.
  std::optional<OpenMotion> open;
};

/// The smallest eigenvalue of the normal matrix with the targets eliminated and all columns free of units:
/// rotations divided by the station's lever, all columns by the root of the station's information. By
/// inverse iteration with the solution's factor, or with one of its own where that one is none.
Softness softnessOf(const Solution& solution);

}  // namespace tiepoint::workbench::analysis
