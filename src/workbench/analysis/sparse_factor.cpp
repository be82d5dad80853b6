#include "workbench/analysis/sparse_factor.h"

namespace tiepoint::workbench::analysis {

SparseFactor::SparseFactor(const BlockMatrix& matrix) { ldlt.analyzePattern(matrix.lower()); }

bool SparseFactor::factorize(const BlockMatrix& matrix) {
  pivotShare = 0.0;
  if (matrix.size() == 0) return true;
  ldlt.factorize(matrix.lower());
  if (ldlt.info() != Eigen::Success || !ldlt.vectorD().allFinite()) return false;
  pivotShare = ldlt.vectorD().cwiseQuotient(matrix.diagonal()).minCoeff();
  return true;
}

int SparseFactor::negativePivots() const { return static_cast<int>((ldlt.vectorD().array() < 0.0).count()); }

}  // namespace tiepoint::workbench::analysis
