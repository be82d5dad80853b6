#include "workbench/analysis/dense_ldlt.h"

#include <algorithm>

namespace tiepoint::workbench::analysis {

namespace {

/// Wide enough for products of matrices to be quick, narrow enough for its own columns to cost little.
constexpr Eigen::Index panelWidth = 32;
/// Of the products: their part above the diagonal is made for nothing.
constexpr Eigen::Index stripWidth = 96;

/// Columns of one panel, each applied to those of the panel that follow.
void factorizePanel(Eigen::MatrixXd& front, Eigen::Index first, Eigen::Index width) {
  for (Eigen::Index column = first; column < first + width; ++column) {
    const Eigen::Index rows = front.rows() - column - 1;
    const double pivot = front(column, column);
    auto below = front.col(column).tail(rows);
    for (Eigen::Index next = column + 1; next < first + width; ++next) {
      const double factor = front(next, column) / pivot;
      front.col(next).tail(front.rows() - next) -= factor * front.col(column).tail(front.rows() - next);
    }
    below /= pivot;
  }
}

void applyPanel(Eigen::MatrixXd& front, Eigen::Index first, Eigen::Index width) {
  const Eigen::VectorXd pivots = front.diagonal().segment(first, width);
  for (Eigen::Index at = first + width; at < front.rows(); at += stripWidth) {
    const Eigen::Index strip = std::min(stripWidth, front.rows() - at), rows = front.rows() - at;
    const Eigen::MatrixXd weighted = pivots.asDiagonal() * front.block(at, first, strip, width).transpose();
    front.block(at, at, rows, strip).noalias() -= front.block(at, first, rows, width) * weighted;
  }
}

}  // namespace

void factorizeColumns(Eigen::MatrixXd& front, Eigen::Index columns) {
  for (Eigen::Index first = 0; first < columns; first += panelWidth) {
    const Eigen::Index width = std::min(panelWidth, columns - first);
    factorizePanel(front, first, width);
    applyPanel(front, first, width);
  }
}

}  // namespace tiepoint::workbench::analysis
