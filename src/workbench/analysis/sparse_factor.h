// The factor L D L' of a symmetric sparse matrix, in the order of its rows.
#pragma once

#include <Eigen/SparseCholesky>

#include "workbench/analysis/block_matrix.h"

namespace tiepoint::workbench::analysis {

class SparseFactor {
 public:
  /// Keeps the pattern of the matrix for all calls of `factorize` that follow.
  explicit SparseFactor(const BlockMatrix& matrix);

  /// The matrix must have the pattern that the factor was made for; it needn't be definite. False when a
  /// pivot is zero or not a number: there is no factor then.
  bool factorize(const BlockMatrix& matrix);

  int negativePivots() const;
  /// The least of pivot / diagonal of the matrix: at most 0 when the matrix isn't positive definite, and
  /// near the rounding of a double when it is singular.
  double leastPivotShare() const { return pivotShare; }

  Eigen::MatrixXd solve(const Eigen::MatrixXd& rightSide) const { return ldlt.solve(rightSide); }

  /// Strictly lower, unit diagonal left out, columns by rows ascending.
  const Eigen::SparseMatrix<double>& lower() const { return ldlt.matrixL().nestedExpression(); }
  Eigen::VectorXd pivots() const { return ldlt.vectorD(); }

 private:
  Eigen::SimplicialLDLT<Eigen::SparseMatrix<double>, Eigen::Lower, Eigen::NaturalOrdering<int>> ldlt;
  double pivotShare = 0.0;
};

}  // namespace tiepoint::workbench::analysis
