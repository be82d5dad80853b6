#include "workbench/analysis/sparse_inverse.h"

#include <Eigen/Dense>
#include <algorithm>
#include <stdexcept>

namespace tiepoint::workbench::analysis {

namespace {

std::size_t index(int place) { return static_cast<std::size_t>(place); }

/// The square of the parent's inverse at the child's rows below.
Eigen::MatrixXd gathered(const Eigen::MatrixXd& parent, const std::vector<int>& rows,
                         const std::vector<int>& placeOfRow) {
  const auto size = static_cast<Eigen::Index>(rows.size());
  Eigen::MatrixXd square(size, size);
  for (std::size_t c = 0; c < rows.size(); ++c) {
    const int column = placeOfRow[index(rows[c])];
    for (std::size_t r = 0; r < rows.size(); ++r) {
      square(static_cast<Eigen::Index>(r), static_cast<Eigen::Index>(c)) = parent(placeOfRow[index(rows[r])], column);
    }
  }
  return square;
}

}  // namespace

SparseInverse::SparseInverse(const BlockMatrix& layout_, const SparseFactor& factor_)
    : layout(layout_), factor(factor_), supernodeOfRow(index(layout.size())), columns(factor.supernodes().size()) {
  const std::vector<Supernode>& nodes = factor.supernodes();
  std::vector<int> placeOfRow(index(layout.size()), 0);
  // What a parent knows is kept until its children have taken their part of it.
  std::vector<Eigen::MatrixXd> waiting(nodes.size());
  for (std::size_t s = nodes.size(); s-- > 0;) {
    for (int row = 0; row < nodes[s].width; ++row) supernodeOfRow[index(nodes[s].first + row)] = static_cast<int>(s);
    const Eigen::MatrixXd known = whole(s, waiting[s]);
    waiting[s].resize(0, 0);
    markRows(nodes[s], placeOfRow);
    for (const int child : nodes[s].children) {
      waiting[index(child)] = gathered(known, nodes[index(child)].below, placeOfRow);
    }
  }
}

/// The inverse at all rows of the supernode, from that at the rows below.
Eigen::MatrixXd SparseInverse::whole(std::size_t s, const Eigen::MatrixXd& below) {
  const Supernode& node = factor.supernodes()[s];
  const auto rowsBelow = static_cast<Eigen::Index>(node.below.size());
  const Eigen::MatrixXd& known = factor.columns(s);
  const auto triangle = known.topRows(node.width).triangularView<Eigen::UnitLower>();
  const Eigen::MatrixXd ownInverse = triangle.solve(Eigen::MatrixXd::Identity(node.width, node.width));
  const Eigen::MatrixXd reach = known.bottomRows(rowsBelow) * ownInverse;
  Eigen::MatrixXd inverse(node.height(), node.height());
  inverse.bottomRightCorner(rowsBelow, rowsBelow) = below;
  inverse.bottomLeftCorner(rowsBelow, node.width).noalias() = -below * reach;
  inverse.topRightCorner(node.width, rowsBelow) = inverse.bottomLeftCorner(rowsBelow, node.width).transpose();
  Eigen::MatrixXd own =
      ownInverse.transpose() * factor.pivots().segment(node.first, node.width).cwiseInverse().asDiagonal() * ownInverse;
  own.noalias() -= reach.transpose() * inverse.bottomLeftCorner(rowsBelow, node.width);
  inverse.topLeftCorner(node.width, node.width) = 0.5 * (own + own.transpose());
  columns[s] = inverse.leftCols(node.width);
  return inverse;
}

int SparseInverse::rowIn(const Supernode& node, int row) const {
  if (row < node.first + node.width) return row - node.first;
  const auto found = std::lower_bound(node.below.begin(), node.below.end(), row);
  if (found == node.below.end() || *found != row) {
    throw std::logic_error("the inverse is asked for outside the pattern of the factor");
  }
  return node.width + static_cast<int>(found - node.below.begin());
}

Block SparseInverse::block(int rowNode, int columnNode) const {
  if (layout.offset(rowNode) < layout.offset(columnNode)) return block(columnNode, rowNode).transpose();
  const int column = layout.offset(columnNode);
  const std::size_t s = index(supernodeOfRow[index(column)]);
  const Supernode& node = factor.supernodes()[s];
  const int row = rowIn(node, layout.offset(rowNode));
  return columns[s].block(row, column - node.first, layout.width(rowNode), layout.width(columnNode));
}

}  // namespace tiepoint::workbench::analysis
