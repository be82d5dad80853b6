// A pose as the matrix that a drawing knows, and back.
#pragma once

#include "platform/sdk/od_ge_matrix3d.h"
#include "workbench/values/adjustment_network.h"

namespace tiepoint::workbench {

OdGeMatrix3d matrixOf(const analysis::Pose& pose);
/// Of a rigid motion.
analysis::Pose poseOf(const OdGeMatrix3d& motion);

}  // namespace tiepoint::workbench
