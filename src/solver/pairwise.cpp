#include "solver/pairwise.h"

#include "solver/finish_solve.h"
#include "solver/fused_points.h"
#include "solver/model_to_base.h"
#include "solver/solve_input.h"
#include "solver/solve_tables.h"

namespace ZOR::reg {

namespace {

/// Replays the fusions; the last survivor is the model.
SolveModel fuseGroups(const SolveTables& tables, const GroupMerges& merges) {
  std::map<GroupId, FusedPoints> fused;
  for (std::size_t g = 0; g < tables.groups.size(); ++g) {
    fused.emplace_hint(fused.end(), tables.groupIndex[g], FusedPoints(tables.groups[g]));
  }
  for (const GroupMerge& merge : merges) {
    fused.at(merge.survivor).absorb(fused.at(merge.absorbed));
    fused.erase(merge.absorbed);
  }
  SolveModel model{PointMatrix::Zero(tables.commonRows(), 3), Eigen::VectorXd::Zero(tables.commonRows())};
  fused.at(merges.back().survivor).copyTo(model.positions, model.weights);
  return model;
}

}  // namespace

void solvePairwise(const RefPointList& workingPoints, const GroupMerges& merges, const RefPointList& sessionPoints,
                   SolveResults& results, PointDiscrepancies& pointDiscrepancies) {
  const SolveTables tables = buildSolveTables(workingPoints);
  SolveModel model = fuseGroups(tables, merges);
  results.registrationMethod = methodPairwise;

  const std::optional<GroupId> baseGroup = baseGroupOf(workingPoints);
  if (baseGroup) {
    moveModelToBase(tables.groups[*rowOf(tables.groupIndex, *baseGroup)], model.positions);
    results.registrationMethod = methodPairwiseWithBase;
  }
  results.solverTable.reserve(tables.groupIndex.size());
  finishSolve(model, tables, {SelectionTest::byWeight, basePointsOf(workingPoints), baseGroup}, sessionPoints,
              results.solverTable, results, pointDiscrepancies);
}

}  // namespace ZOR::reg
