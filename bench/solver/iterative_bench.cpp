// Passes of the iterative method, beside a plain loop over index lists with the same fit per group.
#include <benchmark/benchmark.h>

#include <Eigen/Dense>
#include <random>

#include "solver/iterative.h"

namespace {

using namespace ZOR::reg;

constexpr std::size_t namesSeen = 20;
/// One more pass is made than the limit says.
constexpr std::uint64_t iterationLimit = 99;
constexpr double passes = 100.0;
/// Smaller than the noise of any pass, so that the limit ends the run.
constexpr double noCriterion = 1e-300;

/// Stations that see 20 of the names each, three names for a station; 1 mm of noise in a hall.
RefPointList survey(std::size_t stations) {
  std::mt19937_64 random(36);
  std::uniform_real_distribution<double> place(0.0, 60.0);
  std::uniform_real_distribution<double> angle(-3.0, 3.0);
  std::normal_distribution<double> noise(0.0, 0.001);
  const std::size_t names = 3 * stations;
  std::vector<Eigen::Vector3d> truth(names);
  for (Eigen::Vector3d& target : truth) target = {place(random), place(random), place(random) / 8.0};
  std::uniform_int_distribution<std::size_t> anyName(0, names - 1);
  RefPointList points;
  for (std::size_t g = 0; g < stations; ++g) {
    const Eigen::Matrix3d turn = Eigen::AngleAxisd(angle(random), Eigen::Vector3d::UnitZ()).toRotationMatrix();
    const Eigen::Vector3d shift(place(random), place(random), place(random));
    for (std::size_t k = 0; k < namesSeen; ++k) {
      RefPoint point;
      point.id = points.size();
      point.groupId = g;
      point.commonId = anyName(random);
      const Eigen::Vector3d p =
          turn * truth[point.commonId] + shift + Eigen::Vector3d(noise(random), noise(random), noise(random));
      point.position = {p.x(), p.y(), p.z()};
      point.weight = 1.0;
      point.named = true;
      points.push_back(point);
    }
  }
  return points;
}

void countPasses(benchmark::State& state) {
  state.counters["per_pass"] =
      benchmark::Counter(passes, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void iterativePasses(benchmark::State& state) {
  const RefPointList points = survey(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    SolveResults results;
    PointDiscrepancies discrepancies;
    const auto end = solveIterative(points, {iterationLimit, noCriterion}, points, results, discrepancies);
    benchmark::DoNotOptimize(end->movement);
  }
  countPasses(state);
}
BENCHMARK(iterativePasses)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

/// A group of the plain loop.
struct Station {
  std::vector<std::size_t> names;
  std::vector<Eigen::Vector3d> places;
};

void moveOnto(const std::vector<Eigen::Vector3d>& model, Station& station) {
  Eigen::Vector3d modelMean = Eigen::Vector3d::Zero();
  Eigen::Vector3d ownMean = Eigen::Vector3d::Zero();
  for (std::size_t k = 0; k < station.names.size(); ++k) {
    modelMean += model[station.names[k]];
    ownMean += station.places[k];
  }
  modelMean /= static_cast<double>(station.names.size());
  ownMean /= static_cast<double>(station.names.size());
  Eigen::Matrix3d covariance = Eigen::Matrix3d::Zero();
  for (std::size_t k = 0; k < station.names.size(); ++k) {
    covariance += (station.places[k] - ownMean) * (model[station.names[k]] - modelMean).transpose();
  }
  const Eigen::JacobiSVD<Eigen::Matrix3d> svd(covariance, Eigen::ComputeFullU | Eigen::ComputeFullV);
  const double sign = (svd.matrixV() * svd.matrixU().transpose()).determinant() > 0.0 ? 1.0 : -1.0;
  const Eigen::Matrix3d turn = svd.matrixV() * Eigen::Vector3d(1.0, 1.0, sign).asDiagonal() * svd.matrixU().transpose();
  const Eigen::Vector3d shift = modelMean - turn * ownMean;
  for (Eigen::Vector3d& place : station.places) place = turn * place + shift;
}

void plainPasses(benchmark::State& state) {
  const RefPointList points = survey(static_cast<std::size_t>(state.range(0)));
  const auto stationCount = static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    std::vector<Station> stations(stationCount);
    std::vector<double> seen(3 * stationCount, 0.0);
    for (const RefPoint& point : points) {
      stations[point.groupId].names.push_back(point.commonId);
      stations[point.groupId].places.emplace_back(point.position.x, point.position.y, point.position.z);
      seen[point.commonId] += 1.0;
    }
    std::vector<Eigen::Vector3d> model(seen.size());
    std::vector<Eigen::Vector3d> previous(seen.size(), Eigen::Vector3d::Zero());
    double movement = 0.0;
    for (std::uint64_t pass = 0; pass <= iterationLimit; ++pass) {
      std::fill(model.begin(), model.end(), Eigen::Vector3d::Zero());
      for (const Station& station : stations) {
        for (std::size_t k = 0; k < station.names.size(); ++k) model[station.names[k]] += station.places[k];
      }
      movement = 0.0;
      for (std::size_t n = 0; n < model.size(); ++n) {
        if (seen[n] > 0.0) model[n] /= seen[n];
      }
      for (Station& station : stations) moveOnto(model, station);
      for (std::size_t n = 0; n < model.size(); ++n) movement = std::max(movement, (model[n] - previous[n]).norm());
      previous = model;
    }
    benchmark::DoNotOptimize(movement);
  }
  countPasses(state);
}
BENCHMARK(plainPasses)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
