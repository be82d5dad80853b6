// The normal equations of the stations that move, with the targets eliminated.
#pragma once

#include <vector>

#include "workbench/analysis/block_matrix.h"
#include "workbench/analysis/elimination.h"

namespace tiepoint::workbench::analysis {

/// What the matrix holds beside the squares of the design's rows: nothing, which is what all statements are
/// made with, or also how the residuals bend as the stations turn, which makes it the second derivative.
enum class Curvature { ofDesign, whole };

class NormalEquations {
 public:
  explicit NormalEquations(const Survey& survey);

  /// Fills matrix and gradient. The arms count to the adjusted targets; for the second derivative to where
  /// they were measured.
  void build(const Placements& placements, const Elimination& elimination, Curvature curvature = Curvature::ofDesign);

  /// Of half the sum of squares.
  const BlockMatrix& matrix() const { return normals; }
  const Eigen::VectorXd& gradient() const { return slope; }
  /// The station's node in the matrix; -1 when it doesn't move.
  int node(std::size_t station) const { return nodes[station]; }
  const std::vector<std::size_t>& stationOfNode() const { return stations; }
  /// The station's part of a vector of unknowns; zeros when it doesn't move.
  StationVector partOf(const Eigen::VectorXd& unknowns, std::size_t station) const;
  /// Of each row the number that makes the normal matrix free of units: one over the root of the station's
  /// information, and for a rotation also over its lever.
  Eigen::VectorXd unitFreeScale() const;

 private:
  /// A sighting of a target by a station that moves.
  struct MovingRow {
    int node;
    std::size_t sighting;
    double information;
    /// Of all other sightings of the target.
    double others;
    PointRows rows;
  };

  std::vector<MovingRow> movingRows(const SurveyTarget& target, const Placements& placements,
                                    const Elimination& elimination) const;
  void addTarget(std::size_t target, const Placements& placements, const Elimination& elimination);
  void addBending(const MovingRow& row, const Placements& placements, const Elimination& elimination);

  const Survey& survey;
  Curvature curvature = Curvature::ofDesign;
  std::vector<int> nodes;
  std::vector<std::size_t> stations;
  BlockMatrix normals;
  Eigen::VectorXd slope;
};

}  // namespace tiepoint::workbench::analysis
