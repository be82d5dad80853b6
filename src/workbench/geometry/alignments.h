// The ways in which a station's points fit onto points that are placed already.
#pragma once

#include <Eigen/Dense>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "workbench/geometry/station_triangles.h"

namespace tiepoint::workbench {

/// A station's points in its own system.
struct StationShape {
  std::vector<Eigen::Vector3d> points;
  std::vector<Triangle> triangles;
};

/// What a station is laid onto: targets in one system, and the stations that saw them.
struct TargetField {
  struct Seen {
    const StationShape* shape = nullptr;
    /// For each point of the shape its index in `targets`.
    std::vector<std::size_t> target;
  };
  std::vector<Eigen::Vector3d> targets;
  std::vector<Seen> stations;
};

/// From indices of a station's points to those of the targets that they lie on.
using Placement = std::map<std::size_t, std::size_t>;

/// Two placements tell different stories: they put two points or more on other targets, or have
/// fewer than three in common.
bool areRivals(const Placement& one, const Placement& other);

/// Placements by a rigid motion that lays at least `atLeast` of the station's points (3 or more)
/// within `reach` of a target each, no two of them rivals of the same story; the most points first.
/// Every triangle of the station is tried on every triangle of the field that has its sides, and the
/// `most` that explain the most points are kept.
std::vector<Placement> alignments(const TargetField& field, const StationShape& station, double reach,
                                  std::size_t atLeast, std::size_t most);

}  // namespace tiepoint::workbench
