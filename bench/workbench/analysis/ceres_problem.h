// A survey as a problem of Ceres, for comparison of speed.
#pragma once

#ifdef TIEPOINT_HAS_CERES

#include <ceres/ceres.h>
#include <ceres/rotation.h>

#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "support/ceres_residual.h"
#include "workbench/analysis/own_start.h"

namespace tiepoint::workbench::analysis {

class CeresProblem {
 public:
  CeresProblem(const Network& network, const Survey& survey, const Placements& start)
      : stations(survey.stations.size()), targets(survey.targets.size()) {
    for (std::size_t s = 0; s < stations.size(); ++s) {
      const Pose pose = poseOf(survey, s, start[s]);
      ceres::RotationMatrixToAngleAxis(pose.rotation.data(), stations[s].data());
      for (std::size_t axis = 0; axis < 3; ++axis) stations[s][3 + axis] = pose.shift(static_cast<int>(axis));
    }
    for (const Sighting& seen : survey.sightings) {
      const Observation& observation = network.observations[seen.observation];
      const Pose pose = poseOf(survey, seen.station, start[seen.station]);
      const Eigen::Vector3d place = pose.rotation * observation.place + pose.shift;
      for (std::size_t axis = 0; axis < 3; ++axis) targets[seen.target][axis] = place(static_cast<int>(axis));
      auto* cost = new ceres::AutoDiffCostFunction<tiepoint::testing::CeresResidual, 3, 6, 3>(
          new tiepoint::testing::CeresResidual{observation.place, observation.sigma / std::sqrt(observation.weight)});
      problem.AddResidualBlock(cost, nullptr, stations[seen.station].data(), targets[seen.target].data());
    }
    for (std::size_t s = 0; s < stations.size(); ++s) {
      if (survey.stations[s].held) problem.SetParameterBlockConstant(stations[s].data());
    }
  }

  double solve() {
    ceres::Solver::Options options;
    options.linear_solver_type = ceres::SPARSE_SCHUR;
    options.num_threads = 1;
    options.max_num_iterations = 50;
    ceres::Solver::Summary summary;
    ceres::Solve(options, &problem, &summary);
    return summary.final_cost;
  }

  bool stationCovariances() {
    ceres::Covariance::Options options;
    options.algorithm_type = ceres::SPARSE_QR;
    options.num_threads = 1;
    ceres::Covariance covariance(options);
    std::vector<std::pair<const double*, const double*>> blocks;
    for (const auto& station : stations) blocks.emplace_back(station.data(), station.data());
    return covariance.Compute(blocks, &problem);
  }

 private:
  std::vector<std::array<double, 6>> stations;
  std::vector<std::array<double, 3>> targets;
  ceres::Problem problem;
};

}  // namespace tiepoint::workbench::analysis

#endif
