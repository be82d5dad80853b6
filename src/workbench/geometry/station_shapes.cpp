#include "workbench/geometry/station_shapes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

std::map<CommonPointId, RefPointId> namesOf(const SessionState& state, GroupId group) {
  std::map<CommonPointId, RefPointId> names;
  for (const SessionPoint& point : state.points) {
    const RefPoint& record = point.record;
    if (record.groupId == group && isEligible(record)) names.emplace(record.commonId, record.id);
  }
  return names;
}

bool hasNameTwice(const SessionState& state) {
  std::vector<std::pair<GroupId, CommonPointId>> used;
  used.reserve(state.points.size());
  for (const SessionPoint& point : state.points) {
    if (point.record.active) used.emplace_back(point.record.groupId, point.record.commonId);
  }
  std::sort(used.begin(), used.end());
  return std::adjacent_find(used.begin(), used.end()) != used.end();
}

}  // namespace

Stations stationsOf(const SessionState& state) {
  Stations stations;
  for (std::size_t i = 0; i < state.points.size(); ++i) {
    const RefPoint& record = state.points[i].record;
    if (!record.included) continue;
    Station& station = stations[record.groupId];
    const Eigen::Vector3d position(record.position.x, record.position.y, record.position.z);
    if (!position.allFinite()) continue;
    station.indexInShape.emplace(record.id, station.indices.size());
    station.shape.points.push_back(position);
    station.indices.push_back(i);
  }
  for (auto& [group, station] : stations)
    station.shape.triangles = stationTriangles(station.shape.points, flattestTriangle);
  return stations;
}

PointPairs sharedNames(const SessionState& state, GroupId first, GroupId second) {
  const std::map<CommonPointId, RefPointId> here = namesOf(state, first);
  PointPairs shared;
  for (const auto& [name, there] : namesOf(state, second)) {
    const auto found = here.find(name);
    if (found != here.end()) shared.emplace_back(found->second, there);
  }
  return shared;
}

NamesByGroup namesByGroup(const SessionState& state) {
  NamesByGroup names;
  for (const SessionPoint& point : state.points) {
    if (isEligible(point.record)) names[point.record.groupId].push_back(point.record.commonId);
  }
  for (auto& [group, those] : names) {
    std::sort(those.begin(), those.end());
    those.erase(std::unique(those.begin(), those.end()), those.end());
  }
  return names;
}

std::size_t countSharedNames(const NamesByGroup& names, GroupId first, GroupId second) {
  const auto here = names.find(first), there = names.find(second);
  if (here == names.end() || there == names.end()) return 0;
  std::size_t count = 0;
  auto b = there->second.begin();
  for (const CommonPointId name : here->second) {
    while (b != there->second.end() && *b < name) ++b;
    if (b != there->second.end() && *b == name) ++count;
  }
  return count;
}

double largestDiscrepancy(const SessionState& state) {
  double largest = 0.0;
  for (const auto& [point, discrepancy] : state.discrepancies) {
    if (std::isnan(discrepancy)) return discrepancy;
    largest = std::max(largest, discrepancy);
  }
  return largest;
}

bool isSound(const SessionState& state, double limit) {
  return largestDiscrepancy(state) <= limit && !hasNameTwice(state);
}

}  // namespace tiepoint::workbench
