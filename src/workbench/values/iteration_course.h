// How the loop of the iterative method ended.
#pragma once

#include <cstdint>

namespace tiepoint::workbench {

/// Lengths in drawing units, with the six digits of the report.
struct IterationCourse {
  /// Counted from 0: a run that its limit ended shows the limit.
  std::uint64_t iterations = 0;
  std::uint64_t limit = 0;
  /// How far the farthest merged target moved in the last pass.
  double movement = 0.0;
  double criterion = 0.0;

  /// The last pass moved no target by more than the criterion. A movement that is no number doesn't
  /// meet it.
  bool converged() const { return movement <= criterion; }
};

}  // namespace tiepoint::workbench
