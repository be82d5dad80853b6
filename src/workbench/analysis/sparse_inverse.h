// The elements of the inverse of a sparse matrix at the places that its factor fills, and no others.
#pragma once

#include <vector>

#include "workbench/analysis/sparse_factor.h"

namespace tiepoint::workbench::analysis {

/// By the recursion of Takahashi, Fagan and Chen (1973; Erisman and Tinney 1975), a supernode's columns at a
/// time: they follow from the inverse at the rows below them, all of which the parent has.
class SparseInverse {
 public:
  /// The factor is that of a matrix of this layout.
  SparseInverse(const BlockMatrix& layout, const SparseFactor& factor);

  /// Rows of one node, columns of another; both must be neighbours in the factor. For two that are not, it
  /// throws std::logic_error.
  Block block(int rowNode, int columnNode) const;

 private:
  Eigen::MatrixXd whole(std::size_t supernode, const Eigen::MatrixXd& below);
  int rowIn(const Supernode& supernode, int row) const;

  const BlockMatrix& layout;
  const SparseFactor& factor;
  std::vector<int> supernodeOfRow;
  /// For each supernode its columns of the inverse, at all its rows.
  std::vector<Eigen::MatrixXd> columns;
};

}  // namespace tiepoint::workbench::analysis
