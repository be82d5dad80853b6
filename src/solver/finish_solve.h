// From a model to a transformation for each group and a discrepancy for each point.
#pragma once

#include <optional>
#include <vector>

#include "solver/solve_results.h"
#include "solver/solve_tables.h"

namespace ZOR::reg {

/// What a method arrives at: for each row of the common index the target's place in the common
/// system, and its weight.
struct SolveModel {
  PointMatrix positions;
  Eigen::VectorXd weights;
};

/// Which of a group's points are fitted to the model.
enum class SelectionTest { byWeight, byLength };

/// What the methods differ in at their end.
struct SolveEnding {
  SelectionTest test = SelectionTest::byWeight;
  /// Points that get no discrepancy.
  RefPointIdSet excludedIds;
  /// Gets no entry among the groups' transformations.
  std::optional<GroupId> baseGroup;
};

/// Fits every group's measured points onto the model, so that a group's transformation takes its
/// own coordinates straight to the common system, whatever path the method took.
///
/// One record for each group is appended to `records`; the groups' transformations are then read
/// from its first records, so that a vector which isn't emptied between two solves keeps giving
/// the first one's. Named session points that take no part in the solve, though their group does,
/// go to the common points by the same records.
void finishSolve(const SolveModel& model, const SolveTables& tables, const SolveEnding& ending,
                 const RefPointList& sessionPoints, std::vector<RigidTransform>& records, SolveResults& results,
                 PointDiscrepancies& pointDiscrepancies);

}  // namespace ZOR::reg
