// What is asked of a network before it can be adjusted.
#pragma once

#include "workbench/values/adjustment_network.h"

namespace tiepoint::workbench::analysis {

/// Throws std::invalid_argument on an index out of range, on a number that isn't finite, on a sigma or
/// weight that isn't positive, and on a covariance that isn't symmetric and positive definite.
void requireSound(const Network& network);

}  // namespace tiepoint::workbench::analysis
