// The cofactors (covariances for a variance factor of 1) of stations, targets and observations.
#pragma once

#include <vector>

#include "workbench/analysis/free_datum.h"
#include "workbench/analysis/solution.h"
#include "workbench/analysis/sparse_inverse.h"

namespace tiepoint::workbench::analysis {

/// A station's rows of Q a'.
using StationRows = Eigen::Matrix<double, Eigen::Dynamic, 3, 0, 6, 3>;

struct ObservationCofactors {
  /// a Q a', of the adjusted observation less its target.
  Eigen::Matrix3d own = Eigen::Matrix3d::Zero();
  /// Q a', for each sighting of the target the rows of its station; zero rows of a held station.
  std::vector<StationRows> stations;
};

/// With N^-1 at the places of its factor alone: stations that share a target are neighbours there, and
/// nothing else is asked for. Free networks' are those of the S-transformation.
class Cofactors {
 public:
  /// The factor is that of the positive definite normal matrix.
  explicit Cofactors(const Solution& solution);

  StationColumns station(std::size_t station) const;
  Eigen::Matrix3d target(std::size_t target) const;
  /// For each sighting of the target; then, of a target with a covariance of its own, for its control.
  std::vector<ObservationCofactors> ofTarget(std::size_t target) const;
  /// Q a' at every station, for one sighting: three solves.
  std::vector<StationRows> reachOf(std::size_t sighting) const;

 private:
  /// Q between the stations of a target's sightings and the target, with the frame held.
  std::vector<StationRows> stationsToTarget(std::size_t target) const;
  StationColumns heldFrame(std::size_t one, std::size_t other) const;
  ObservationCofactors ofObservation(std::size_t target, const std::vector<StationRows>& toTarget,
                                     const PointRows* rows, std::size_t station) const;

  const Solution& solution;
  SparseInverse inverse;
  FreeDatum datum;
};

}  // namespace tiepoint::workbench::analysis
