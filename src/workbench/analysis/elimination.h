// The targets' best places for given stations, so that the stations alone remain unknown.
#pragma once

#include <vector>

#include "workbench/analysis/placement.h"

namespace tiepoint::workbench::analysis {

struct EliminatedTarget {
  /// Less the survey's origin.
  Eigen::Vector3d place = Eigen::Vector3d::Zero();
  /// Inverse of the sum of the information of all its sightings and its control; zero when it is held.
  Eigen::Matrix3d cofactor = Eigen::Matrix3d::Zero();
};

/// What the stations' places make of everything else. Residuals are measured less adjusted, common axes.
struct Elimination {
  std::vector<EliminatedTarget> targets;
  /// Of each sighting.
  std::vector<Eigen::Vector3d> residuals;
  /// Of each target with a covariance of its own: given place less adjusted; zero for others.
  std::vector<Eigen::Vector3d> controlResiduals;
  /// Of all residuals, each weighted with its information.
  double sumOfSquares = 0.0;
};

Elimination eliminateTargets(const Survey& survey, const Placements& placements);

/// The sighting's arm: from its station's centre to the adjusted target. There, and not at the measured
/// place, the motions of the whole survey are free of any residual, so that nothing depends on the datum.
Eigen::Vector3d armOf(const Survey& survey, const Placements& placements, const Elimination& elimination,
                      std::size_t sighting);

/// The length of the box around all targets, along its diagonal.
double extentOf(const Elimination& elimination);

}  // namespace tiepoint::workbench::analysis
