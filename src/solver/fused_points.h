// The points that stand for a group while groups fuse.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>
#include <vector>

#include "solver/solve_tables.h"

namespace ZOR::reg {

/// One point for each name that the group has or has gathered, found by its row of the common
/// index. What it doesn't hold counts as a zero position of weight 0.0.
class FusedPoints {
 public:
  FusedPoints() = default;
  explicit FusedPoints(const GroupRows& group);

  /// Fits `absorbed` onto these points over the names that both have with a weight above 0.0, and
  /// blends it in: a name that both have becomes the mean of the two positions by their weights,
  /// and its weight the mean of the weights, so that a target doesn't gain weight with the number
  /// of groups that saw it.
  void absorb(const FusedPoints& absorbed);

  /// Writes every point to its row.
  void copyTo(PointMatrix& positions, Eigen::VectorXd& weights) const;

 private:
  struct WeightedPoint {
    Eigen::Index row = 0;
    OdGePoint3d position;
    double weight = 0.0;
  };

  const WeightedPoint* find(Eigen::Index row) const;
  RigidTransform fitToThis(const FusedPoints& absorbed) const;
  void blendIn(const WeightedPoint& moved);

  std::vector<WeightedPoint> points;
  /// From the row to the place in `points`.
  boost::unordered_flat_map<Eigen::Index, std::size_t> placeOfRow;
};

}  // namespace ZOR::reg
