// Which stations have a triangle in common, and the comparison of all pairs of stations as baseline.
#include "workbench/geometry/common_triangles.h"

#include <benchmark/benchmark.h>

#include <random>

namespace {

using namespace tiepoint::workbench;

constexpr double tolerance = 0.04;

/// A row of stations that see 20 targets each, five of them as the next does, 20 m about them.
Stations row(std::int64_t count) {
  std::mt19937_64 random(20263);
  std::uniform_real_distribution<double> metres(-10.0, 10.0);
  Stations stations;
  std::vector<Eigen::Vector3d> shared;
  for (ZOR::reg::GroupId i = 0; i < static_cast<ZOR::reg::GroupId>(count); ++i) {
    StationShape& shape = stations[i].shape;
    shape.points = shared;
    while (shape.points.size() < 20) shape.points.emplace_back(metres(random), metres(random), metres(random));
    shape.triangles = stationTriangles(shape.points, flattestTriangle);
    shared.assign(shape.points.end() - 5, shape.points.end());
  }
  return stations;
}

void ours(benchmark::State& state) {
  const Stations stations = row(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(CommonTriangles(stations, tolerance).mayBeBetween(0, 1));
}
BENCHMARK(ours)->Arg(50)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void plain(benchmark::State& state) {
  const Stations stations = row(state.range(0));
  for (auto _ : state) {
    std::size_t pairs = 0;
    for (auto one = stations.begin(); one != stations.end(); ++one) {
      for (auto other = std::next(one); other != stations.end(); ++other) {
        forEachEqualPair(one->second.shape.triangles, other->second.shape.triangles, tolerance,
                         [&](const Triangle&, const Triangle&) {
                           ++pairs;
                           return false;
                         });
      }
    }
    benchmark::DoNotOptimize(pairs);
  }
}
BENCHMARK(plain)->Arg(50)->Arg(100)->Unit(benchmark::kMillisecond);

}  // namespace
