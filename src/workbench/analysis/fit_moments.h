// The least sum of squares of a rigid fit, kept up to date as pairs come and go.
#pragma once

#include <Eigen/Core>

namespace tiepoint::workbench::analysis {

/// Sums over weighted pairs of points. Count the points from near their middle: the sums of large numbers
/// would hide small misfits.
class FitMoments {
 public:
  void add(const Eigen::Vector3d& from, const Eigen::Vector3d& to, double weight);

  /// Never above the least sum of squares of a rigid (levelled: level) motion, and below it by rounding of
  /// the size of the spread alone.
  double leastSumOfSquares(bool levelled) const;

 private:
  double weights = 0.0, squares = 0.0;
  Eigen::Vector3d from = Eigen::Vector3d::Zero(), to = Eigen::Vector3d::Zero();
  Eigen::Matrix3d products = Eigen::Matrix3d::Zero();
};

}  // namespace tiepoint::workbench::analysis
