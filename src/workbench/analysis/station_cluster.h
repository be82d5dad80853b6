// Stations that stand firmly to one another, with the places of the targets that they see.
#pragma once

#include <map>
#include <vector>

#include "workbench/analysis/placement.h"
#include "workbench/analysis/rigid_fit.h"

namespace tiepoint::workbench::analysis {

class StationCluster {
 public:
  explicit StationCluster(const Survey& survey_) : survey(&survey_) {}

  /// Its z axis is the vertical of the common system.
  bool isLevel = false;

  void add(std::size_t station, const Placement& placement);
  void addTarget(std::size_t target, const Eigen::Vector3d& place);
  /// Moves all of the other by the motion and takes them over.
  void absorb(const StationCluster& other, const Pose& motion);

  bool knowsTarget(std::size_t target) const { return targets.count(target) > 0; }
  const std::map<std::size_t, Placement>& stations() const { return placements; }
  /// From the station's local places, or from the other cluster's targets, to this cluster's targets.
  std::vector<FitPair> pairsWith(std::size_t station) const;
  std::vector<FitPair> pairsWith(const StationCluster& other) const;

 private:
  struct Seen {
    Eigen::Vector3d sum = Eigen::Vector3d::Zero();
    double count = 0.0;
    Eigen::Vector3d mean() const { return sum / count; }
  };

  const Survey* survey;
  std::map<std::size_t, Placement> placements;
  std::map<std::size_t, Seen> targets;
};

}  // namespace tiepoint::workbench::analysis
