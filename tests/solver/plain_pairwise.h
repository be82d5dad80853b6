// The pairwise solve as dense algebra: tables over all groups and names, selections as N x N
// matrices, picks and scatters as products. What the sparse solver is held against.
#pragma once

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

#include "solver/builders.h"
#include "solver/pairwise.h"

namespace tiepoint::testing {

struct PlainTables {
  std::vector<GroupId> groupIndex;
  std::vector<CommonPointId> commonIndex;
  std::vector<PointMatrix> positions;
  Eigen::MatrixXd weights;
  std::vector<std::vector<RefPointId>> pointIds;

  Eigen::Index groupRow(GroupId id) const {
    return std::find(groupIndex.begin(), groupIndex.end(), id) - groupIndex.begin();
  }
  Eigen::Index commonRow(CommonPointId id) const {
    return std::find(commonIndex.begin(), commonIndex.end(), id) - commonIndex.begin();
  }
};

inline PlainTables plainTables(const RefPointList& points) {
  std::set<GroupId> groups;
  std::set<CommonPointId> names;
  for (const RefPoint& point : points) groups.insert(point.groupId), names.insert(point.commonId);
  PlainTables tables;
  tables.groupIndex.assign(groups.begin(), groups.end());
  tables.commonIndex.assign(names.begin(), names.end());
  const auto n = static_cast<Eigen::Index>(names.size());
  tables.positions.assign(groups.size(), PointMatrix::Zero(n, 3));
  tables.weights = Eigen::MatrixXd::Zero(static_cast<Eigen::Index>(groups.size()), n);
  tables.pointIds.assign(groups.size(), std::vector<RefPointId>(names.size(), 0));
  for (const RefPoint& point : points) {
    const Eigen::Index g = tables.groupRow(point.groupId);
    const Eigen::Index p = tables.commonRow(point.commonId);
    tables.pointIds[static_cast<std::size_t>(g)][static_cast<std::size_t>(p)] = point.id;
    if (!point.active) continue;
    tables.positions[static_cast<std::size_t>(g)].row(p) << point.position.x, point.position.y, point.position.z;
    tables.weights(g, p) = point.weight;
  }
  return tables;
}

template <typename Test>
Eigen::MatrixXd plainSelection(Eigen::Index n, Test isSelected) {
  Eigen::MatrixXd selection = Eigen::MatrixXd::Zero(n, n);
  Eigen::Index k = 0;
  for (Eigen::Index p = 0; p < n; ++p) {
    if (isSelected(p)) selection(k++, p) = 1.0;
  }
  return selection;
}

inline Eigen::Index plainCount(const Eigen::MatrixXd& selection) { return static_cast<Eigen::Index>(selection.sum()); }

inline PointMatrix plainPick(const Eigen::MatrixXd& selection, const PointMatrix& points) {
  const PointMatrix product = selection * points;
  return product.topRows(plainCount(selection));
}

inline bool plainIsPresent(const PointMatrix& points, Eigen::Index p) {
  return points(p, 0) * points(p, 0) + points(p, 1) * points(p, 1) + points(p, 2) * points(p, 2) != 0.0;
}

inline Eigen::RowVector3d plainMove(const RigidTransform& t, const PointMatrix& points, Eigen::Index p) {
  const OdGePoint3d moved = apply(t, rowAt(points, p));
  return {moved.x, moved.y, moved.z};
}

/// One fusion of group b into group a.
inline void plainFusion(std::vector<PointMatrix>& positions, Eigen::MatrixXd& weights, Eigen::Index a, Eigen::Index b) {
  PointMatrix& xa = positions[static_cast<std::size_t>(a)];
  const PointMatrix& xb = positions[static_cast<std::size_t>(b)];
  const Eigen::Index n = xa.rows();
  const Eigen::MatrixXd selection =
      plainSelection(n, [&](Eigen::Index p) { return weights(a, p) > 0.0 && weights(b, p) > 0.0; });
  const RigidTransform bToA = ZOR::reg::fitRigidTransform(plainPick(selection, xa), plainPick(selection, xb));

  for (Eigen::Index p = 0; p < n; ++p) {
    const Eigen::RowVector3d y = plainIsPresent(xb, p) ? plainMove(bToA, xb, p) : Eigen::RowVector3d(0, 0, 0);
    const double wa = weights(a, p);
    const double wb = weights(b, p);
    if (wa == 0.0 && wb != 0.0) {
      xa.row(p) = y;
      weights(a, p) = wb;
    } else if (wa != 0.0 && wb != 0.0) {
      for (Eigen::Index c = 0; c < 3; ++c) xa(p, c) = (wa * xa(p, c) + wb * y[c]) / (wa + wb);
      weights(a, p) = (wa + wb) * 0.5;
    }
  }
}

inline void plainMoveToBase(const PointMatrix& baseStart, PointMatrix& model) {
  const Eigen::MatrixXd selection =
      plainSelection(model.rows(), [&](Eigen::Index p) { return plainIsPresent(baseStart, p); });
  const RigidTransform modelToBase =
      ZOR::reg::fitRigidTransform(plainPick(selection, baseStart), plainPick(selection, model));
  for (Eigen::Index p = 0; p < model.rows(); ++p) model.row(p) = plainMove(modelToBase, model, p);
}

/// Row g of the discrepancies; the group's record goes to the end of the table.
inline Eigen::VectorXd plainGroupFit(const PointMatrix& model, const PointMatrix& start,
                                     const Eigen::RowVectorXd& startWeights, std::vector<RigidTransform>& records) {
  const Eigen::MatrixXd selection = plainSelection(model.rows(), [&](Eigen::Index p) { return startWeights[p] > 0.0; });
  const PointMatrix target = plainPick(selection, model);
  const PointMatrix source = plainPick(selection, start);
  records.push_back(ZOR::reg::fitRigidTransform(target, source));
  Eigen::VectorXd residuals = Eigen::VectorXd::Zero(model.rows());
  for (Eigen::Index k = 0; k < target.rows(); ++k) {
    const Eigen::RowVector3d d = target.row(k) - plainMove(records.back(), source, k);
    residuals[k] = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
  }
  return selection.transpose() * residuals;
}

inline void plainStoreDiscrepancies(const PlainTables& tables, const std::vector<Eigen::VectorXd>& discrepancies,
                                    const std::set<RefPointId>& excluded, SolveMembers& out) {
  for (std::size_t g = 0; g < tables.groupIndex.size(); ++g) {
    for (std::size_t p = 0; p < tables.commonIndex.size(); ++p) {
      const double d = discrepancies[g][static_cast<Eigen::Index>(p)];
      const RefPointId id = tables.pointIds[g][p];
      if (d != 0.0 && excluded.count(id) == 0) out.pointDiscrepancies[id] = d;
    }
  }
}

inline void plainStoreCommonPoints(const PlainTables& tables, const PointMatrix& model, const Eigen::VectorXd& weights,
                                   const RefPointList& sessionPoints, SolveMembers& out) {
  for (Eigen::Index p = 0; p < model.rows(); ++p) {
    out.commonPoints[tables.commonIndex[static_cast<std::size_t>(p)]] = {rowAt(model, p), weights[p]};
  }
  for (const RefPoint& point : sessionPoints) {
    const auto g = static_cast<std::size_t>(tables.groupRow(point.groupId));
    if (point.active || point.inBase || !point.named || g == tables.groupIndex.size()) continue;
    out.commonPoints[point.commonId] = {apply(out.solverTable[g], point.position), point.weight};
  }
}

inline void solvePairwisePlainly(const RefPointList& workingPoints, const ZOR::reg::GroupMerges& merges,
                                 const RefPointList& sessionPoints, SolveMembers& out) {
  const PlainTables start = plainTables(workingPoints);
  std::vector<PointMatrix> positions = start.positions;
  Eigen::MatrixXd weights = start.weights;
  for (const auto& merge : merges) {
    plainFusion(positions, weights, start.groupRow(merge.survivor), start.groupRow(merge.absorbed));
  }
  const Eigen::Index last = start.groupRow(merges.back().survivor);
  PointMatrix model = positions[static_cast<std::size_t>(last)];
  const Eigen::VectorXd modelWeights = weights.row(last);

  out.registrationMethod = 2;
  std::set<RefPointId> excluded;
  std::set<GroupId> base;
  for (const RefPoint& point : workingPoints) {
    if (point.inBase) excluded.insert(point.id), base.insert(point.groupId);
  }
  if (!base.empty()) {
    plainMoveToBase(start.positions[static_cast<std::size_t>(start.groupRow(*base.begin()))], model);
    out.registrationMethod = 3;
  }

  std::vector<Eigen::VectorXd> discrepancies;
  for (std::size_t g = 0; g < start.groupIndex.size(); ++g) {
    discrepancies.push_back(
        plainGroupFit(model, start.positions[g], start.weights.row(static_cast<Eigen::Index>(g)), out.solverTable));
  }
  plainStoreDiscrepancies(start, discrepancies, excluded, out);
  plainStoreCommonPoints(start, model, modelWeights, sessionPoints, out);
  out.groupTransforms.clear();
  for (std::size_t g = 0; g < start.groupIndex.size(); ++g) {
    if (base.count(start.groupIndex[g]) == 0) out.groupTransforms[start.groupIndex[g]] = out.solverTable[g];
  }
}

}  // namespace tiepoint::testing
