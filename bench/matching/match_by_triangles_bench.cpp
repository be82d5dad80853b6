// The triangles of stations that see the same targets of a hall: their rows into clusters, beside
// the comparison of all pairs, and the whole matching.
#include "matching/match_by_triangles.h"

#include <benchmark/benchmark.h>

#include <random>

#include "matching/hall.h"
#include "matching/plain_row_clusters.h"
#include "matching/points.h"
#include "matching/triangle_table.h"

namespace {

using ZOR::reg::RefPointList;
using ZOR::reg::RowClusters;
using ZOR::reg::TriangleTable;

constexpr double sideTolerance = 0.001;
constexpr double minSideDifference = 0.1;

/// Arguments: stations, targets that each sees, and the noise of a coordinate in tenths of a
/// millimetre.
RefPointList survey(const benchmark::State& state) {
  std::mt19937_64 random(11);
  const double noise = 1e-4 * static_cast<double>(state.range(2));
  tiepoint::testing::Hall hall(static_cast<std::size_t>(state.range(1)), random);
  RefPointList points;
  for (std::int64_t station = 0; station < state.range(0); ++station) {
    for (const OdGePoint3d& place : hall.seenByAStation(hall.allTargets(), noise)) {
      const auto group = static_cast<ZOR::reg::GroupId>(station);
      points.push_back(tiepoint::testing::unnamedPoint(points.size(), group, place));
    }
  }
  return points;
}

void countRows(benchmark::State& state, const TriangleTable& triangles, const RowClusters& clusters) {
  state.counters["rows"] = static_cast<double>(triangles.groups.size());
  state.counters["clusters"] = static_cast<double>(clusters.size());
}

void rows(benchmark::State& state) {
  const TriangleTable triangles = ZOR::reg::buildTriangles(survey(state), minSideDifference);
  RowClusters clusters;
  for (auto _ : state) {
    ZOR::reg::clusterRowsByTag(triangles.sides, triangles.groups, sideTolerance, clusters);
    benchmark::DoNotOptimize(clusters);
  }
  countRows(state, triangles, clusters);
}

void plainRows(benchmark::State& state) {
  const TriangleTable triangles = ZOR::reg::buildTriangles(survey(state), minSideDifference);
  RowClusters clusters;
  for (auto _ : state) {
    clusters = tiepoint::testing::clusterRowsByTagPlainly(triangles.sides, triangles.groups, sideTolerance);
    benchmark::DoNotOptimize(clusters);
  }
  countRows(state, triangles, clusters);
}

void wholeMatching(benchmark::State& state) {
  const RefPointList points = survey(state);
  ZOR::reg::NamingChanges changes;
  for (auto _ : state) {
    ZOR::reg::matchByTriangles(points, sideTolerance, minSideDifference, changes);
    benchmark::DoNotOptimize(changes);
  }
  state.counters["named"] = static_cast<double>(changes.newAssignments.size());
}

void smallAndLarge(benchmark::internal::Benchmark* bench) {
  for (const std::int64_t noise : {0, 2}) {
    bench->Args({4, 20, noise})->Args({10, 30, noise})->Args({20, 50, noise});
  }
  bench->Unit(benchmark::kMillisecond);
}
BENCHMARK(rows)->Apply(smallAndLarge);
BENCHMARK(wholeMatching)->Apply(smallAndLarge);
BENCHMARK(plainRows)->Args({4, 20, 0})->Args({10, 30, 0})->Unit(benchmark::kMillisecond);
// Minutes long, so once; noise makes no difference to it.
BENCHMARK(plainRows)->Args({20, 50, 0})->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
