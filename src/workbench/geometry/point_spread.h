// How far registered points of one name stay apart.
#pragma once

#include <Eigen/Core>
#include <vector>

#include "workbench/values/point_spread.h"

namespace tiepoint::workbench {

/// Of the points of each target, all in the common system, as a session tells it of what it has registered
/// itself: cut to the same decimals, in the same bins.
PointSpread spreadOf(const std::vector<std::vector<Eigen::Vector3d>>& pointsOfTargets);

}  // namespace tiepoint::workbench
