// The clusters of surveys of different shape, by tens, and the scan that starts again as baseline.
#include "solver/group_clusters.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <numeric>
#include <random>

#include "solver/plain_group_clusters.h"

namespace {

using ZOR::reg::CommonPointId;
using ZOR::reg::GroupId;
using ZOR::reg::GroupNameSets;

constexpr CommonPointId namesPerStation = 30;
/// Twenty names for each station: a thousand stations choose from twenty thousand.
constexpr GroupId namesInAll = 20;

GroupNameSets randomNames(GroupId stations) {
  std::mt19937_64 random(2);
  GroupNameSets names;
  for (GroupId g = 0; g < stations; ++g) {
    while (names[g].size() < namesPerStation) names[g].insert(random() % (namesInAll * stations));
  }
  return names;
}

GroupNameSets allNamesOfAll(GroupId stations) {
  GroupNameSets names;
  for (GroupId g = 0; g < stations; ++g) {
    for (CommonPointId name = 0; name < namesPerStation; ++name) names[g].insert(name);
  }
  return names;
}

/// Every station has the names 0 and 1, each pair of stations three more, the rest are a station's own.
GroupNameSets twoNamesOfAll(GroupId stations) {
  constexpr CommonPointId ownPerStation = namesPerStation - 5;
  constexpr CommonPointId namesPerPair = 3 + 2 * ownPerStation;
  GroupNameSets names;
  for (GroupId g = 0; g < stations; ++g) {
    const CommonPointId ofPair = 2 + namesPerPair * (g / 2);
    const CommonPointId own = ofPair + 3 + ownPerStation * (g % 2);
    names[g] = {0, 1, ofPair, ofPair + 1, ofPair + 2};
    for (CommonPointId name = 0; name < ownPerStation; ++name) names[g].insert(own + name);
  }
  return names;
}

/// Each link shares two names with the one before and one with the one before that, so that all but
/// the first two fuse only with a union that has grown so far.
GroupNameSets chain(const std::vector<GroupId>& order) {
  GroupNameSets names;
  for (std::size_t k = 0; k < order.size(); ++k) {
    const CommonPointId own = namesPerStation * k;
    auto& set = names[order[k]];
    for (CommonPointId name = 0; name < namesPerStation - 3; ++name) set.insert(own + name);
    if (k >= 1) set.insert({own - namesPerStation, own - namesPerStation + 1});
    if (k == 1) set.insert(own - namesPerStation + 3);
    if (k >= 2) set.insert(own - 2 * namesPerStation + 2);
  }
  return names;
}

std::vector<GroupId> ascending(GroupId stations) {
  std::vector<GroupId> order(stations);
  std::iota(order.begin(), order.end(), GroupId{0});
  return order;
}

GroupNameSets ascendingChain(GroupId stations) { return chain(ascending(stations)); }

GroupNameSets descendingChain(GroupId stations) {
  std::vector<GroupId> order = ascending(stations);
  std::reverse(order.begin(), order.end());
  return chain(order);
}

GroupNameSets shuffledChain(GroupId stations) {
  std::vector<GroupId> order = ascending(stations);
  std::mt19937_64 random(3);
  std::shuffle(order.begin(), order.end(), random);
  return chain(order);
}

using Survey = GroupNameSets (*)(GroupId);
using Find = void (*)(const GroupNameSets&, ZOR::reg::GroupClusters&, std::map<GroupId, ZOR::reg::GroupMerges>&);

void run(benchmark::State& state, Survey survey, Find find) {
  const GroupNameSets names = survey(static_cast<GroupId>(state.range(0)));
  ZOR::reg::GroupClusters clusters;
  std::map<GroupId, ZOR::reg::GroupMerges> mergeLists;
  for (auto _ : state) {
    find(names, clusters, mergeLists);
    benchmark::DoNotOptimize(clusters);
  }
  std::size_t fusions = 0;
  for (const auto& entry : mergeLists) fusions += entry.second.size();
  state.counters["fusions"] = static_cast<double>(fusions);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ours(benchmark::State& state, Survey survey) { run(state, survey, ZOR::reg::findGroupClusters); }
void plain(benchmark::State& state, Survey survey) { run(state, survey, tiepoint::testing::findGroupClustersPlainly); }

#define SURVEY(name)                                                                                   \
  BENCHMARK_CAPTURE(ours, name, name)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond); \
  BENCHMARK_CAPTURE(plain, name, name)->Arg(100)->Unit(benchmark::kMillisecond)

SURVEY(randomNames);
BENCHMARK_CAPTURE(plain, randomNames, randomNames)->Arg(1000)->Unit(benchmark::kMillisecond);
SURVEY(allNamesOfAll);
SURVEY(twoNamesOfAll);
SURVEY(ascendingChain);
SURVEY(descendingChain);
SURVEY(shuffledChain);

}  // namespace
