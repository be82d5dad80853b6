// The rebuild of the active flags, beside full passes over ordered containers.
#include <benchmark/benchmark.h>

#include <random>

#include "session/active_flags.h"
#include "support/plain_rebuild.h"

namespace {

using namespace ZOR::reg;

/// Stations of 30 points each, whose names overlap with their neighbours'; a few points are
/// switched off. The first station is the base.
RefPointList chainOfStations(std::size_t count) {
  constexpr std::size_t pointsPerStation = 30;
  constexpr std::size_t namesPerStep = 15;
  std::mt19937_64 random(20261);
  std::uniform_int_distribution<int> percent(0, 99);
  RefPointList points;
  for (std::size_t i = 0; i < count; ++i) {
    RefPoint point;
    point.id = i;
    point.groupId = i / pointsPerStation;
    point.commonId = point.groupId * namesPerStep + i % pointsPerStation;
    point.weight = 1.0;
    point.named = true;
    point.included = percent(random) >= 3;
    point.inBase = point.groupId == 0;
    points.push_back(point);
  }
  return points;
}

/// Stations that hang on one another by exactly three names: the first one's fall takes all the
/// others down, one after another.
RefPointList fallingChain(std::size_t count) {
  constexpr std::size_t pointsPerStation = 5;
  RefPointList points;
  for (std::size_t i = 0; i < count; ++i) {
    RefPoint point;
    point.id = i;
    point.groupId = i / pointsPerStation;
    point.commonId = 3 * point.groupId + i % pointsPerStation;
    point.weight = 1.0;
    point.named = true;
    points.push_back(point);
  }
  return points;
}

template <class Rebuild>
void measure(benchmark::State& state, RefPointList points, Rebuild rebuild) {
  for (auto _ : state) {
    rebuild(points);
    benchmark::DoNotOptimize(points.front().active);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points.size()));
}

void rebuildStations(benchmark::State& state) {
  measure(state, chainOfStations(static_cast<std::size_t>(state.range(0))), rebuildActiveFlags);
}
BENCHMARK(rebuildStations)->Arg(3000)->Arg(30000)->Arg(300000)->Unit(benchmark::kMillisecond);

void plainStations(benchmark::State& state) {
  measure(state, chainOfStations(static_cast<std::size_t>(state.range(0))), tiepoint::testing::plainRebuild);
}
BENCHMARK(plainStations)->Arg(3000)->Arg(30000)->Arg(300000)->Unit(benchmark::kMillisecond);

void rebuildFallingChain(benchmark::State& state) {
  measure(state, fallingChain(static_cast<std::size_t>(state.range(0))), rebuildActiveFlags);
}
BENCHMARK(rebuildFallingChain)->Arg(3000)->Arg(30000)->Unit(benchmark::kMillisecond);

void plainFallingChain(benchmark::State& state) {
  measure(state, fallingChain(static_cast<std::size_t>(state.range(0))), tiepoint::testing::plainRebuild);
}
BENCHMARK(plainFallingChain)->Arg(3000)->Unit(benchmark::kMillisecond);

}  // namespace
