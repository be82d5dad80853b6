// How much worse the next best way of naming a station's measurements fits.
#pragma once

#include <optional>
#include <vector>

#include "workbench/analysis/rigid_fit.h"
#include "workbench/values/adjustment_result.h"

namespace tiepoint::workbench::analysis {

struct NextNaming {
  /// Its sum of squares less that of the given naming.
  double margin = 0.0;
  /// For each pair the one whose `to` its `from` gets.
  std::vector<std::size_t> takenFor;
  /// False when the search was cut off by its limit: another way may fit better still.
  bool complete = true;
};

/// Over all other ways of giving the `to` of the pairs to their `from`, the one with the smallest sum of
/// squares of a rigid (levelled: level) fit. None when it is more than 1,000 above the given way's, or where
/// the given way and every exchange of two have more than 10,000. Of more than 500 pairs exchanges of two alone
/// are compared, and of more than 1,000 nothing: the search is then told as cut off.
std::optional<NextNaming> nextNaming(const std::vector<FitPair>& pairs, bool levelled);

}  // namespace tiepoint::workbench::analysis
