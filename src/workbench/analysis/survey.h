// A network as the computation holds it: only what takes part, and every coordinate small.
#pragma once

#include <Eigen/Core>
#include <cstddef>
#include <vector>

#include "workbench/analysis/participation.h"
#include "workbench/values/adjustment_network.h"

namespace tiepoint::workbench::analysis {

struct Sighting {
  /// In the network.
  std::size_t observation = 0;
  std::size_t station = 0;
  std::size_t target = 0;
  /// In the station's axes, from the mean of the station's points in use.
  Eigen::Vector3d local = Eigen::Vector3d::Zero();
  /// One over the variance of a coordinate.
  double information = 0.0;
};

struct SurveyStation {
  /// In the network.
  std::size_t index = 0;
  bool held = false;
  bool levelled = false;
  /// Gives a free network its axes: not moved while the minimum is searched for.
  bool frame = false;
  /// Mean of its points in use, in its own system.
  Eigen::Vector3d middle = Eigen::Vector3d::Zero();
  /// Root of the mean square distance of its points from that mean.
  double lever = 0.0;
  double information = 0.0;
  std::vector<std::size_t> sightings;

  bool moves() const { return !held && !frame; }
  /// Of its motion: (rotation about z, shift) or (rotation, shift).
  int width() const { return levelled ? 4 : 6; }
};

enum class TargetKind { adjusted, controlled, held };

struct SurveyTarget {
  /// In the network.
  std::size_t index = 0;
  TargetKind kind = TargetKind::adjusted;
  /// The control's, less the origin; its information and covariance are zero for others.
  Eigen::Vector3d place = Eigen::Vector3d::Zero();
  Eigen::Matrix3d information = Eigen::Matrix3d::Zero();
  Eigen::Matrix3d covariance = Eigen::Matrix3d::Zero();
  std::vector<std::size_t> sightings;
};

struct Survey {
  DatumKind datum = DatumKind::free;
  /// Of the free datum: how many motions of the whole leave all residuals as they are.
  int defect = 0;
  /// Subtracted from all places in the common system.
  Eigen::Vector3d origin = Eigen::Vector3d::Zero();
  std::vector<SurveyStation> stations;
  std::vector<SurveyTarget> targets;
  std::vector<Sighting> sightings;

  std::size_t observationCount() const;
  /// Without those of a frame.
  std::size_t unknownCount() const;
};

/// Keeps the network's order.
Survey surveyOf(const Network& network, const Participation& participation);

}  // namespace tiepoint::workbench::analysis
