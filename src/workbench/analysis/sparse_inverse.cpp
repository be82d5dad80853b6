#include "workbench/analysis/sparse_inverse.h"

#include <Eigen/Dense>
#include <algorithm>
#include <stdexcept>

namespace tiepoint::workbench::analysis {

namespace {

std::size_t index(int place) { return static_cast<std::size_t>(place); }

/// The unit lower triangle of a node's own rows, and the rows below it.
struct FactorColumns {
  Eigen::MatrixXd own, below;
};

FactorColumns factorColumns(const Eigen::SparseMatrix<double>& lower, int first, int width) {
  FactorColumns columns;
  const int rows = lower.outerIndexPtr()[first + 1] - lower.outerIndexPtr()[first] - (width - 1);
  columns.own = Eigen::MatrixXd::Identity(width, width);
  columns.below.resize(rows, width);
  for (int column = 0; column < width; ++column) {
    const double* const values = lower.valuePtr() + lower.outerIndexPtr()[first + column];
    const int ownRows = width - column - 1;
    for (int row = 0; row < ownRows; ++row) columns.own(column + 1 + row, column) = values[row];
    for (int row = 0; row < rows; ++row) columns.below(row, column) = values[ownRows + row];
  }
  return columns;
}

}  // namespace

SparseInverse::SparseInverse(const BlockMatrix& layout, const SparseFactor& factor) {
  if (layout.size() == 0) return;
  findColumns(layout, factor);
  const Eigen::VectorXd pivots = factor.pivots();
  for (std::size_t at = all.size(); at-- > 0;) invert(at, factor, pivots);
}

void SparseInverse::findColumns(const BlockMatrix& layout, const SparseFactor& factor) {
  placeOfNode.assign(index(layout.nodes()), 0);
  std::vector<int> nodeOfRow(index(layout.size()));
  for (const int node : layout.order()) {
    placeOfNode[index(node)] = static_cast<int>(all.size());
    for (int row = 0; row < layout.width(node); ++row) nodeOfRow[index(layout.offset(node) + row)] = node;
    Columns columns;
    columns.first = layout.offset(node);
    columns.width = layout.width(node);
    all.push_back(std::move(columns));
  }
  for (Columns& columns : all) {
    const Eigen::SparseMatrix<double>& lower = factor.lower();
    const int lastColumn = columns.first + columns.width - 1;
    const int* const rows = lower.innerIndexPtr();
    int rowsSoFar = 0;
    for (int at = lower.outerIndexPtr()[lastColumn]; at < lower.outerIndexPtr()[lastColumn + 1];) {
      const int node = nodeOfRow[index(rows[at])];
      columns.nodesBelow.push_back(placeOfNode[index(node)]);
      columns.rowsBelow.push_back(rowsSoFar);
      rowsSoFar += layout.width(node);
      at += layout.width(node);
    }
    columns.rowsBelow.push_back(rowsSoFar);
  }
}

/// The inverse at the rows below, against themselves: all of them are in the columns of later nodes.
Eigen::MatrixXd SparseInverse::gather(const Columns& columns) const {
  Eigen::MatrixXd square(columns.rowsBelow.back(), columns.rowsBelow.back());
  for (std::size_t c = 0; c < columns.nodesBelow.size(); ++c) {
    const Columns& later = all[index(columns.nodesBelow[c])];
    const int at = columns.rowsBelow[c];
    square.block(at, at, later.width, later.width) = later.own;
    auto from = later.nodesBelow.begin();
    for (std::size_t r = c + 1; r < columns.nodesBelow.size(); ++r) {
      from = std::lower_bound(from, later.nodesBelow.end(), columns.nodesBelow[r]);
      const int row = later.rowsBelow[static_cast<std::size_t>(from - later.nodesBelow.begin())];
      const int height = columns.rowsBelow[r + 1] - columns.rowsBelow[r];
      square.block(columns.rowsBelow[r], at, height, later.width) = later.below.middleRows(row, height);
    }
  }
  return square;
}

void SparseInverse::invert(std::size_t at, const SparseFactor& factor, const Eigen::VectorXd& pivots) {
  Columns& columns = all[at];
  const FactorColumns known = factorColumns(factor.lower(), columns.first, columns.width);
  const auto triangle = known.own.triangularView<Eigen::UnitLower>();
  const Eigen::MatrixXd ownInverse = triangle.solve(Eigen::MatrixXd::Identity(columns.width, columns.width));
  const Eigen::MatrixXd reach = known.below * ownInverse;
  columns.below.noalias() = gather(columns).selfadjointView<Eigen::Lower>() * (-reach);
  columns.own =
      ownInverse.transpose() * pivots.segment(columns.first, columns.width).cwiseInverse().asDiagonal() * ownInverse;
  columns.own.noalias() -= reach.transpose() * columns.below;
  columns.own = (0.5 * (columns.own + columns.own.transpose())).eval();
}

Block SparseInverse::block(int rowNode, int columnNode) const {
  const int rowPlace = placeOfNode[index(rowNode)], columnPlace = placeOfNode[index(columnNode)];
  if (rowPlace == columnPlace) return all[index(rowPlace)].own;
  const Columns& columns = all[index(std::min(rowPlace, columnPlace))];
  const auto& nodes = columns.nodesBelow;
  const auto found = std::lower_bound(nodes.begin(), nodes.end(), std::max(rowPlace, columnPlace));
  if (found == nodes.end() || *found != std::max(rowPlace, columnPlace)) {
    throw std::logic_error("the inverse is asked for outside the pattern of the factor");
  }
  const auto at = static_cast<std::size_t>(found - nodes.begin());
  const Block below =
      columns.below.middleRows(columns.rowsBelow[at], columns.rowsBelow[at + 1] - columns.rowsBelow[at]);
  if (rowPlace > columnPlace) return below;
  return below.transpose();
}

}  // namespace tiepoint::workbench::analysis
