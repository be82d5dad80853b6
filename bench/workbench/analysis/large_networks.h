// Large surveys for the benchmarks of the adjustment, the same on every run.
#pragma once

#include <Eigen/Geometry>
#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "workbench/values/adjustment_network.h"

namespace tiepoint::workbench::analysis {

constexpr std::size_t targetsSeen = 20;
/// Drawing units: 1 mm in metres.
constexpr double measuringNoise = 0.001;
/// Along the survey; farther targets are never among the nearest.
constexpr double reach = 100.0;

/// Each station sees the targets that are nearest to it; three targets for a station.
inline Network networkOver(std::size_t stations, double length, double width) {
  std::mt19937_64 random(36);
  std::uniform_real_distribution<double> share(0.0, 1.0);
  std::normal_distribution<double> noise(0.0, measuringNoise);
  Network network;
  network.stations.resize(stations);
  network.stations[0].held = true;
  network.targets.resize(3 * stations);
  std::vector<Eigen::Vector3d> targets(3 * stations);
  for (auto& target : targets) target = {length * share(random), width * share(random), 5.0 * share(random)};
  std::sort(targets.begin(), targets.end(), [](const auto& a, const auto& b) { return a.x() < b.x(); });
  for (std::size_t s = 0; s < stations; ++s) {
    const Eigen::Vector3d stand(length * (static_cast<double>(s) + 0.5) / static_cast<double>(stations),
                                width * share(random), 1.5);
    const Eigen::Matrix3d turn = Eigen::AngleAxisd(6.0 * share(random), Eigen::Vector3d::UnitZ()).toRotationMatrix();
    std::vector<std::pair<double, std::size_t>> near;
    const auto first = std::lower_bound(targets.begin(), targets.end(), stand.x() - reach,
                                        [](const Eigen::Vector3d& t, double x) { return t.x() < x; });
    for (auto t = first; t != targets.end() && t->x() < stand.x() + reach; ++t) {
      near.emplace_back((*t - stand).norm(), static_cast<std::size_t>(t - targets.begin()));
    }
    std::nth_element(near.begin(), near.begin() + targetsSeen, near.end());
    for (std::size_t k = 0; k < targetsSeen; ++k) {
      const Eigen::Vector3d error(noise(random), noise(random), noise(random));
      const Eigen::Vector3d seen = s == 0 ? targets[near[k].second] : turn * (targets[near[k].second] - stand);
      network.observations.push_back({s, near[k].second, seen + error, measuringNoise, 1.0});
    }
  }
  return network;
}

/// About ten units from one station to the next, in both directions.
inline Network area(std::size_t stations) {
  const double side = 10.0 * std::sqrt(static_cast<double>(stations));
  return networkOver(stations, side, side);
}

inline Network corridor(std::size_t stations) {
  return networkOver(stations, 10.0 * static_cast<double>(stations), 6.0);
}

}  // namespace tiepoint::workbench::analysis
