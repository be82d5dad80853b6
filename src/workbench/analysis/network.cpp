#include "workbench/analysis/network.h"

#include <Eigen/Cholesky>
#include <cmath>
#include <stdexcept>

namespace tiepoint::workbench::analysis {

namespace {

void require(bool holds, const char* complaint) {
  if (!holds) throw std::invalid_argument(complaint);
}

bool isPositive(double number) { return std::isfinite(number) && number > 0.0; }

void requireSound(const Control& control) {
  require(control.place.allFinite(), "a control target's place isn't finite");
  if (!control.covariance) return;
  require(control.covariance->allFinite() && *control.covariance == control.covariance->transpose(),
          "a control target's covariance isn't symmetric");
  require(control.covariance->llt().info() == Eigen::Success, "a control target's covariance isn't positive definite");
}

}  // namespace

void requireSound(const Network& network) {
  for (const Station& station : network.stations) {
    if (station.start) {
      require(station.start->rotation.allFinite() && station.start->shift.allFinite(), "a start isn't finite");
    }
  }
  for (const Target& target : network.targets) {
    if (target.control) requireSound(*target.control);
  }
  for (const Observation& observation : network.observations) {
    require(observation.station < network.stations.size(), "an observation of no station");
    require(observation.target < network.targets.size(), "an observation of no target");
    require(observation.place.allFinite(), "a measured place isn't finite");
    require(isPositive(observation.sigma), "a sigma isn't positive");
    require(isPositive(observation.weight), "a weight isn't positive");
  }
}

}  // namespace tiepoint::workbench::analysis
