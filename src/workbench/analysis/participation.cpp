#include "workbench/analysis/participation.h"

#include <map>
#include <utility>

namespace tiepoint::workbench::analysis {

namespace {

std::size_t requiredTargets(const Station& station) {
  if (station.held) return 1;
  return station.levelled ? 2 : 3;
}

std::vector<bool> lastOfEachName(const std::vector<Observation>& observations) {
  std::map<std::pair<std::size_t, std::size_t>, std::size_t> last;
  for (std::size_t o = 0; o < observations.size(); ++o) last[{observations[o].station, observations[o].target}] = o;
  std::vector<bool> used(observations.size(), false);
  for (const auto& entry : last) used[entry.second] = true;
  return used;
}

struct Counts {
  std::vector<std::size_t> ofStation, ofTarget, freeOfTarget;
};

Counts countSightings(const Network& network, const std::vector<bool>& used) {
  Counts counts{std::vector<std::size_t>(network.stations.size()), std::vector<std::size_t>(network.targets.size()),
                std::vector<std::size_t>(network.targets.size())};
  for (std::size_t o = 0; o < used.size(); ++o) {
    if (!used[o]) continue;
    const Observation& observation = network.observations[o];
    ++counts.ofStation[observation.station];
    ++counts.ofTarget[observation.target];
    if (!network.stations[observation.station].held) ++counts.freeOfTarget[observation.target];
  }
  return counts;
}

}  // namespace

Participation participationOf(const Network& network) {
  Participation part;
  part.observations = lastOfEachName(network.observations);
  for (bool changed = true; changed;) {
    const Counts counts = countSightings(network, part.observations);
    part.stations.assign(network.stations.size(), false);
    part.targets.assign(network.targets.size(), false);
    for (std::size_t s = 0; s < network.stations.size(); ++s) {
      part.stations[s] = counts.ofStation[s] >= requiredTargets(network.stations[s]);
    }
    for (std::size_t t = 0; t < network.targets.size(); ++t) {
      const std::size_t sightings = counts.ofTarget[t] + (network.targets[t].control ? 1 : 0);
      part.targets[t] = sightings >= 2 && counts.freeOfTarget[t] >= 1;
    }
    changed = false;
    for (std::size_t o = 0; o < part.observations.size(); ++o) {
      const Observation& observation = network.observations[o];
      if (!part.observations[o] || (part.stations[observation.station] && part.targets[observation.target])) continue;
      part.observations[o] = false;
      changed = true;
    }
  }
  return part;
}

}  // namespace tiepoint::workbench::analysis
