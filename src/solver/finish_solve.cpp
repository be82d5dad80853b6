#include "solver/finish_solve.h"

#include "solver/point_distance.h"
#include "solver/selection_matrix.h"

namespace ZOR::reg {

namespace {

/// One value for each of a group's points, 0.0 where the point wasn't fitted.
using GroupDiscrepancies = Eigen::VectorXd;

OdGePoint3d pointAt(const PointMatrix& points, Eigen::Index row) {
  return {points(row, 0), points(row, 1), points(row, 2)};
}

SelectionMatrix select(const GroupRows& group, SelectionTest test) {
  return test == SelectionTest::byWeight ? selectByWeight(group.weights) : selectByLength(group.positions);
}

/// Appends the group's record and gives how far each fitted point lies from the model.
GroupDiscrepancies fitGroup(const GroupRows& group, const PointMatrix& model, SelectionTest test,
                            std::vector<RigidTransform>& records) {
  const SelectionMatrix selection = select(group, test);
  const PointMatrix target = selection.among(group.rows).pick(model);
  const PointMatrix source = selection.pick(group.positions);
  const RigidTransform groupToModel = fitRigidTransform(target, source);
  records.push_back(groupToModel);

  Eigen::VectorXd residuals(selection.count());
  for (Eigen::Index k = 0; k < selection.count(); ++k) {
    residuals[k] = distance(pointAt(target, k), apply(groupToModel, pointAt(source, k)));
  }
  return selection.scatter(residuals, group.positions.rows());
}

// Ids mostly ascend here, and then the hint of the map's end makes an insertion cheap.

void storeDiscrepancies(const std::vector<GroupDiscrepancies>& discrepancies, const SolveTables& tables,
                        const RefPointIdSet& excludedIds, PointDiscrepancies& pointDiscrepancies) {
  for (std::size_t g = 0; g < tables.groups.size(); ++g) {
    const std::vector<RefPointId>& pointIds = tables.groups[g].pointIds;
    for (std::size_t line = 0; line < pointIds.size(); ++line) {
      const double discrepancy = discrepancies[g][static_cast<Eigen::Index>(line)];
      if (discrepancy != 0.0 && excludedIds.count(pointIds[line]) == 0) {
        pointDiscrepancies.insert_or_assign(pointDiscrepancies.end(), pointIds[line], discrepancy);
      }
    }
  }
}

void storeModel(const SolveModel& model, const std::vector<CommonPointId>& commonIndex, CommonPoints& commonPoints) {
  Eigen::Index row = 0;
  for (const CommonPointId commonId : commonIndex) {
    const CommonPoint common{pointAt(model.positions, row), model.weights[row]};
    commonPoints.insert_or_assign(commonPoints.end(), commonId, common);
    ++row;
  }
}

/// A point that the user left out shows up under its name all the same, and the last of a name
/// stands. A base point that isn't active never does.
void storeInactivePoints(const RefPointList& sessionPoints, const std::vector<GroupId>& groupIndex,
                         const std::vector<RigidTransform>& records, CommonPoints& commonPoints) {
  for (const RefPoint& point : sessionPoints) {
    if (point.active || point.inBase || !point.named) continue;
    const auto group = rowOf(groupIndex, point.groupId);
    if (group) commonPoints[point.commonId] = {apply(records[*group], point.position), point.weight};
  }
}

void storeTransforms(const std::vector<GroupId>& groupIndex, const std::vector<RigidTransform>& records,
                     const std::optional<GroupId>& baseGroup, GroupTransforms& groupTransforms) {
  groupTransforms.clear();
  for (std::size_t g = 0; g < groupIndex.size(); ++g) {
    if (groupIndex[g] != baseGroup) groupTransforms.emplace_hint(groupTransforms.end(), groupIndex[g], records[g]);
  }
}

}  // namespace

void finishSolve(const SolveModel& model, const SolveTables& tables, const SolveEnding& ending,
                 const RefPointList& sessionPoints, std::vector<RigidTransform>& records, SolveResults& results,
                 PointDiscrepancies& pointDiscrepancies) {
  std::vector<GroupDiscrepancies> discrepancies;
  discrepancies.reserve(tables.groups.size());
  for (const GroupRows& group : tables.groups) {
    discrepancies.push_back(fitGroup(group, model.positions, ending.test, records));
  }
  storeDiscrepancies(discrepancies, tables, ending.excludedIds, pointDiscrepancies);
  storeModel(model, tables.commonIndex, results.commonPoints);
  storeInactivePoints(sessionPoints, tables.groupIndex, records, results.commonPoints);
  storeTransforms(tables.groupIndex, records, ending.baseGroup, results.groupTransforms);
}

}  // namespace ZOR::reg
