#include "workbench/analysis/block_matrix.h"

#include <Eigen/OrderingMethods>
#include <algorithm>

namespace tiepoint::workbench::analysis {

namespace {

using Pattern = Eigen::SparseMatrix<double>;

/// For each place in the order the node that stands there.
std::vector<int> minimumDegreeOrder(int nodes, const std::vector<std::pair<int, int>>& neighbours) {
  std::vector<Eigen::Triplet<double>> entries;
  entries.reserve(2 * neighbours.size() + static_cast<std::size_t>(nodes));
  for (int node = 0; node < nodes; ++node) entries.emplace_back(node, node, 1.0);
  for (const auto& [one, other] : neighbours) {
    entries.emplace_back(one, other, 1.0);
    entries.emplace_back(other, one, 1.0);
  }
  Pattern graph(nodes, nodes);
  graph.setFromTriplets(entries.begin(), entries.end());
  Eigen::PermutationMatrix<Eigen::Dynamic, Eigen::Dynamic, int> permutation;
  Eigen::AMDOrdering<int>()(graph, permutation);
  const auto& indices = permutation.indices();
  return {indices.data(), indices.data() + indices.size()};
}

}  // namespace

BlockMatrix::BlockMatrix(std::vector<int> widths_, const std::vector<std::pair<int, int>>& neighbours)
    : widths(std::move(widths_)), offsets(widths.size()) {
  nodeOrder = minimumDegreeOrder(nodes(), neighbours);
  int rows = 0;
  for (const int node : nodeOrder) {
    offsets[index(node)] = rows;
    rows += width(node);
  }
  values.resize(rows, rows);
  std::vector<std::vector<int>> rowNodes(widths.size());
  for (const auto& [one, other] : neighbours) {
    if (one == other) continue;
    const bool oneComesFirst = offset(one) < offset(other);
    rowNodes[index(oneComesFirst ? one : other)].push_back(oneComesFirst ? other : one);
  }
  const auto byOffset = [this](int a, int b) { return offset(a) < offset(b); };
  for (std::vector<int>& column : rowNodes) {
    std::sort(column.begin(), column.end(), byOffset);
    column.erase(std::unique(column.begin(), column.end()), column.end());
  }
  layOut(rowNodes);
}

void BlockMatrix::layOut(const std::vector<std::vector<int>>& rowNodesOfColumn) {
  std::size_t count = 0;
  for (const int node : nodeOrder) {
    int below = 0;
    for (const int row : rowNodesOfColumn[index(node)]) below += width(row);
    count += static_cast<std::size_t>(width(node) * (width(node) + 1) / 2 + below * width(node));
  }
  values.reserve(static_cast<Eigen::Index>(count));
  for (const int node : nodeOrder) {
    for (int column = 0; column < width(node); ++column) {
      const int at = offset(node) + column;
      values.startVec(at);
      for (int row = column; row < width(node); ++row) values.insertBack(offset(node) + row, at) = 0.0;
      for (const int below : rowNodesOfColumn[index(node)]) {
        for (int row = 0; row < width(below); ++row) values.insertBack(offset(below) + row, at) = 0.0;
      }
    }
  }
  values.finalize();
}

void BlockMatrix::setZero() { std::fill(values.valuePtr(), values.valuePtr() + values.nonZeros(), 0.0); }

void BlockMatrix::add(int rowNode, int columnNode, const Block& block) {
  if (offset(rowNode) < offset(columnNode)) return add(columnNode, rowNode, block.transpose());
  const bool isDiagonal = rowNode == columnNode;
  for (int column = 0; column < block.cols(); ++column) {
    const int at = offset(columnNode) + column;
    const int* const rows = values.innerIndexPtr() + values.outerIndexPtr()[at];
    const int* const rowsEnd = values.innerIndexPtr() + values.outerIndexPtr()[at + 1];
    const int firstRow = isDiagonal ? column : 0;
    const auto entry = std::lower_bound(rows, rowsEnd, offset(rowNode) + firstRow) - values.innerIndexPtr();
    for (int row = firstRow; row < block.rows(); ++row) values.valuePtr()[entry + row - firstRow] += block(row, column);
  }
}

void BlockMatrix::addDiagonal(const Eigen::VectorXd& diagonal) {
  for (int row = 0; row < size(); ++row) values.valuePtr()[values.outerIndexPtr()[row]] += diagonal(row);
}

void BlockMatrix::scale(const Eigen::VectorXd& factors) {
  for (int column = 0; column < size(); ++column) {
    for (Eigen::SparseMatrix<double>::InnerIterator entry(values, column); entry; ++entry) {
      entry.valueRef() *= factors(entry.row()) * factors(column);
    }
  }
}

Eigen::VectorXd BlockMatrix::diagonal() const {
  Eigen::VectorXd result(size());
  for (int row = 0; row < size(); ++row) result(row) = values.valuePtr()[values.outerIndexPtr()[row]];
  return result;
}

}  // namespace tiepoint::workbench::analysis
