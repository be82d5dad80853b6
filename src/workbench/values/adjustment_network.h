// What an adjustment starts from: stations, targets, and what was measured between them.
#pragma once

#include <Eigen/Core>
#include <cstddef>
#include <optional>
#include <vector>

namespace tiepoint::workbench::analysis {

/// From a station's system to the common one: a point p goes to rotation * p + shift.
struct Pose {
  Eigen::Matrix3d rotation = Eigen::Matrix3d::Identity();
  /// Drawing units.
  Eigen::Vector3d shift = Eigen::Vector3d::Zero();
};

struct Station {
  /// Its pose is the identity, whatever its measurements say. All held stations are one body.
  bool held = false;
  /// Turns about the common z axis alone. A held station never turns.
  bool levelled = false;
  /// Where the search for the minimum begins; all starts stand in one system, which need not be the
  /// common one. Stations without a start are placed by the targets that they share with others.
  std::optional<Pose> start;
};

/// A target's given place in the common system.
struct Control {
  Eigen::Vector3d place = Eigen::Vector3d::Zero();
  /// Symmetric and positive definite, in the axes of the common system; without it the target is held.
  std::optional<Eigen::Matrix3d> covariance;
};

struct Target {
  std::optional<Control> control;
};

/// One target measured by one station.
struct Observation {
  std::size_t station = 0;
  std::size_t target = 0;
  /// In the station's system.
  Eigen::Vector3d place = Eigen::Vector3d::Zero();
  /// Standard deviation of a coordinate, above 0.
  double sigma = 1.0;
  /// The variance is sigma * sigma / weight. Above 0.
  double weight = 1.0;
};

/// Order matters in three places: the first station (or the first levelled one) gives a free network its
/// axes, of two observations of one target by one station the last holds, and sums run in this order.
struct Network {
  std::vector<Station> stations;
  std::vector<Target> targets;
  std::vector<Observation> observations;
};

/// Where the coordinates of the common system come from.
enum class DatumKind { base, control, baseAndControl, free };

}  // namespace tiepoint::workbench::analysis
