// The largest eigenvalue of a symmetric operator that is only known by what it makes of a vector.
#pragma once

#include <Eigen/Core>
#include <functional>

namespace tiepoint::workbench::analysis {

using LinearOperator = std::function<Eigen::VectorXd(const Eigen::VectorXd&)>;

struct Eigenpair {
  double value = 0.0;
  /// Unit length.
  Eigen::VectorXd vector;
};

/// By the method of Lanczos with full orthogonalisation, from a start of its own, the same on every run. An
/// operator that leaves a subspace alone is searched there, as long as it takes every vector into it.
Eigenpair largestEigenpair(Eigen::Index size, const LinearOperator& apply);

/// Numbers between -1 and 1 that are the same on every system.
Eigen::VectorXd fixedVector(Eigen::Index size);

}  // namespace tiepoint::workbench::analysis
