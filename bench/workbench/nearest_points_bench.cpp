// How near points of different names lie to one another, and the gathering of spots as baseline.
#include "workbench/geometry/nearest_points.h"

#include <benchmark/benchmark.h>

#include <random>

namespace {

using namespace tiepoint::workbench;

constexpr double maxDistance = 0.04;

/// A field of targets, 2 mm about each of which lie four points of its name.
SessionState site(std::int64_t points) {
  std::mt19937_64 random(20264);
  std::uniform_real_distribution<double> metres(0.0, 200.0), noise(-0.001, 0.001);
  SessionState state;
  state.groups.push_back({0, "A", false});
  for (std::int64_t i = 0; i < points; i += 4) {
    const OdGePoint3d target(metres(random), metres(random), metres(random));
    for (int k = 0; k < 4; ++k) {
      SessionPoint point;
      point.record.id = state.points.size();
      point.record.commonId = static_cast<ZOR::reg::CommonPointId>(i);
      point.record.named = true;
      point.record.position = {target.x + noise(random), target.y + noise(random), target.z + noise(random)};
      state.points.push_back(point);
    }
  }
  return state;
}

template <class Look>
void measure(benchmark::State& state, Look look) {
  const SessionState survey = site(state.range(0));
  const std::vector<PlacedPoint> placed = placedPoints(survey, {{0, OdGeMatrix3d()}});
  for (auto _ : state) look(placed);
}

void ours(benchmark::State& state) {
  measure(state, [](const auto& placed) { benchmark::DoNotOptimize(nearestPoints(placed, maxDistance)); });
}
BENCHMARK(ours)->Arg(2000)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond);

void spots(benchmark::State& state) {
  measure(state, [](const auto& placed) { benchmark::DoNotOptimize(closePointClusters(placed, maxDistance)); });
}
BENCHMARK(spots)->Arg(2000)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond);

}  // namespace
