// One least-squares adjustment of all poses and targets, and what can be said of its result.
//
// Station i measured target k at p with variance sigma^2 / weight in each coordinate. The residual is
// v = R p + t - x, measured less adjusted; of a control target c - x with its covariance. The sum of squares
// v' P v is least over all poses and targets. A station's unknowns are (omega, tau): a point x that it
// carries moves by omega x (x - centre) + tau, where the centre is the mean of its registered points in use.
#pragma once

#include "workbench/values/adjustment_network.h"
#include "workbench/values/adjustment_options.h"
#include "workbench/values/adjustment_result.h"

namespace tiepoint::workbench::analysis {

/// The same network gives the same doubles on every run. Throws std::invalid_argument as `requireSound`
/// does, on levels outside 0 to 1, and on indices in the options that there aren't.
Adjustment adjust(const Network& network, const AdjustmentOptions& options = {});

}  // namespace tiepoint::workbench::analysis
