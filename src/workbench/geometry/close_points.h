// The clusters of close points that a matching by distance sees.
#pragma once

#include <Eigen/Dense>
#include <map>
#include <vector>

#include "platform/sdk/od_ge_matrix3d.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

struct PlacedPoint {
  /// In the common system.
  Eigen::Vector3d position;
  const SessionPoint* point = nullptr;
};

/// The points of the groups that have a motion, in the state's order. The state must outlive them.
std::vector<PlacedPoint> placedPoints(const SessionState& state,
                                      const std::map<ZOR::reg::GroupId, OdGeMatrix3d>& toCommon);

/// Closer than `tolerance`, or at a distance that isn't a number.
bool areClose(const PlacedPoint& a, const PlacedPoint& b, double tolerance);

using PointCluster = std::vector<PlacedPoint>;

/// The sets of points connected by steps between close points, each in ascending id; only those of two
/// points or more.
std::vector<PointCluster> closePointClusters(std::vector<PlacedPoint> placed, double tolerance);

}  // namespace tiepoint::workbench
