// A made hall with targets, as stations see it.
#pragma once

#include <Eigen/Geometry>
#include <algorithm>
#include <cstddef>
#include <random>
#include <vector>

#include "platform/sdk/od_ge_point3d.h"

namespace tiepoint::testing {

/// Places in a hall of 60 × 60 × 8 m; the same for the same engine, as are the views.
class Hall {
 public:
  using Target = std::size_t;

  Hall(std::size_t targetCount, std::mt19937_64& random_) : random(random_) {
    std::uniform_real_distribution<double> share(0.0, 1.0);
    for (std::size_t i = 0; i < targetCount; ++i) {
      const double x = 60.0 * share(random);
      const double y = 60.0 * share(random);
      places.emplace_back(x, y, 8.0 * share(random));
    }
  }

  std::vector<Target> allTargets() const {
    std::vector<Target> targets(places.size());
    for (Target target = 0; target < targets.size(); ++target) targets[target] = target;
    return targets;
  }

  std::vector<Target> someTargets(std::size_t count) {
    std::vector<Target> targets = allTargets();
    std::shuffle(targets.begin(), targets.end(), random);
    targets.resize(count);
    return targets;
  }

  /// The targets in the system of a new station, turned and shifted anyhow; `noise` is the standard
  /// deviation of each coordinate.
  std::vector<OdGePoint3d> seenByAStation(const std::vector<Target>& targets, double noise = 0.0) {
    std::normal_distribution<double> normal(0.0, 1.0);
    const auto anyOf = [&](double spread) { return spread * normal(random); };
    const Eigen::Quaterniond turn = Eigen::Quaterniond(anyOf(1.0), anyOf(1.0), anyOf(1.0), anyOf(1.0)).normalized();
    const Eigen::Vector3d shift(anyOf(100.0), anyOf(100.0), anyOf(100.0));
    std::vector<OdGePoint3d> seen;
    for (const Target target : targets) {
      const Eigen::Vector3d p =
          turn * places[target] + shift + Eigen::Vector3d(anyOf(noise), anyOf(noise), anyOf(noise));
      seen.emplace_back(p.x(), p.y(), p.z());
    }
    return seen;
  }

 private:
  std::mt19937_64& random;
  std::vector<Eigen::Vector3d> places;
};

}  // namespace tiepoint::testing
