// A second opinion: the same sum of squares given to Ceres, as a whole and with its own derivatives.
#include <gtest/gtest.h>

#ifdef TIEPOINT_HAS_CERES

#include <ceres/ceres.h>
#include <ceres/rotation.h>

#include <array>
#include <cmath>

#include "support/ceres_residual.h"
#include "workbench/analysis/adjustment.h"
#include "workbench/analysis/random_networks.h"

namespace tiepoint::workbench::analysis::testing {
namespace {

using Eigen::Vector3d;

class CeresSolution {
 public:
  explicit CeresSolution(const RandomNetwork& random)
      : stations(random.truth.size()), targets(random.network.targets.size()) {
    for (std::size_t s = 0; s < stations.size(); ++s) {
      const Eigen::Matrix3d& rotation = random.truth[s].rotation;
      ceres::RotationMatrixToAngleAxis(rotation.data(), stations[s].data());
      Eigen::Map<Vector3d>(stations[s].data() + 3) = random.truth[s].shift;
    }
    for (std::size_t t = 0; t < targets.size(); ++t) Eigen::Map<Vector3d>(targets[t].data()) = random.targets[t];
    for (const Observation& seen : random.network.observations) {
      auto* cost = new ceres::AutoDiffCostFunction<tiepoint::testing::CeresResidual, 3, 6, 3>(
          new tiepoint::testing::CeresResidual{seen.place, seen.sigma / std::sqrt(seen.weight)});
      problem.AddResidualBlock(cost, nullptr, stations[seen.station].data(), targets[seen.target].data());
    }
    for (std::size_t s = 0; s < stations.size(); ++s) {
      if (random.network.stations[s].held) problem.SetParameterBlockConstant(stations[s].data());
    }
    ceres::Solver::Options options;
    options.linear_solver_type = ceres::SPARSE_NORMAL_CHOLESKY;
    options.function_tolerance = options.gradient_tolerance = options.parameter_tolerance = 1e-16;
    options.max_num_iterations = 100;
    ceres::Solve(options, &problem, &summary);
  }

  Eigen::Matrix3d rotation(std::size_t s) const {
    Eigen::Matrix3d matrix;
    ceres::AngleAxisToRotationMatrix(stations[s].data(), matrix.data());
    return matrix;
  }

  Eigen::Matrix3d targetCovariance(std::size_t t) { return covarianceOf(targets[t].data()).topLeftCorner<3, 3>(); }
  Eigen::Matrix3d shiftCovariance(std::size_t s) { return covarianceOf(stations[s].data()).bottomRightCorner<3, 3>(); }

  std::vector<std::array<double, 6>> stations;
  std::vector<std::array<double, 3>> targets;
  ceres::Problem problem;
  ceres::Solver::Summary summary;

 private:
  Eigen::MatrixXd covarianceOf(double* block) {
    ceres::Covariance::Options options;
    options.algorithm_type = ceres::DENSE_SVD;
    ceres::Covariance covariance(options);
    const std::vector<std::pair<const double*, const double*>> blocks{{block, block}};
    EXPECT_TRUE(covariance.Compute(blocks, &problem));
    const int size = problem.ParameterBlockSize(block);
    Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor> matrix(size, size);
    EXPECT_TRUE(covariance.GetCovarianceBlock(block, block, matrix.data()));
    return matrix;
  }
};

class SecondOpinion : public ::testing::TestWithParam<int> {};

TEST_P(SecondOpinion, OnPosesAndCovariancesIsTheSame) {
  Kind kind;
  kind.shape = static_cast<Shape>(GetParam());
  kind.isWeighted = true;
  kind.noise = 1e-4;
  const RandomNetwork random = randomNetwork(kind, 51);
  const Adjustment found = adjust(random.network);
  CeresSolution wanted(random);
  EXPECT_NEAR(found.sumOfSquares, 2.0 * wanted.summary.final_cost, 1e-9 * found.sumOfSquares);
  // Its steps end earlier than ours.
  constexpr double poseWithin = 1e-7;
  // Its derivatives are taken at the measured place: they differ by residual / distance.
  constexpr double covarianceWithin = 1e-3;
  for (std::size_t s = 0; s < random.network.stations.size(); ++s) {
    EXPECT_LT((found.poses[s]->rotation - wanted.rotation(s)).norm(), poseWithin);
    if (!found.stations[s]) continue;
    const Eigen::Matrix3d covariance = wanted.shiftCovariance(s);
    EXPECT_LT((found.stations[s]->positionCovariance - covariance).norm(), covarianceWithin * covariance.norm());
  }
  for (std::size_t t = 0; t < random.targets.size(); ++t) {
    const Eigen::Matrix3d covariance = wanted.targetCovariance(t);
    EXPECT_LT((found.targets[t]->covariance - covariance).norm(), covarianceWithin * covariance.norm());
  }
}

INSTANTIATE_TEST_SUITE_P(Shapes, SecondOpinion, ::testing::Range(0, 5));

}  // namespace
}  // namespace tiepoint::workbench::analysis::testing

#else

TEST(SecondOpinion, OnPosesAndCovariancesIsTheSame) { GTEST_SKIP() << "Ceres isn't installed"; }

#endif
