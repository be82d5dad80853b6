// The adjustment of large surveys, step by step: the minimum, everything that is told of it, the
// certificate's sign.
#include "workbench/analysis/adjustment.h"

#include <benchmark/benchmark.h>

#include "workbench/analysis/best_minimum.h"
#include "workbench/analysis/ceres_problem.h"
#include "workbench/analysis/certificate.h"
#include "workbench/analysis/cofactors.h"
#include "workbench/analysis/large_networks.h"
#include "workbench/analysis/minimise.h"
#include "workbench/analysis/observation_statements.h"
#include "workbench/analysis/own_start.h"

namespace {

using namespace tiepoint::workbench::analysis;

struct Prepared {
  explicit Prepared(Network network_)
      : network(std::move(network_)),
        survey(surveyOf(network, participationOf(network))),
        equations(survey),
        factor(equations.matrix()),
        start(startOf(network, survey)),
        minimum(minimise(survey, start, equations, factor)) {
    equations.build(minimum.placements, minimum.elimination);
    factor.factorize(equations.matrix());
  }

  Solution solution() const { return {survey, minimum.placements, minimum.elimination, equations, factor}; }

  Network network;
  Survey survey;
  NormalEquations equations;
  SparseFactor factor;
  Placements start;
  Minimum minimum;
};

using Make = Network (*)(std::size_t);

void minimum(benchmark::State& state, Make make) {
  const Network network = make(static_cast<std::size_t>(state.range(0)));
  const Survey survey = surveyOf(network, participationOf(network));
  const Placements start = startOf(network, survey);
  int iterations = 0;
  for (auto _ : state) {
    NormalEquations equations(survey);
    SparseFactor factor(equations.matrix());
    const Minimum found = minimise(survey, start, equations, factor);
    iterations = found.iterations;
    if (!found.converged) state.SkipWithError("not converged");
  }
  state.counters["iterations"] = iterations;
}

void ownStart(benchmark::State& state, Make make) {
  const Network network = make(static_cast<std::size_t>(state.range(0)));
  const Survey survey = surveyOf(network, participationOf(network));
  for (auto _ : state) benchmark::DoNotOptimize(startOf(network, survey));
}

void factorisation(benchmark::State& state, Make make) {
  Prepared prepared(make(static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) benchmark::DoNotOptimize(prepared.factor.factorize(prepared.equations.matrix()));
  state.counters["filled"] = static_cast<double>(prepared.factor.filled());
}

void inverseElements(benchmark::State& state, Make make) {
  const Prepared prepared(make(static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) {
    const SparseInverse inverse(prepared.equations.matrix(), prepared.factor);
    benchmark::DoNotOptimize(inverse);
  }
}

void statistics(benchmark::State& state, Make make) {
  const Prepared prepared(make(static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) {
    Adjustment adjustment;
    adjustment.observations.resize(prepared.network.observations.size());
    adjustment.control.resize(prepared.network.targets.size());
    const Solution solution = prepared.solution();
    const Cofactors cofactors(solution);
    describeObservations(solution, cofactors, TestSetting{}, adjustment);
    benchmark::DoNotOptimize(adjustment);
  }
}

void certificate(benchmark::State& state, Make make) {
  const Prepared prepared(make(static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) {
    const auto form = RotationForm::of(prepared.survey);
    const Certificate found = certify(*form, prepared.minimum.placements, prepared.minimum.elimination);
    if (!found.certified) state.SkipWithError("not certified");
  }
}

void everything(benchmark::State& state, Make make) {
  const Network network = make(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(adjust(network));
}

#define SURVEY(name)                                                                                    \
  BENCHMARK_CAPTURE(ownStart, name, name)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);        \
  BENCHMARK_CAPTURE(minimum, name, name)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);         \
  BENCHMARK_CAPTURE(factorisation, name, name)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);   \
  BENCHMARK_CAPTURE(inverseElements, name, name)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond); \
  BENCHMARK_CAPTURE(statistics, name, name)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);      \
  BENCHMARK_CAPTURE(certificate, name, name)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);     \
  BENCHMARK_CAPTURE(everything, name, name)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)

SURVEY(area);
SURVEY(corridor);

// The same 200 stations by Ceres, from the same start.
BENCHMARK_CAPTURE(minimum, area, area)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(statistics, area, area)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(certificate, area, area)->Arg(200)->Unit(benchmark::kMillisecond);

#ifdef TIEPOINT_HAS_CERES

void ceresMinimum(benchmark::State& state) {
  const Network network = area(static_cast<std::size_t>(state.range(0)));
  const Survey survey = surveyOf(network, participationOf(network));
  const Placements start = startOf(network, survey);
  for (auto _ : state) {
    CeresProblem problem(network, survey, start);
    benchmark::DoNotOptimize(problem.solve());
  }
}
BENCHMARK(ceresMinimum)->Arg(200)->Unit(benchmark::kMillisecond);

/// Of all stations, and of nothing else.
void ceresCovariance(benchmark::State& state) {
  const Network network = area(static_cast<std::size_t>(state.range(0)));
  const Survey survey = surveyOf(network, participationOf(network));
  CeresProblem problem(network, survey, startOf(network, survey));
  problem.solve();
  for (auto _ : state) {
    if (!problem.stationCovariances()) state.SkipWithError("no covariances");
  }
}
BENCHMARK(ceresCovariance)->Arg(200)->Unit(benchmark::kMillisecond);

#endif

}  // namespace
