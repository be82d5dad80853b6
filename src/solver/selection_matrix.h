// Which rows of a table take part.
#pragma once

#include <vector>

#include "solver/rigid_fit.h"

namespace ZOR::reg {

/// A square matrix S that picks rows: row k holds a single 1.0 in the column of the k-th selected
/// row, all later rows are zero. Only the columns of the ones are kept, so that a selection costs
/// what it selects.
class SelectionMatrix {
 public:
  SelectionMatrix() = default;
  /// `selectedRows` ascend.
  explicit SelectionMatrix(std::vector<Eigen::Index> selectedRows) : ones(std::move(selectedRows)) {}

  /// The sum of all entries.
  Eigen::Index count() const { return static_cast<Eigen::Index>(ones.size()); }

  /// The first count() rows of S x points.
  PointMatrix pick(const PointMatrix& points) const;

  /// The transpose of S times `values`, count() of them: each goes back to its selected row of
  /// `rows`, all other rows are zero.
  Eigen::VectorXd scatter(const Eigen::VectorXd& values, Eigen::Index rows) const;
  PointMatrix scatter(const PointMatrix& values, Eigen::Index rows) const;

  /// The same selection as seen from a larger table, of which row `places[i]` is row i here.
  /// `places` ascend.
  SelectionMatrix among(const std::vector<Eigen::Index>& places) const;

  const std::vector<Eigen::Index>& selectedRows() const { return ones; }

 private:
  std::vector<Eigen::Index> ones;
};

/// Rows of a weight above 0.0.
SelectionMatrix selectByWeight(const Eigen::VectorXd& weights);
/// Rows with a coordinate that isn't 0.0. A zero row stands for a point that the group doesn't
/// have, so a target measured exactly at the origin counts as absent.
SelectionMatrix selectByCoordinates(const PointMatrix& points);
/// Rows whose squared length isn't 0.0, absent ones as above.
SelectionMatrix selectByLength(const PointMatrix& points);

/// The test of selectByLength for one point.
inline bool isPresentByLength(double x, double y, double z) { return x * x + y * y + z * z != 0.0; }

}  // namespace ZOR::reg
