// The iterative method as it is told, with dense tables and N x N matrices, for comparison.
#pragma once

#include <Eigen/LU>
#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "records/tables.h"
#include "solver/rigid_fit.h"

namespace tiepoint::testing {

struct PlainModel {
  ZOR::reg::PointMatrix positions;
  Eigen::VectorXd weights;
  std::uint64_t lastPass = 0;
  double movement = 0.0;
};

/// The model as the loop leaves it, before it is moved onto a base.
inline PlainModel plainIterative(const ZOR::reg::RefPointList& points, std::uint64_t maxIterations, double criterion) {
  using namespace ZOR::reg;
  std::vector<GroupId> groupIndex;
  std::vector<CommonPointId> commonIndex;
  std::optional<GroupId> baseGroup;
  for (const RefPoint& p : points) {
    groupIndex.push_back(p.groupId);
    commonIndex.push_back(p.commonId);
    if (p.inBase && !baseGroup) baseGroup = p.groupId;
  }
  for (auto* index : {&groupIndex, &commonIndex}) {
    std::sort(index->begin(), index->end());
    index->erase(std::unique(index->begin(), index->end()), index->end());
  }
  const auto place = [](const std::vector<std::uint64_t>& index, std::uint64_t id) {
    return static_cast<Eigen::Index>(std::find(index.begin(), index.end(), id) - index.begin());
  };
  const auto groups = static_cast<Eigen::Index>(groupIndex.size());
  const auto names = static_cast<Eigen::Index>(commonIndex.size());
  std::vector<PointMatrix> positions(groupIndex.size(), PointMatrix::Zero(names, 3));
  Eigen::MatrixXd weights = Eigen::MatrixXd::Zero(groups, names);
  for (const RefPoint& p : points) {
    const Eigen::Index g = place(groupIndex, p.groupId);
    const Eigen::Index n = place(commonIndex, p.commonId);
    positions[static_cast<std::size_t>(g)].row(n) << p.position.x, p.position.y, p.position.z;
    weights(g, n) = p.weight;
  }

  std::vector<Eigen::MatrixXd> selections;
  std::vector<Eigen::Index> counts;
  for (const PointMatrix& rows : positions) {
    Eigen::MatrixXd selection = Eigen::MatrixXd::Zero(names, names);
    Eigen::Index k = 0;
    for (Eigen::Index n = 0; n < names; ++n) {
      if (rows(n, 0) != 0.0 || rows(n, 1) != 0.0 || rows(n, 2) != 0.0) selection(k++, n) = 1.0;
    }
    selections.push_back(selection);
    counts.push_back(static_cast<Eigen::Index>(selection.sum()));
  }
  PlainModel plain;
  plain.weights.resize(names);
  Eigen::MatrixXd weightSums = Eigen::MatrixXd::Zero(names, names);
  for (Eigen::Index n = 0; n < names; ++n) {
    weightSums(n, n) = weights.col(n).sum();
    plain.weights[n] = weightSums(n, n) / static_cast<double>((weights.col(n).array() != 0.0).count());
  }
  const Eigen::MatrixXd weightSumInverse = weightSums.inverse();

  PointMatrix model = PointMatrix::Zero(names, 3);
  PointMatrix previousModel = model;
  for (std::uint64_t k = 0;;) {
    plain.lastPass = k;
    model.setZero();
    for (Eigen::Index g = 0; g < groups; ++g) {
      for (Eigen::Index n = 0; n < names; ++n) {
        model.row(n) += weights(g, n) * positions[static_cast<std::size_t>(g)].row(n);
      }
    }
    model = (weightSumInverse * model).eval();
    if (baseGroup) {
      const Eigen::Index b = place(groupIndex, *baseGroup);
      const PointMatrix& base = positions[static_cast<std::size_t>(b)];
      for (Eigen::Index n = 0; n < names; ++n) {
        if (!(base.row(n).array().abs() > 1e-12).any()) continue;
        model.row(n) = base.row(n);
        plain.weights[n] = weights(b, n);
      }
    }
    for (std::size_t g = 0; g < positions.size(); ++g) {
      const Eigen::MatrixXd& s = selections[g];
      const PointMatrix target = (s * model).topRows(counts[g]);
      const PointMatrix source = (s * positions[g]).topRows(counts[g]);
      RigidTransform motion;
      fitRigidTransform(target, source, motion.rotation, motion.translation);
      const Eigen::Map<const Eigen::Matrix<double, 3, 3, Eigen::RowMajor>> r(motion.rotation.data());
      const Eigen::Map<const Eigen::RowVector3d> t(motion.translation.data());
      PointMatrix moved = positions[g] * r.transpose();
      moved.rowwise() += t;
      positions[g] = s.transpose() * (s * moved);
    }
    plain.movement = (model - previousModel).rowwise().norm().maxCoeff();
    previousModel = model;
    ++k;
    if (k > maxIterations || !(plain.movement > criterion)) break;
  }
  plain.positions = model;
  return plain;
}

}  // namespace tiepoint::testing
