// The groups' motions as texts for other programs.
#pragma once

#include <optional>
#include <string>

#include "workbench/session/results.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench::cli {

/// From the group's system to the common one: the identity for a base, nothing for a group that
/// isn't registered. `place` is the group's in the state and the results.
std::optional<OdGeMatrix3d> motionOf(const SessionState& state, const Results& results, std::size_t place);

/// Four lines of four numbers, row by row, for column vectors, the translation in the last column;
/// 17 significant digits and nothing else, since readers of bare matrices stumble over comments.
std::string plainMatrixText(const OdGeMatrix3d& motion);

/// What is said of a registration beside its motions.
struct TransformsHead {
  /// "pairwise" or "iterative".
  std::string method;
  /// "m", "mm" or empty when it isn't known.
  std::string unit;
};

/// One JSON object: the convention in words, and every group's rotation, translation, quaternion and
/// points with their residuals.
std::string transformsJson(const TransformsHead& head, const SessionState& state, const Results& results);

}  // namespace tiepoint::workbench::cli
