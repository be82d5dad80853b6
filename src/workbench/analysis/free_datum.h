// From the cofactors with one station held to those in which all targets count alike: Baarda's
// S-transformation (1973; Koch 1999).
#pragma once

#include <vector>

#include "workbench/analysis/solution.h"

namespace tiepoint::workbench::analysis {

/// Columns of station rows, or of the rows of a target.
using StationColumns = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, 0, 6, 6>;
using TargetColumns = Eigen::Matrix<double, 3, Eigen::Dynamic, 0, 3, 6>;

/// With G the motions of the whole survey and B the same in the rows of the targets, S = I - G (B'G)^-1 B'.
/// Six solves (four when a station is levelled), and S Q S' is at hand at any place where Q is. In a datum
/// that isn't free, S is the identity.
class FreeDatum {
 public:
  explicit FreeDatum(const Solution& solution);

  bool isIdentity() const { return defect == 0; }
  /// To be added to Q of a station, or of a target.
  StationColumns stationCorrection(std::size_t station) const;
  Eigen::Matrix3d targetCorrection(std::size_t target) const;
  /// a Q B, of one observation's rows: `ofStation` of its station, none for control.
  TargetColumns observationMotion(const PointRows* ofStation, std::size_t station, std::size_t target) const;
  /// To be added to the station's rows of Q a'.
  Eigen::Matrix<double, Eigen::Dynamic, 3, 0, 6, 3> rowCorrection(std::size_t station,
                                                                  const TargetColumns& observationMotion) const;

 private:
  StationColumns motionOfStation(const Solution& solution, std::size_t station) const;
  TargetColumns motionOfPoint(const Eigen::Vector3d& place) const;
  Eigen::MatrixXd stationSide(const Solution& solution) const;
  void addTargets(const Solution& solution);

  int defect = 0;
  Eigen::Vector3d middle = Eigen::Vector3d::Zero();
  double extent = 1.0;
  /// G of stations and targets, Q B likewise.
  std::vector<StationColumns> stationG, stationW;
  std::vector<TargetColumns> targetG, targetW;
  /// (B'G)^-1 and B'QB.
  Eigen::MatrixXd inverse, core;
};

}  // namespace tiepoint::workbench::analysis
