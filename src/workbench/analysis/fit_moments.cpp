#include "workbench/analysis/fit_moments.h"

#include <Eigen/LU>
#include <algorithm>
#include <cmath>

namespace tiepoint::workbench::analysis {

namespace {

constexpr int maxSteps = 60;
constexpr double settled = 1e-12;
/// What rounding may take from the sums, as a share of the spread.
constexpr double rounding = 1e-13;

/// The largest trace of a rotation times the matrix: the largest root of the characteristic polynomial of
/// Horn's matrix, by Newton's method from above, where every step stays above the root.
double largestTrace(const Eigen::Matrix3d& matrix, double atMost) {
  const Eigen::Matrix3d square = matrix.transpose() * matrix;
  const double trace = square.trace();
  const double two = -2.0 * trace, one = -8.0 * matrix.determinant();
  const double zero = 2.0 * square.squaredNorm() - trace * trace;
  double root = std::min(atMost, std::sqrt(3.0 * trace));
  for (int step = 0; step < maxSteps; ++step) {
    const double value = ((root * root + two) * root + one) * root + zero;
    const double slope = (4.0 * root * root + 2.0 * two) * root + one;
    if (!(slope > 0.0) || !(value > 0.0)) break;
    root -= value / slope;
    if (value <= settled * slope * root) break;
  }
  return root;
}

double largestLevelTrace(const Eigen::Matrix3d& matrix) {
  return std::hypot(matrix(0, 0) + matrix(1, 1), matrix(1, 0) - matrix(0, 1)) + matrix(2, 2);
}

}  // namespace

void FitMoments::add(const Eigen::Vector3d& from_, const Eigen::Vector3d& to_, double weight) {
  weights += weight;
  from += weight * from_;
  to += weight * to_;
  squares += weight * (from_.squaredNorm() + to_.squaredNorm());
  products += weight * to_ * from_.transpose();
}

double FitMoments::leastSumOfSquares(bool levelled) const {
  if (weights == 0.0) return 0.0;
  const double spread = squares - (from.squaredNorm() + to.squaredNorm()) / weights;
  const Eigen::Matrix3d centred = products - to * from.transpose() / weights;
  const double most = levelled ? largestLevelTrace(centred) : largestTrace(centred, 0.5 * spread);
  return std::max(0.0, spread - 2.0 * most - rounding * squares);
}

}  // namespace tiepoint::workbench::analysis
