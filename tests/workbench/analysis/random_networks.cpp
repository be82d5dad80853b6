#include "workbench/analysis/random_networks.h"

#include <Eigen/Geometry>
#include <algorithm>
#include <cmath>
#include <utility>

namespace tiepoint::workbench::analysis::testing {

namespace {

using Eigen::Matrix3d;
using Eigen::Vector3d;

constexpr double pi = 3.14159265358979323846;

class Maker {
 public:
  Maker(const Kind& kind_, std::uint64_t seed) : kind(kind_), random(seed * 7919 + 13) {}

  RandomNetwork make() {
    chooseRoles();
    placeTargets();
    for (std::size_t s = 0; s < kind.stations; ++s) result.truth.push_back({rotation(s), standpoint(s)});
    toCommonSystem();
    addControl();
    observe();
    dropLonelyTargets();
    return result;
  }

 private:
  bool isBase(std::size_t s) const {
    if (kind.fixing == Fixing::twoBases) return s <= 1;
    return s == 0 && (kind.fixing == Fixing::base || kind.fixing == Fixing::baseAndControl);
  }

  bool hasControl() const {
    return kind.fixing == Fixing::heldControl || kind.fixing == Fixing::roundControl ||
           kind.fixing == Fixing::fullControl || kind.fixing == Fixing::baseAndControl;
  }

  bool standsLevel(std::size_t s) const {
    return kind.levels == Levels::all || (kind.levels == Levels::some && s % 2 == 1);
  }

  void chooseRoles() {
    result.network.stations.resize(kind.stations);
    result.network.targets.resize(kind.targets);
    for (std::size_t s = 0; s < kind.stations; ++s) {
      result.network.stations[s].held = isBase(s);
      result.network.stations[s].levelled = standsLevel(s);
    }
  }

  double chainLength() const { return 20.0 * static_cast<double>(kind.stations); }

  void placeTargets() {
    for (std::size_t t = 0; t < kind.targets; ++t) {
      const double share = static_cast<double>(t) / static_cast<double>(kind.targets);
      Vector3d place(uniform(random, 0.0, 30.0), uniform(random, 0.0, 20.0), uniform(random, 0.0, 6.0));
      if (kind.shape == Shape::chain) place.x() = chainLength() * share + uniform(random, -3.0, 3.0);
      if (kind.shape == Shape::chain) place.y() = uniform(random, -5.0, 5.0);
      if (kind.shape == Shape::flat) place.z() = uniform(random, -0.05, 0.05);
      if (kind.shape == Shape::ring) {
        const double radius = 20.0 + uniform(random, -4.0, 4.0);
        place = {radius * std::cos(2.0 * pi * share), radius * std::sin(2.0 * pi * share), place.z()};
      }
      result.targets.push_back(place);
    }
  }

  Vector3d standpoint(std::size_t s) {
    const double share = (static_cast<double>(s) + 0.5) / static_cast<double>(kind.stations);
    Vector3d place(uniform(random, 5.0, 25.0), uniform(random, 4.0, 16.0), uniform(random, 1.0, 2.0));
    if (kind.shape == Shape::chain) place = {chainLength() * share, 0.0, 1.5};
    if (kind.shape == Shape::ring) place = {20.0 * std::cos(2.0 * pi * share), 20.0 * std::sin(2.0 * pi * share), 1.5};
    if (kind.shape == Shape::far) place += Vector3d(400.0, 0.0, 0.0);
    return place;
  }

  Matrix3d rotation(std::size_t s) {
    const double heading = uniform(random, -pi, pi);
    const Matrix3d level = Eigen::AngleAxisd(heading, Vector3d::UnitZ()).toRotationMatrix();
    const Vector3d tilt(uniform(random, -1.5, 1.5), uniform(random, -1.5, 1.5), 0.0);
    if (standsLevel(s) || kind.levels != Levels::none) return standsLevel(s) ? level : tilted(level, 0.3 * tilt);
    return tilted(level, tilt);
  }

  Matrix3d tilted(const Matrix3d& level, const Vector3d& tilt) const {
    return Eigen::AngleAxisd(tilt.norm(), tilt.normalized()).toRotationMatrix() * level;
  }

  /// In which the base, or the frame of a free network, stands at the identity.
  void toCommonSystem() {
    std::size_t reference = 0;
    if (kind.fixing == Fixing::free && kind.levels == Levels::some) reference = 1;
    if (kind.fixing != Fixing::free && hasControl() && kind.fixing != Fixing::baseAndControl) {
      shiftToMillions();
      return;
    }
    if (kind.levels != Levels::none) {
      result.truth[reference].rotation =
          Eigen::AngleAxisd(uniform(random, -pi, pi), Vector3d::UnitZ()).toRotationMatrix();
    }
    const Pose common = result.truth[reference];
    for (Vector3d& target : result.targets) target = common.rotation.transpose() * (target - common.shift);
    for (Pose& pose : result.truth) {
      pose.rotation = (common.rotation.transpose() * pose.rotation).eval();
      pose.shift = common.rotation.transpose() * (pose.shift - common.shift);
    }
    for (std::size_t s = 0; s < kind.stations; ++s) {
      if (isBase(s) || s == reference) result.truth[s] = Pose{};
    }
  }

  void shiftToMillions() {
    if (!kind.inMillions) return;
    const Vector3d offset(4471234.5, 5412345.25, 312.0);
    for (Vector3d& target : result.targets) target += offset;
    for (Pose& pose : result.truth) pose.shift += offset;
  }

  void addControl() {
    if (!hasControl()) return;
    for (std::size_t t = 0; t < kind.targets; t += 3) {
      Control control;
      control.place = result.targets[t];
      const double sigma = 0.003;
      if (kind.fixing == Fixing::roundControl || kind.fixing == Fixing::baseAndControl) {
        control.covariance = Matrix3d(sigma * sigma * Matrix3d::Identity());
      }
      if (kind.fixing == Fixing::fullControl) control.covariance = fullCovariance(sigma);
      if (control.covariance) {
        const Matrix3d root = control.covariance->llt().matrixL();
        control.place += root * Vector3d(normal(random), normal(random), normal(random));
      }
      result.network.targets[t].control = control;
    }
  }

  Matrix3d fullCovariance(double sigma) {
    Matrix3d root;
    root << 1.0, 0.0, 0.0, uniform(random, -0.5, 0.5), 1.5, 0.0, uniform(random, -0.5, 0.5), 0.2, 0.7;
    const Matrix3d square = sigma * sigma * root * root.transpose();
    return 0.5 * (square + square.transpose());
  }

  void observe() {
    for (std::size_t s = 0; s < kind.stations; ++s) {
      for (const std::size_t t : nearest(s)) {
        Observation observation;
        observation.station = s;
        observation.target = t;
        observation.sigma = kind.isWeighted ? kind.noise * uniform(random, 0.5, 3.0) : kind.noise;
        observation.weight = kind.isWeighted ? uniform(random, 0.2, 1.0) : 1.0;
        result.network.observations.push_back(observation);
      }
    }
    result.network = measuredAnew(result, random);
    for (int error = 0; error < kind.grossErrors; ++error) {
      auto& observations = result.network.observations;
      const auto which = static_cast<std::size_t>(uniform(random, 0.0, static_cast<double>(observations.size())));
      observations[which].place += Vector3d(30.0 * kind.noise, -20.0 * kind.noise, 10.0 * kind.noise);
    }
  }

  /// Only what takes part in an adjustment is left, so that a plain computation needn't ask.
  void dropLonelyTargets() {
    std::vector<std::size_t> sightings(kind.targets), free(kind.targets), place(kind.targets);
    for (const Observation& seen : result.network.observations) {
      ++sightings[seen.target];
      if (!isBase(seen.station)) ++free[seen.target];
    }
    RandomNetwork kept = result;
    kept.targets.clear();
    kept.network.targets.clear();
    kept.network.observations.clear();
    for (std::size_t t = 0; t < kind.targets; ++t) {
      const bool hasOwn = result.network.targets[t].control.has_value();
      if (free[t] == 0 || sightings[t] + (hasOwn ? 1 : 0) < 2) continue;
      place[t] = kept.targets.size() + 1;
      kept.targets.push_back(result.targets[t]);
      kept.network.targets.push_back(result.network.targets[t]);
    }
    for (Observation seen : result.network.observations) {
      if (place[seen.target] == 0) continue;
      seen.target = place[seen.target] - 1;
      kept.network.observations.push_back(seen);
    }
    result = kept;
  }

  std::vector<std::size_t> nearest(std::size_t s) const {
    std::vector<std::pair<double, std::size_t>> distances;
    for (std::size_t t = 0; t < kind.targets; ++t) {
      distances.emplace_back((result.targets[t] - result.truth[s].shift).norm(), t);
    }
    const std::size_t count = std::min(kind.seen, kind.targets);
    std::partial_sort(distances.begin(), distances.begin() + static_cast<std::ptrdiff_t>(count), distances.end());
    std::vector<std::size_t> order;
    for (std::size_t k = 0; k < count; ++k) order.push_back(distances[k].second);
    return order;
  }

  const Kind& kind;
  std::mt19937_64 random;
  RandomNetwork result;
};

}  // namespace

RandomNetwork randomNetwork(const Kind& kind, std::uint64_t seed) { return Maker(kind, seed).make(); }

Network measuredAnew(const RandomNetwork& from, std::mt19937_64& random) {
  Network network = from.network;
  for (Observation& observation : network.observations) {
    const Pose& pose = from.truth[observation.station];
    const double sigma = observation.sigma / std::sqrt(observation.weight);
    observation.place = pose.rotation.transpose() * (from.targets[observation.target] - pose.shift) +
                        sigma * Vector3d(normal(random), normal(random), normal(random));
  }
  return network;
}

double uniform(std::mt19937_64& random, double low, double high) {
  constexpr double range = 9007199254740992.0;
  return low + (high - low) * (static_cast<double>(random() >> 11) / range);
}

double normal(std::mt19937_64& random) {
  const double radius = std::sqrt(-2.0 * std::log(1.0 - uniform(random, 0.0, 1.0)));
  return radius * std::cos(2.0 * pi * uniform(random, 0.0, 1.0));
}

}  // namespace tiepoint::workbench::analysis::testing
