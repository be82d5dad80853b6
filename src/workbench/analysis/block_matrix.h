// Symmetric sparse matrices of small dense blocks, in an order that keeps their factor sparse.
#pragma once

#include <Eigen/SparseCore>
#include <utility>
#include <vector>

namespace tiepoint::workbench::analysis {

/// A block of at most 6 x 6.
using Block = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, 0, 6, 6>;

/// Nodes with a few rows each, and blocks where two nodes are neighbours. The rows of the nodes stand in
/// the order of elimination, found by minimum degree once for all values.
class BlockMatrix {
 public:
  /// A width for each node, 1 to 6; the neighbours are pairs of nodes, each pair in any order and any
  /// number of times.
  BlockMatrix(std::vector<int> widths, const std::vector<std::pair<int, int>>& neighbours);

  int size() const { return static_cast<int>(values.rows()); }
  int nodes() const { return static_cast<int>(widths.size()); }
  int width(int node) const { return widths[index(node)]; }
  /// The node's first row.
  int offset(int node) const { return offsets[index(node)]; }
  /// The nodes as their rows follow one another.
  const std::vector<int>& order() const { return nodeOrder; }

  void setZero();
  /// Adds to the block of a row node and a column node, and so to its mirror image. Of a diagonal block
  /// only the lower half is read.
  void add(int rowNode, int columnNode, const Block& block);
  /// Adds to the diagonal alone; one number for each row.
  void addDiagonal(const Eigen::VectorXd& diagonal);
  /// Multiplies row and column by the same number, for each row.
  void scale(const Eigen::VectorXd& factors);

  Eigen::VectorXd diagonal() const;
  /// Lower half, columns by rows ascending.
  const Eigen::SparseMatrix<double>& lower() const { return values; }

 private:
  static std::size_t index(int node) { return static_cast<std::size_t>(node); }
  void layOut(const std::vector<std::vector<int>>& rowNodesOfColumn);

  std::vector<int> widths, offsets, nodeOrder;
  Eigen::SparseMatrix<double> values;
};

}  // namespace tiepoint::workbench::analysis
