// The rigid motion that lays one row of points best onto another.
#pragma once

#include <vector>

#include "workbench/values/adjustment_network.h"

namespace tiepoint::workbench::analysis {

struct FitPair {
  Eigen::Vector3d from, to;
  double weight = 1.0;
};

/// Least weighted sum of squares (Kabsch 1976, 1978); with `levelled` the rotation is about z. Pairs on one
/// line leave the rotation about it open: one of the best is returned. Without pairs the identity.
Pose fitRigid(const std::vector<FitPair>& pairs, bool levelled);

/// Weighted, of the distances that the motion leaves.
double sumOfSquares(const std::vector<FitPair>& pairs, const Pose& motion);

/// From the system of the second to where the first leads: first after second.
Pose composed(const Pose& first, const Pose& second);
Pose inverted(const Pose& pose);

}  // namespace tiepoint::workbench::analysis
