// What an adjustment is asked for, by names. Names are UTF-8, lengths in drawing units.
#pragma once

#include <Eigen/Core>
#include <optional>
#include <string>
#include <vector>

#include "workbench/values/adjustment_network.h"
#include "workbench/values/adjustment_options.h"
#include "workbench/values/point_choice.h"

namespace tiepoint::workbench {

/// Far beyond any instrument on either side; past them, squares of standard deviations leave the range of
/// numbers.
inline constexpr double smallestSigma = 1e-15, largestSigma = 1e15;

inline bool isUsableSigma(double sigma) { return sigma >= smallestSigma && sigma <= largestSigma; }

/// Between which the level of a test and its power may lie.
inline constexpr double smallestShare = 1e-12, largestShare = 1.0 - 1e-12;

/// The standard deviation of a coordinate, of all that a station measured or of one point of it.
struct SigmaChoice {
  PointChoice points;
  /// Usable.
  double sigma = 1.0;
};

/// A target with a given place in the common system.
struct ControlTarget {
  std::string name;
  analysis::Control control;
};

/// Where a station stood before.
struct StationPose {
  std::string group;
  analysis::Pose pose;
};

/// A place in a station's system.
struct StationPlace {
  std::string group;
  Eigen::Vector3d place = Eigen::Vector3d::Zero();
};

/// An empty path isn't given.
struct AdjustmentRequest {
  /// Of all measurements that nothing else is said of.
  std::optional<double> sigma = std::nullopt;
  std::vector<SigmaChoice> sigmas = {};
  std::string sigmasFile = {};
  std::string controlFile = {};
  /// Stations that turn about the vertical alone.
  std::vector<std::string> levelled = {};
  bool allLevelled = false;
  std::string startFile = {};
  std::optional<analysis::VarianceScale> variance = std::nullopt;
  std::optional<double> alpha = std::nullopt;
  std::optional<double> power = std::nullopt;
  std::string carryFile = {};
  std::vector<PointChoice> trace = {};
};

}  // namespace tiepoint::workbench
