#include "solver/selection_matrix.h"

namespace ZOR::reg {

namespace {

template <typename Test>
SelectionMatrix selectRows(Eigen::Index rows, Test isSelected) {
  std::vector<Eigen::Index> selected;
  for (Eigen::Index row = 0; row < rows; ++row) {
    if (isSelected(row)) selected.push_back(row);
  }
  return SelectionMatrix(std::move(selected));
}

}  // namespace

PointMatrix SelectionMatrix::pick(const PointMatrix& points) const {
  PointMatrix picked(count(), 3);
  Eigen::Index k = 0;
  for (const Eigen::Index row : ones) picked.row(k++) = points.row(row);
  return picked;
}

Eigen::VectorXd SelectionMatrix::scatter(const Eigen::VectorXd& values, Eigen::Index rows) const {
  Eigen::VectorXd scattered = Eigen::VectorXd::Zero(rows);
  Eigen::Index k = 0;
  for (const Eigen::Index row : ones) scattered[row] = values[k++];
  return scattered;
}

PointMatrix SelectionMatrix::scatter(const PointMatrix& values, Eigen::Index rows) const {
  PointMatrix scattered = PointMatrix::Zero(rows, 3);
  Eigen::Index k = 0;
  for (const Eigen::Index row : ones) scattered.row(row) = values.row(k++);
  return scattered;
}

SelectionMatrix SelectionMatrix::among(const std::vector<Eigen::Index>& places) const {
  std::vector<Eigen::Index> selected;
  selected.reserve(ones.size());
  for (const Eigen::Index row : ones) selected.push_back(places[static_cast<std::size_t>(row)]);
  return SelectionMatrix(std::move(selected));
}

SelectionMatrix selectByWeight(const Eigen::VectorXd& weights) {
  return selectRows(weights.size(), [&](Eigen::Index row) { return weights[row] > 0.0; });
}

SelectionMatrix selectByCoordinates(const PointMatrix& points) {
  return selectRows(points.rows(), [&](Eigen::Index row) {
    return points(row, 0) != 0.0 || points(row, 1) != 0.0 || points(row, 2) != 0.0;
  });
}

SelectionMatrix selectByLength(const PointMatrix& points) {
  return selectRows(points.rows(), [&](Eigen::Index row) {
    return isPresentByLength(points(row, 0), points(row, 1), points(row, 2));
  });
}

}  // namespace ZOR::reg
