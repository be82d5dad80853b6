// Which of a survey's groups are connected, and the scan that starts again after each join as baseline.
#include "workbench/geometry/linked_sets.h"

#include <benchmark/benchmark.h>

#include <string>

#include "workbench/geometry/plain_linked_sets.h"

namespace {

using Sets = std::vector<std::set<std::string>>;

constexpr std::size_t least = 3;
constexpr int namesPerStation = 20;

/// Every two stations have all their names in common, and none with any other.
Sets pairs(std::int64_t count) {
  Sets sets(static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < sets.size(); ++i) {
    for (int k = 0; k < namesPerStation; ++k) sets[i].insert(std::to_string(i / 2) + " " + std::to_string(k));
  }
  return sets;
}

/// Each station shares five names with the next.
Sets chain(std::int64_t count) {
  Sets sets(static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < sets.size(); ++i) {
    for (std::size_t k = 0; k < namesPerStation; ++k) sets[i].insert(std::to_string((namesPerStation - 5) * i + k));
  }
  return sets;
}

/// All stations share two names, which joins none.
Sets twoNamesOfAll(std::int64_t count) {
  Sets sets = pairs(count);
  for (auto& names : sets) names.insert({"a", "b"});
  return sets;
}

template <Sets (*make)(std::int64_t)>
void ours(benchmark::State& state) {
  const Sets sets = make(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(tiepoint::workbench::linkedSets(sets, least));
}
BENCHMARK(ours<pairs>)->Name("ours/pairs")->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMillisecond);
BENCHMARK(ours<chain>)->Name("ours/chain")->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMillisecond);
BENCHMARK(ours<twoNamesOfAll>)
    ->Name("ours/twoNamesOfAll")
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMillisecond);

template <Sets (*make)(std::int64_t)>
void plain(benchmark::State& state) {
  const Sets sets = make(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(tiepoint::testing::plainLinkedSets(sets, least));
}
BENCHMARK(plain<pairs>)->Name("plain/pairs")->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(plain<chain>)->Name("plain/chain")->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(plain<twoNamesOfAll>)->Name("plain/twoNamesOfAll")->Arg(100)->Unit(benchmark::kMillisecond);

}  // namespace
