// Where a station stands while the minimum is searched for, and how it moves.
#pragma once

#include <Eigen/Core>
#include <vector>

#include "workbench/analysis/survey.h"

namespace tiepoint::workbench::analysis {

/// Columns of one station: (rotation, shift) or, levelled, (rotation about z, shift).
using StationVector = Eigen::Matrix<double, Eigen::Dynamic, 1, 0, 6, 1>;
/// How a point that a station carries follows the station's columns.
using PointRows = Eigen::Matrix<double, 3, Eigen::Dynamic, 0, 3, 6>;

struct Placement {
  Eigen::Matrix3d rotation = Eigen::Matrix3d::Identity();
  /// Of the mean of the station's points, less the survey's origin.
  Eigen::Vector3d centre = Eigen::Vector3d::Zero();
  /// What a double of the centre can't hold: in long chains the rounding of far places would bend the whole.
  Eigen::Vector3d remainder = Eigen::Vector3d::Zero();

  /// `local` counts from the mean of the station's points.
  Eigen::Vector3d carry(const Eigen::Vector3d& local) const { return rotation * local + centre; }
};

/// One for each station of a survey.
using Placements = std::vector<Placement>;

Eigen::Matrix3d crossMatrix(const Eigen::Vector3d& v);

/// exp([turn]x): about the axis `turn` by its length in radians.
Eigen::Matrix3d rotationBy(const Eigen::Vector3d& turn);

/// The nearest rotation, and the nearest one about z.
Eigen::Matrix3d nearestRotation(const Eigen::Matrix3d& matrix);
Eigen::Matrix3d nearestLevelRotation(const Eigen::Matrix3d& matrix);

/// At a point that lies `arm` from the centre: -[arm]x and the identity.
PointRows pointRows(const Eigen::Vector3d& arm, bool levelled);

/// The motion's rotation and shift, whatever the station's width.
Eigen::Vector3d turnOf(const StationVector& motion);
Eigen::Vector3d shiftOf(const StationVector& motion);

/// The placement after the motion.
Placement moved(const Placement& placement, const StationVector& motion);

/// Of a survey's station: from the placement to the pose in the common system, and back.
Pose poseOf(const Survey& survey, std::size_t station, const Placement& placement);
Placement placementOf(const Survey& survey, std::size_t station, const Pose& pose);

}  // namespace tiepoint::workbench::analysis
