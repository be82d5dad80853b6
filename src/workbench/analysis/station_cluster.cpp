#include "workbench/analysis/station_cluster.h"

namespace tiepoint::workbench::analysis {

void StationCluster::add(std::size_t station, const Placement& placement) {
  placements[station] = placement;
  for (const std::size_t s : survey->stations[station].sightings) {
    addTarget(survey->sightings[s].target, placement.carry(survey->sightings[s].local));
  }
}

void StationCluster::addTarget(std::size_t target, const Eigen::Vector3d& place) {
  Seen& seen = targets[target];
  seen.sum += place;
  seen.count += 1.0;
}

void StationCluster::absorb(const StationCluster& other, const Pose& motion) {
  for (const auto& [station, placement] : other.placements) {
    add(station, {motion.rotation * placement.rotation, motion.rotation * placement.centre + motion.shift});
  }
}

std::vector<FitPair> StationCluster::pairsWith(std::size_t station) const {
  std::vector<FitPair> pairs;
  for (const std::size_t s : survey->stations[station].sightings) {
    const auto known = targets.find(survey->sightings[s].target);
    if (known != targets.end()) pairs.push_back({survey->sightings[s].local, known->second.mean(), 1.0});
  }
  return pairs;
}

std::vector<FitPair> StationCluster::pairsWith(const StationCluster& other) const {
  std::vector<FitPair> pairs;
  for (const auto& [target, seen] : other.targets) {
    const auto known = targets.find(target);
    if (known != targets.end()) pairs.push_back({seen.mean(), known->second.mean(), 1.0});
  }
  return pairs;
}

}  // namespace tiepoint::workbench::analysis
