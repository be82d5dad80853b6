// Networks of many kinds with known truth, for tests that hold the adjustment against something.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "workbench/values/adjustment_network.h"

namespace tiepoint::workbench::analysis::testing {

enum class Shape { hall, chain, ring, flat, far };
enum class Fixing { base, twoBases, heldControl, roundControl, fullControl, baseAndControl, free };
enum class Levels { none, some, all };

struct Kind {
  Shape shape = Shape::hall;
  Fixing fixing = Fixing::base;
  Levels levels = Levels::none;
  /// Sigmas and weights differ from measurement to measurement.
  bool isWeighted = false;
  /// Added to the common system, where control gives it.
  bool inMillions = false;
  int grossErrors = 0;
  std::size_t stations = 6;
  std::size_t targets = 18;
  std::size_t seen = 9;
  double noise = 0.002;
};

struct RandomNetwork {
  Network network;
  /// Of all stations, in the common system of the adjustment.
  std::vector<Pose> truth;
  std::vector<Eigen::Vector3d> targets;
  std::string name;
};

/// The same for the same seed on every system.
RandomNetwork randomNetwork(const Kind& kind, std::uint64_t seed);

/// The network measured anew: other noise, the same truth.
Network measuredAnew(const RandomNetwork& network, std::mt19937_64& random);

/// Numbers of the standard normal distribution, the same on every system.
double normal(std::mt19937_64& random);
double uniform(std::mt19937_64& random, double low, double high);

}  // namespace tiepoint::workbench::analysis::testing
