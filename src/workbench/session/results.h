// What a solve found, point by point and group by group.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "workbench/session/solved_transforms.h"
#include "workbench/values/point_spread.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// Lengths in drawing units.
struct PointResult {
  /// From the registered point to its merged target, as the session tells it. A point in use that
  /// the session gives no discrepancy for lies on its target.
  std::optional<double> discrepancy;
  /// From the registered point to the base's own measurement of the target.
  std::optional<double> atBase;
  /// In the common system; nothing for a group without a transformation.
  std::optional<OdGePoint3d> registered;
};

/// A root mean square over points, and the largest of their values.
struct Rms {
  std::size_t count = 0;
  double value = 0.0;
  double largest = 0.0;
};

struct GroupResult {
  std::optional<OdGeMatrix3d> toCommon;
  std::optional<Rms> discrepancies;
  std::optional<Rms> atBase;
};

/// One point far beyond the others.
struct StandOut {
  /// Its place in the state's points.
  std::size_t point = 0;
  /// Its discrepancy divided by the median of all.
  double timesMedian = 0.0;
};

struct Results {
  /// As the state's points, in the same order.
  std::vector<PointResult> points;
  /// As the state's groups, in the same order.
  std::vector<GroupResult> groups;
  std::optional<Rms> discrepancies;
  std::optional<Rms> atBase;
  /// The place of the point with the largest discrepancy.
  std::optional<std::size_t> largest;
  std::optional<StandOut> standOut;
  PointSpread spread;
};

/// To be called for a state that has been solved.
Results describeResults(const SessionState& state, const SolvedTransforms& solved);

}  // namespace tiepoint::workbench
