// The elements of the inverse of a sparse matrix at the places that its factor fills, and no others.
#pragma once

#include <vector>

#include "workbench/analysis/sparse_factor.h"

namespace tiepoint::workbench::analysis {

/// By the recursion of Takahashi, Fagan and Chen (1973; Erisman and Tinney 1975), a node's columns at a
/// time: the inverse's columns of a node follow from those of later nodes at the places of the factor alone.
class SparseInverse {
 public:
  /// The factor is that of a positive definite matrix of this layout, by nodes of this layout.
  SparseInverse(const BlockMatrix& layout, const SparseFactor& factor);

  /// Rows of one node, columns of another; both must be neighbours in the factor. For two that are not, it
  /// throws std::logic_error.
  Block block(int rowNode, int columnNode) const;

 private:
  /// A node's columns: its own rows first, then those below that the factor fills.
  struct Columns {
    int first = 0, width = 0;
    std::vector<int> nodesBelow, rowsBelow;
    Eigen::MatrixXd own, below;
  };

  void findColumns(const BlockMatrix& layout, const SparseFactor& factor);
  void invert(std::size_t at, const SparseFactor& factor, const Eigen::VectorXd& pivots);
  Eigen::MatrixXd gather(const Columns& columns) const;

  /// In the order of elimination; for each node its place there.
  std::vector<Columns> all;
  std::vector<int> placeOfNode;
};

}  // namespace tiepoint::workbench::analysis
