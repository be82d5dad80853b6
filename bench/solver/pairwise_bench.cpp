// One pairwise registration, from the session's points to all results, by tens of stations.
#include "solver/pairwise.h"

#include <benchmark/benchmark.h>

#include <Eigen/Geometry>
#include <algorithm>
#include <numeric>
#include <random>

#include "solver/solve_input.h"

namespace {

using ZOR::reg::CommonPointId;
using ZOR::reg::GroupId;
using ZOR::reg::RefPoint;
using ZOR::reg::RefPointList;

constexpr CommonPointId targetsPerStation = 30;
/// So a station shares twenty targets with the next and ten with the one after.
constexpr CommonPointId targetsBetweenStations = 10;

/// A row of stations along a corridor, numbered by `order`, each measuring in its own system.
RefPointList corridor(const std::vector<GroupId>& order) {
  std::mt19937 random(4);
  std::uniform_real_distribution<double> across(-20.0, 20.0);
  std::normal_distribution<double> error(0.0, 0.002);
  std::vector<Eigen::Vector3d> targets;
  for (std::size_t i = 0; i < order.size() * targetsBetweenStations + targetsPerStation; ++i) {
    targets.emplace_back(static_cast<double>(i), across(random), across(random));
  }
  RefPointList points;
  for (std::size_t k = 0; k < order.size(); ++k) {
    const Eigen::AngleAxisd heading(0.1 * static_cast<double>(k), Eigen::Vector3d::UnitZ());
    for (CommonPointId i = 0; i < targetsPerStation; ++i) {
      RefPoint point;
      point.id = points.size();
      point.groupId = order[k];
      point.commonId = k * targetsBetweenStations + i;
      const Eigen::Vector3d standpoint(static_cast<double>(k * targetsBetweenStations), 0.0, 1.5);
      const Eigen::Vector3d seen = heading.toRotationMatrix() * (targets[point.commonId] - standpoint);
      point.position = {seen.x() + error(random), seen.y() + error(random), seen.z() + error(random)};
      point.weight = 1.0;
      point.named = true;
      points.push_back(point);
    }
  }
  return points;
}

void registerCorridor(benchmark::State& state, const std::vector<GroupId>& order) {
  const RefPointList sessionPoints = corridor(order);
  for (auto _ : state) {
    ZOR::reg::SolveResults results;
    ZOR::reg::PointDiscrepancies discrepancies;
    RefPointList workingPoints;
    ZOR::reg::prepareSolvePoints(sessionPoints, workingPoints, discrepancies);
    ZOR::reg::GroupClusters clusters;
    std::map<GroupId, ZOR::reg::GroupMerges> mergeLists;
    ZOR::reg::findGroupClusters(ZOR::reg::collectGroupNames(workingPoints), clusters, mergeLists);
    ZOR::reg::solvePairwise(workingPoints, mergeLists.begin()->second, sessionPoints, results, discrepancies);
    benchmark::DoNotOptimize(results.groupTransforms);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

std::vector<GroupId> ascending(std::int64_t stations) {
  std::vector<GroupId> order(static_cast<std::size_t>(stations));
  std::iota(order.begin(), order.end(), GroupId{0});
  return order;
}

void inOrder(benchmark::State& state) { registerCorridor(state, ascending(state.range(0))); }
BENCHMARK(inOrder)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void shuffled(benchmark::State& state) {
  std::vector<GroupId> order = ascending(state.range(0));
  std::mt19937 random(5);
  std::shuffle(order.begin(), order.end(), random);
  registerCorridor(state, order);
}
BENCHMARK(shuffled)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
