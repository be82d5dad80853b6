// The fit against the library's own closed form without scale, on the same points.
#include <benchmark/benchmark.h>

#include <Eigen/Geometry>
#include <random>

#include "solver/rigid_fit.h"

namespace {

using ZOR::reg::PointMatrix;

struct PointPairs {
  explicit PointPairs(Eigen::Index count) : target(count, 3), source(count, 3) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> coordinate(-100.0, 100.0);
    std::normal_distribution<double> error(0.0, 0.01);
    const Eigen::Matrix3d rotation = Eigen::AngleAxisd(0.7, Eigen::Vector3d(1, 2, 3).normalized()).toRotationMatrix();
    for (Eigen::Index i = 0; i < count; ++i) {
      const Eigen::Vector3d p(coordinate(random), coordinate(random), coordinate(random));
      const Eigen::Vector3d noise(error(random), error(random), error(random));
      source.row(i) = p.transpose();
      target.row(i) = (rotation * p + Eigen::Vector3d(10, 20, 30) + noise).transpose();
    }
  }
  PointMatrix target;
  PointMatrix source;
};

void fitOurs(benchmark::State& state) {
  const PointPairs pairs(state.range(0));
  std::array<double, 9> rotation{};
  std::array<double, 3> translation{};
  for (auto _ : state) {
    ZOR::reg::fitRigidTransform(pairs.target, pairs.source, rotation, translation);
    benchmark::DoNotOptimize(rotation);
    benchmark::DoNotOptimize(translation);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(fitOurs)->Arg(10)->Arg(100);

void fitUmeyama(benchmark::State& state) {
  const PointPairs pairs(state.range(0));
  // That function wants one point a column.
  const Eigen::Matrix<double, 3, Eigen::Dynamic> source = pairs.source.transpose();
  const Eigen::Matrix<double, 3, Eigen::Dynamic> target = pairs.target.transpose();
  for (auto _ : state) {
    Eigen::Matrix4d transform = Eigen::umeyama(source, target, false);
    benchmark::DoNotOptimize(transform);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(fitUmeyama)->Arg(10)->Arg(100);

}  // namespace
