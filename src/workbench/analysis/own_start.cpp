#include "workbench/analysis/own_start.h"

#include <algorithm>
#include <optional>
#include <queue>
#include <utility>

#include "workbench/analysis/station_cluster.h"

namespace tiepoint::workbench::analysis {

namespace {

constexpr std::size_t targetsThatJoin = 3, targetsThatJoinLevel = 2;

class Growth {
 public:
  explicit Growth(const Survey& survey_) : survey(survey_), isPlaced(survey.stations.size(), false) {}

  /// Stations join the cluster, the one that shares the most targets with it first.
  void grow(StationCluster& cluster) {
    for (const auto& entry : cluster.stations()) isPlaced[entry.first] = true;
    shared.assign(survey.stations.size(), 0);
    counted.assign(survey.targets.size(), false);
    queue = {};
    for (std::size_t t = 0; t < survey.targets.size(); ++t) count(cluster, t);
    while (!queue.empty()) {
      const std::size_t station = survey.stations.size() - queue.top().second;
      const bool isStale = queue.top().first != shared[station];
      queue.pop();
      if (!isStale && !isPlaced[station]) join(cluster, station);
    }
  }

  std::optional<std::size_t> firstUnplaced() const {
    std::optional<std::size_t> first;
    for (std::size_t s = 0; s < isPlaced.size(); ++s) {
      if (isPlaced[s]) continue;
      if (!first || (survey.stations[s].levelled && !survey.stations[*first].levelled)) first = s;
    }
    return first;
  }

 private:
  /// A target that the cluster has come to know counts for all stations that see it.
  void count(const StationCluster& cluster, std::size_t target) {
    if (counted[target] || !cluster.knowsTarget(target)) return;
    counted[target] = true;
    for (const std::size_t s : survey.targets[target].sightings) {
      const std::size_t station = survey.sightings[s].station;
      // Of equals the first station comes first.
      if (!isPlaced[station]) queue.emplace(++shared[station], survey.stations.size() - station);
    }
  }

  void join(StationCluster& cluster, std::size_t station) {
    const bool level = cluster.isLevel && survey.stations[station].levelled;
    if (shared[station] < (level ? targetsThatJoinLevel : targetsThatJoin)) return;
    const Pose pose = fitRigid(cluster.pairsWith(station), level);
    isPlaced[station] = true;
    cluster.add(station, {pose.rotation, pose.shift});
    for (const std::size_t s : survey.stations[station].sightings) count(cluster, survey.sightings[s].target);
  }

  const Survey& survey;
  std::vector<bool> isPlaced, counted;
  std::vector<std::size_t> shared;
  std::priority_queue<std::pair<std::size_t, std::size_t>> queue;
};

/// What fixes the coordinates: held stations and control.
std::optional<StationCluster> heldBody(const Survey& survey) {
  if (survey.datum == DatumKind::free) return std::nullopt;
  StationCluster body(survey);
  body.isLevel = true;
  for (std::size_t t = 0; t < survey.targets.size(); ++t) {
    if (survey.targets[t].kind != TargetKind::adjusted) body.addTarget(t, survey.targets[t].place);
  }
  for (std::size_t s = 0; s < survey.stations.size(); ++s) {
    if (survey.stations[s].held) body.add(s, placementOf(survey, s, {}));
  }
  return body;
}

/// The stations with a start; a held one's start tells where the common system lies in that of the starts.
std::optional<StationCluster> givenStarts(const Network& network, const Survey& survey) {
  StationCluster given(survey);
  Pose toCommon;
  bool isCommon = false;
  for (const SurveyStation& station : survey.stations) {
    const auto& start = network.stations[station.index].start;
    if (!start || !station.held || isCommon) continue;
    toCommon = inverted(*start);
    isCommon = true;
  }
  for (std::size_t s = 0; s < survey.stations.size(); ++s) {
    const SurveyStation& station = survey.stations[s];
    const auto& start = network.stations[station.index].start;
    if (!start || station.held) continue;
    given.isLevel = given.isLevel || isCommon || station.levelled;
    const Pose pose = composed(toCommon, *start);
    given.add(s, placementOf(survey, s, {nearestRotation(pose.rotation), pose.shift}));
  }
  if (given.stations().empty()) return std::nullopt;
  return given;
}

/// Whether so many pairs join two clusters.
bool isEnough(const StationCluster& one, const StationCluster& other, std::size_t pairs) {
  return pairs >= (one.isLevel && other.isLevel ? targetsThatJoinLevel : targetsThatJoin);
}

Pose fitOnto(const StationCluster& standing, const StationCluster& other) {
  const std::vector<FitPair> pairs = standing.pairsWith(other);
  return fitRigid(pairs, standing.isLevel && other.isLevel && pairs.size() < targetsThatJoin);
}

/// The one that is joined best comes first; what shares too little is laid on as well as it can be.
void join(std::vector<StationCluster>& clusters) {
  while (clusters.size() > 1) {
    std::size_t best = 1, most = 0;
    for (std::size_t c = 1; c < clusters.size(); ++c) {
      const std::size_t pairs = clusters[0].pairsWith(clusters[c]).size();
      if (pairs <= most) continue;
      best = c;
      most = pairs;
    }
    clusters[0].absorb(clusters[best], fitOnto(clusters[0], clusters[best]));
    clusters.erase(clusters.begin() + static_cast<std::ptrdiff_t>(best));
  }
}

StationCluster rootAt(const Survey& survey, std::size_t station) {
  StationCluster root(survey);
  root.isLevel = survey.stations[station].levelled;
  root.add(station, {});
  return root;
}

std::vector<StationCluster> firstClusters(const Network& network, const Survey& survey) {
  std::vector<StationCluster> clusters;
  auto body = heldBody(survey);
  auto given = givenStarts(network, survey);
  if (body && given) {
    const bool fits = isEnough(*body, *given, body->pairsWith(*given).size());
    body->absorb(*given, fits ? fitOnto(*body, *given) : Pose{});
    given.reset();
  }
  if (body) clusters.push_back(std::move(*body));
  if (given) clusters.push_back(std::move(*given));
  return clusters;
}

}  // namespace

Placements onDatum(const Survey& survey, const Placements& placements) {
  Placements result = placements;
  Pose motion;
  for (std::size_t s = 0; s < result.size(); ++s) {
    if (survey.stations[s].frame) motion = inverted({placements[s].rotation, placements[s].centre});
  }
  for (std::size_t s = 0; s < result.size(); ++s) {
    const SurveyStation& station = survey.stations[s];
    Placement& placement = result[s];
    if (!station.moves()) {
      placement = placementOf(survey, s, {});
      continue;
    }
    placement.centre = motion.rotation * placement.centre + motion.shift;
    const Eigen::Matrix3d rotation = motion.rotation * placement.rotation;
    placement.rotation = station.levelled ? nearestLevelRotation(rotation) : nearestRotation(rotation);
  }
  return result;
}

Placements startOf(const Network& network, const Survey& survey) {
  std::vector<StationCluster> clusters = firstClusters(network, survey);
  Growth growth(survey);
  for (StationCluster& cluster : clusters) growth.grow(cluster);
  while (const auto station = growth.firstUnplaced()) {
    clusters.push_back(rootAt(survey, *station));
    growth.grow(clusters.back());
  }
  join(clusters);
  Placements placements(survey.stations.size());
  for (const auto& [station, placement] : clusters.front().stations()) placements[station] = placement;
  return onDatum(survey, placements);
}

}  // namespace tiepoint::workbench::analysis
