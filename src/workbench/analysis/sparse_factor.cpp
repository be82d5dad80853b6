#include "workbench/analysis/sparse_factor.h"

#include "workbench/analysis/dense_ldlt.h"

namespace tiepoint::workbench::analysis {

namespace {

std::size_t index(int place) { return static_cast<std::size_t>(place); }

/// The rows of a matrix at these places.
Eigen::MatrixXd picked(const Eigen::MatrixXd& from, const std::vector<int>& rows) {
  Eigen::MatrixXd result(static_cast<Eigen::Index>(rows.size()), from.cols());
  for (std::size_t r = 0; r < rows.size(); ++r) result.row(static_cast<Eigen::Index>(r)) = from.row(rows[r]);
  return result;
}

}  // namespace

SparseFactor::SparseFactor(const BlockMatrix& matrix)
    : nodes(supernodesOf(matrix)),
      factors(nodes.size()),
      diagonal(matrix.size()),
      placeOfRow(index(matrix.size()), 0) {}

/// The matrix's own columns, and what the children leave.
Eigen::MatrixXd SparseFactor::assemble(const BlockMatrix& matrix, const Supernode& node,
                                       std::vector<Eigen::MatrixXd>& updates) {
  Eigen::MatrixXd front = Eigen::MatrixXd::Zero(node.height(), node.height());
  markRows(node, placeOfRow);
  for (int column = 0; column < node.width; ++column) {
    for (Eigen::SparseMatrix<double>::InnerIterator entry(matrix.lower(), node.first + column); entry; ++entry) {
      front(placeOfRow[index(static_cast<int>(entry.row()))], column) = entry.value();
    }
  }
  for (const int child : node.children) {
    const std::vector<int>& rows = nodes[index(child)].below;
    const Eigen::MatrixXd& update = updates[index(child)];
    for (std::size_t c = 0; c < rows.size(); ++c) {
      const int column = placeOfRow[index(rows[c])];
      for (std::size_t r = c; r < rows.size(); ++r) {
        front(placeOfRow[index(rows[r])], column) += update(static_cast<Eigen::Index>(r), static_cast<Eigen::Index>(c));
      }
    }
    updates[index(child)].resize(0, 0);
  }
  return front;
}

bool SparseFactor::factorize(const BlockMatrix& matrix) {
  pivotShare = 0.0;
  std::vector<Eigen::MatrixXd> updates(nodes.size());
  for (std::size_t s = 0; s < nodes.size(); ++s) {
    const Supernode& node = nodes[s];
    Eigen::MatrixXd front = assemble(matrix, node, updates);
    factorizeColumns(front, node.width);
    const auto below = static_cast<Eigen::Index>(node.below.size());
    diagonal.segment(node.first, node.width) = front.diagonal().head(node.width);
    updates[s] = front.bottomRightCorner(below, below);
    factors[s] = front.leftCols(node.width);
    factors[s].topRows(node.width).triangularView<Eigen::StrictlyUpper>().setZero();
    factors[s].diagonal().setOnes();
  }
  if (!diagonal.allFinite() || (diagonal.array() == 0.0).any()) return false;
  if (diagonal.size() > 0) pivotShare = diagonal.cwiseQuotient(matrix.diagonal()).minCoeff();
  return true;
}

std::size_t SparseFactor::filled() const {
  std::size_t count = 0;
  for (const Supernode& node : nodes) {
    count += index(node.width) * index(node.width - 1) / 2 + index(node.width) * node.below.size();
  }
  return count;
}

Eigen::MatrixXd SparseFactor::solve(Eigen::MatrixXd x) const {
  for (std::size_t s = 0; s < nodes.size(); ++s) {
    const Supernode& node = nodes[s];
    auto own = x.middleRows(node.first, node.width);
    factors[s].topRows(node.width).triangularView<Eigen::UnitLower>().solveInPlace(own);
    const Eigen::MatrixXd reach = factors[s].bottomRows(static_cast<Eigen::Index>(node.below.size())) * own;
    for (std::size_t r = 0; r < node.below.size(); ++r) x.row(node.below[r]) -= reach.row(static_cast<Eigen::Index>(r));
  }
  x.array().colwise() /= diagonal.array();
  for (std::size_t s = nodes.size(); s-- > 0;) {
    const Supernode& node = nodes[s];
    auto own = x.middleRows(node.first, node.width);
    own.noalias() -=
        factors[s].bottomRows(static_cast<Eigen::Index>(node.below.size())).transpose() * picked(x, node.below);
    factors[s].topRows(node.width).transpose().triangularView<Eigen::UnitUpper>().solveInPlace(own);
  }
  return x;
}

}  // namespace tiepoint::workbench::analysis
