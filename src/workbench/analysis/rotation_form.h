// The sum of squares as a quadratic form of the columns of all rotations and of the shifts, the targets
// eliminated: with Z the rotations' columns (three rows) and T the shifts, Omega = tr((Z T) K (Z T)').
#pragma once

#include <optional>
#include <vector>

#include "workbench/analysis/block_matrix.h"
#include "workbench/analysis/bodies.h"
#include "workbench/analysis/elimination.h"

namespace tiepoint::workbench::analysis {

/// All that is held is one body that stands at the identity; every other station is one of its own. When a
/// station is levelled, levelled stations and that body share the column of the vertical.
///
/// K is sparse. Its Schur complement without the shifts is the matrix M of the rotations alone, which is
/// dense: Omega = tr(Z M Z') (Chaudhury, Khoo and Singer 2015; Rosen, Carlone, Bandeira and Leonard 2019).
/// One shift is fixed, which takes away the common shift and nothing else. Lengths count in `unit`, the
/// stations' mean lever: rotations and shifts are then of one size, however far the survey reaches.
class RotationForm {
 public:
  /// None when a control target has a covariance with a direction: the form is then none of columns.
  static std::optional<RotationForm> of(const Survey& survey);

  const BlockMatrix& matrix() const { return form; }
  double unit() const { return lengthUnit; }
  /// Rows of rotations in the matrix, and how many there are.
  const std::vector<int>& rotationRows() const { return rotations; }
  std::size_t columns() const { return rotations.size(); }

  /// Z' for these placements: a row for each of `rotationRows`.
  Eigen::MatrixXd rotationsOf(const Placements& placements) const;
  /// Takes the multiplier L of stationary placements from a matrix with K's pattern: L is symmetric, nonzero
  /// only within a body's columns, and L Z' = M Z'.
  void subtractMultiplier(const Placements& placements, const Elimination& elimination, BlockMatrix& from) const;

  /// A number on the diagonal of the rotations, nothing on that of the shifts.
  Eigen::VectorXd onRotations(double number) const;
  /// A vector of rotations among zeros, and back.
  Eigen::VectorXd embedded(const Eigen::VectorXd& ofRotations) const;
  Eigen::VectorXd rotationPart(const Eigen::VectorXd& whole) const;

  /// The placements whose rotations are nearest to what the rows of (Z T)' hold up to one orthogonal matrix.
  Placements placementsNear(const Eigen::MatrixXd& rows) const;

 private:
  using Coefficients = Eigen::Matrix<double, Eigen::Dynamic, 1, 0, 6, 1>;
  /// One sighting or control: its coefficients in the columns of a node that it touches.
  struct Part {
    int node;
    Coefficients coefficients;
  };
  using Row = std::vector<Part>;

  explicit RotationForm(const Survey& survey);

  int verticalNode() const { return static_cast<int>(bodies.rows.size()); }
  /// Of a body's point; its coefficients are the point's coordinates, and one for the shift.
  Row rowOf(std::size_t body, const Eigen::Vector3d& place) const;
  Row sightingRow(std::size_t sighting) const;
  void addTarget(std::size_t target);
  void addCross(const Row& one, const Row& other, double factor);
  void addSquare(const Row& row, double factor);
  /// Per body its rows of M Z'.
  std::vector<Eigen::Matrix3d> slopes(const Elimination& elimination) const;
  Eigen::Matrix3d rotationOf(const Placements& placements, std::size_t body) const;
  /// The body's three columns, as columns.
  Eigen::Matrix3d columnsOf(const Eigen::MatrixXd& rows, std::size_t body) const;

  const Survey* survey;
  Bodies bodies;
  double lengthUnit;
  BlockMatrix form;
  std::vector<int> rotations;
};

}  // namespace tiepoint::workbench::analysis
