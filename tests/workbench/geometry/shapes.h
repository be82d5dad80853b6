// Layouts of targets, and what a station makes of them.
#pragma once

#include <Eigen/Geometry>
#include <numeric>
#include <vector>

#include "workbench/geometry/alignments.h"

namespace tiepoint::workbench {

using Points = std::vector<Eigen::Vector3d>;

/// Five places whose distances all differ.
inline const Points irregular{{0, 0, 0}, {10, 0, 1}, {3, 8, 2}, {-4, 5, 7}, {7, -3, 5}};
/// A rectangle: turned by half a circle it is the same.
inline const Points rectangle{{0, 0, 0}, {10, 0, 0}, {10, 6, 0}, {0, 6, 0}};

/// The points as another station has them.
inline Points turned(const Points& points) {
  const Eigen::AngleAxisd turn(1.1, Eigen::Vector3d(1, 2, 3).normalized());
  Points moved;
  for (const Eigen::Vector3d& point : points) moved.push_back(turn * point + Eigen::Vector3d(100, -20, 5));
  return moved;
}

inline Points joined(Points first, const Points& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

inline StationShape shapeOf(const Points& points) { return {points, stationTriangles(points, flattestTriangle)}; }

/// What one station saw, in its own system; `shape` must outlive it.
inline TargetField fieldOf(const StationShape& shape) {
  TargetField field;
  field.targets = shape.points;
  std::vector<std::size_t> places(shape.points.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  field.stations.push_back({&shape, places});
  return field;
}

/// Each of the first `count` points on the target of the same number.
inline Placement inOrder(std::size_t count) {
  Placement placement;
  for (std::size_t i = 0; i < count; ++i) placement[i] = i;
  return placement;
}

}  // namespace tiepoint::workbench
