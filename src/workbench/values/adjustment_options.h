// What an adjustment is asked for beside its network.
#pragma once

#include <functional>
#include <vector>

#include "workbench/values/adjustment_network.h"

namespace tiepoint::workbench::analysis {

/// Which variance scales covariances and tests: the given sigmas, or the variance factor.
enum class VarianceScale { aPriori, aPosteriori };

struct CarriedPoint {
  std::size_t station = 0;
  /// In the station's system.
  Eigen::Vector3d place = Eigen::Vector3d::Zero();
};

struct AdjustmentOptions {
  VarianceScale scale = VarianceScale::aPriori;
  /// Level of each test, and power that the detectable errors are for; both between 0 and 1.
  double alpha = 0.001;
  double power = 0.8;
  std::vector<CarriedPoint> carry;
  /// Observations of which the effect on every station is asked for.
  std::vector<std::size_t> trace;
  /// Other starts are tried when the certificate shows that the first may have led to a minimum that isn't
  /// the least. Without it the start is only judged.
  bool triesOtherStarts = true;
  /// Asked then for starts to try beside the own ones; each has a pose for every station of the network.
  std::function<std::vector<std::vector<Pose>>()> otherStarts;
  /// Nothing but the minimum, its openness, and what is told of measurements.
  bool measurementsAlone = false;
};

}  // namespace tiepoint::workbench::analysis
