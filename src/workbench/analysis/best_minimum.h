// The least of the minima that several starts lead to.
#pragma once

#include <optional>

#include "workbench/analysis/minimise.h"
#include "workbench/values/adjustment_options.h"
#include "workbench/values/adjustment_result.h"

namespace tiepoint::workbench::analysis {

struct BestMinimum {
  Minimum minimum;
  std::optional<Certificate> certificate;
  /// Not the first start led here.
  bool otherStartWon = false;
};

/// From the network's starts; where the certificate leaves room for a much better solution and other starts
/// are wanted, also from the softest eigenvectors of the whole survey and from the starts of the options.
BestMinimum bestMinimum(const Network& network, const Survey& survey, const AdjustmentOptions& options,
                        NormalEquations& equations, SparseFactor& factor);

}  // namespace tiepoint::workbench::analysis
