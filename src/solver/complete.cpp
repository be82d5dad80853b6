#include "solver/complete.h"

#include <set>

#include "solver/finish_solve.h"
#include "solver/model_to_base.h"
#include "solver/solve_input.h"
#include "solver/solve_tables.h"

namespace ZOR::reg {

namespace {

SolveTables tablesWithout(GroupId referenceGroup, const RefPointList& workingPoints) {
  std::set<CommonPointId> names;
  std::set<GroupId> groups;
  for (const RefPoint& point : workingPoints) {
    if (point.groupId == referenceGroup) {
      names.insert(point.commonId);
    } else {
      groups.insert(point.groupId);
    }
  }
  return buildSolveTables(workingPoints, {groups.begin(), groups.end()}, {names.begin(), names.end()});
}

SolveModel modelOf(GroupId referenceGroup, const RefPointList& workingPoints, const SolveTables& tables) {
  SolveModel model{PointMatrix::Zero(tables.commonRows(), 3), Eigen::VectorXd::Zero(tables.commonRows())};
  for (const RefPoint& point : workingPoints) {
    if (point.groupId != referenceGroup) continue;
    const auto row = static_cast<Eigen::Index>(*rowOf(tables.commonIndex, point.commonId));
    model.positions.row(row) << point.position.x, point.position.y, point.position.z;
    model.weights[row] = point.weight;
  }
  return model;
}

}  // namespace

void solveComplete(const RefPointList& workingPoints, GroupId referenceGroup, const RefPointList& sessionPoints,
                   SolveResults& results, PointDiscrepancies& pointDiscrepancies) {
  const SolveTables tables = tablesWithout(referenceGroup, workingPoints);
  SolveModel model = modelOf(referenceGroup, workingPoints, tables);
  results.registrationMethod = methodComplete;

  const std::optional<GroupId> baseGroup = baseGroupOf(workingPoints);
  if (baseGroup && *baseGroup != referenceGroup) {
    moveModelToBase(tables.groups[*rowOf(tables.groupIndex, *baseGroup)], model.positions);
    results.registrationMethod = methodCompleteWithBase;
  }
  results.solverTable.reserve(tables.groupIndex.size());
  finishSolve(model, tables, {SelectionTest::byLength, {}, std::nullopt}, sessionPoints, results.solverTable, results,
              pointDiscrepancies);
}

}  // namespace ZOR::reg
