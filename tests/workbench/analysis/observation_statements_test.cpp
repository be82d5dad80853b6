// What is told of measurements, against solving again and against many draws.
#include <gtest/gtest.h>
#include <Eigen/Geometry>

#include <cmath>

#include "workbench/analysis/adjustment.h"
#include "workbench/analysis/random_networks.h"

namespace tiepoint::workbench::analysis::testing {
namespace {

using Eigen::Vector3d;

Kind hall(Fixing fixing, Levels levels = Levels::none) {
  Kind kind;
  kind.fixing = fixing;
  kind.levels = levels;
  kind.stations = 4;
  kind.targets = 10;
  kind.seen = 8;
  return kind;
}

Network without(const Network& network, std::size_t observation) {
  Network rest = network;
  rest.observations.erase(rest.observations.begin() + static_cast<std::ptrdiff_t>(observation));
  return rest;
}

TEST(LeftOut, TellsWhatSolvingAgainWithoutTheMeasurementGives) {
  const RandomNetwork random = randomNetwork(hall(Fixing::base), 5);
  const Network& network = random.network;
  const Adjustment all = adjust(network);
  // First-order statements: what is left out is small against the distances.
  constexpr double firstOrder = 2e-3;
  for (std::size_t o = 0; o < network.observations.size(); ++o) {
    const Observation& seen = network.observations[o];
    if (network.stations[seen.station].held) continue;
    const LeftOut& told = *all.observations[o]->leftOut;
    const Adjustment again = adjust(without(network, o));
    const Pose& pose = *again.poses[seen.station];
    const Vector3d error = pose.rotation * seen.place + pose.shift - again.targets[seen.target]->position;
    EXPECT_LT((told.error - error).norm(), firstOrder * error.norm());
    EXPECT_EQ(told.moved.station, seen.station);
    const Eigen::Matrix3d turn = pose.rotation * all.poses[seen.station]->rotation.transpose();
    EXPECT_NEAR(told.moved.rotation, std::sqrt(0.5) * (turn - Eigen::Matrix3d::Identity()).norm(),
                firstOrder * told.moved.rotation + 1e-9);
    const Vector3d centre = all.stations[seen.station]->centre;
    const Pose& before = *all.poses[seen.station];
    const Vector3d local = before.rotation.transpose() * (centre - before.shift);
    EXPECT_NEAR(told.moved.shift, (pose.rotation * local + pose.shift - centre).norm(),
                firstOrder * told.moved.shift + 1e-9);
  }
}

TEST(LeftOut, NamesAGrossErrorByItsFullSize) {
  RandomNetwork random = randomNetwork(hall(Fixing::base), 6);
  std::size_t wrong = random.network.observations.size() - 3;
  random.network.observations[wrong].place += Vector3d(0.06, 0.0, 0.0);
  const Adjustment adjustment = adjust(random.network);
  ASSERT_TRUE(adjustment.suspect);
  EXPECT_EQ(adjustment.suspect->index, wrong);
  EXPECT_NEAR(adjustment.observations[wrong]->leftOut->error.norm(), 0.06, 3.0 * 0.004);
  EXPECT_LT(adjustment.observations[wrong]->residual.norm(), 0.055);
}

struct Rates {
  double axes = 0.0, points = 0.0;
};

/// Over many surveys without gross errors.
Rates falseAlarms(VarianceScale scale, double alpha, int draws) {
  const RandomNetwork random = randomNetwork(hall(Fixing::base), 7);
  std::mt19937_64 numbers(70);
  AdjustmentOptions options;
  options.alpha = alpha;
  options.scale = scale;
  double axes = 0.0, points = 0.0, count = 0.0;
  for (int draw = 0; draw < draws; ++draw) {
    const Adjustment adjustment = adjust(measuredAnew(random, numbers), options);
    for (const auto& observation : adjustment.observations) {
      if (!observation->statistic) continue;
      count += 1.0;
      points += *observation->rejected ? 1.0 : 0.0;
      for (int axis = 0; axis < 3; ++axis) {
        axes += std::abs((*observation->w)(axis)) > *adjustment.levels.criticalAxis ? 1.0 / 3.0 : 0.0;
      }
      EXPECT_EQ(*observation->rejected, *observation->p < alpha);
    }
  }
  return {axes / count, points / count};
}

TEST(FalseAlarms, ComeAtTheStatedRate) {
  for (const VarianceScale scale : {VarianceScale::aPriori, VarianceScale::aPosteriori}) {
    const Rates rates = falseAlarms(scale, 0.05, 800);
    EXPECT_NEAR(rates.axes, 0.05, 0.004);
    EXPECT_NEAR(rates.points, 0.05, 0.005);
  }
}

TEST(DetectableError, IsFoundInFourOfFiveDraws) {
  const RandomNetwork random = randomNetwork(hall(Fixing::base), 8);
  const std::size_t watched = random.network.observations.size() - 5;
  const Adjustment expected = adjust(random.network);
  const double error = (*expected.observations[watched]->detectablePerAxis)(0);
  const std::size_t station = random.network.observations[watched].station;
  std::mt19937_64 numbers(80);
  int found = 0;
  constexpr int draws = 1500;
  for (int draw = 0; draw < draws; ++draw) {
    Network network = measuredAnew(random, numbers);
    network.observations[watched].place += random.truth[station].rotation.transpose() * Vector3d(error, 0.0, 0.0);
    const Adjustment adjustment = adjust(network);
    if (std::abs((*adjustment.observations[watched]->w)(0)) > *adjustment.levels.criticalAxis) ++found;
  }
  EXPECT_NEAR(static_cast<double>(found) / draws, 0.8, 0.025);
}

TEST(DetectableErrorOfThePoint, IsFoundInFourOfFiveDrawsInItsWorstDirection) {
  const RandomNetwork random = randomNetwork(hall(Fixing::base), 8);
  const std::size_t watched = random.network.observations.size() - 5;
  const Adjustment expected = adjust(random.network);
  const std::size_t station = random.network.observations[watched].station;
  const double size = *expected.observations[watched]->detectable;
  // By probing: the direction in which an error raises the statistic the least.
  Vector3d worst = Vector3d::UnitX();
  double least = HUGE_VAL;
  const Network exact = [&] {
    Network network = random.network;
    for (Observation& seen : network.observations) {
      const Pose& pose = random.truth[seen.station];
      seen.place = pose.rotation.transpose() * (random.targets[seen.target] - pose.shift);
    }
    return network;
  }();
  for (int probe = 0; probe < 400; ++probe) {
    std::mt19937_64 numbers(static_cast<std::uint64_t>(probe));
    const Vector3d direction = Vector3d(normal(numbers), normal(numbers), normal(numbers)).normalized();
    Network network = exact;
    network.observations[watched].place += random.truth[station].rotation.transpose() * (size * direction);
    const double statistic = *adjust(network).observations[watched]->statistic;
    if (statistic < least) worst = direction;
    least = std::min(least, statistic);
  }
  EXPECT_NEAR(least, expected.levels.noncentralityPoint, 0.02 * least);
  std::mt19937_64 numbers(81);
  int found = 0;
  constexpr int draws = 1500;
  for (int draw = 0; draw < draws; ++draw) {
    Network network = measuredAnew(random, numbers);
    network.observations[watched].place += random.truth[station].rotation.transpose() * (size * worst);
    if (*adjust(network).observations[watched]->rejected) ++found;
  }
  EXPECT_NEAR(static_cast<double>(found) / draws, 0.8, 0.03);
}

TEST(Trace, AgreesWithTheEffectOnTheOwnNeighbours) {
  for (const Fixing fixing : {Fixing::base, Fixing::free}) {
    const RandomNetwork random = randomNetwork(hall(fixing), 9);
    AdjustmentOptions options;
    const std::size_t watched = random.network.observations.size() - 2;
    options.trace = {watched};
    const Adjustment adjustment = adjust(random.network, options);
    const AdjustedObservation& told = *adjustment.observations[watched];
    ASSERT_EQ(adjustment.traces.size(), 1u);
    ASSERT_EQ(adjustment.traces[0].stations.size(), fixing == Fixing::base ? 3u : 4u);
    int compared = 0;
    for (const TracedStation& row : adjustment.traces[0].stations) {
      EXPECT_GT(row.effect.shift, 0.0);
      if (row.station == told.effect->station) {
        EXPECT_NEAR(row.effect.shift, told.effect->shift, 1e-9 * told.effect->shift);
        EXPECT_NEAR(row.effect.rotation, told.effect->rotation, 1e-9 * told.effect->rotation);
        ++compared;
      }
      if (row.station == told.leftOut->moved.station) {
        EXPECT_NEAR(row.leftOut.shift, told.leftOut->moved.shift, 1e-9 * told.leftOut->moved.shift);
        EXPECT_NEAR(row.displacement, told.leftOut->displacement, 1e-9 * told.leftOut->displacement);
        ++compared;
      }
    }
    EXPECT_EQ(compared, 2);
  }
}

/// Statements on residuals, for comparison from one datum to another.
void expectSameStatements(const Adjustment& one, const Adjustment& other) {
  constexpr double within = 1e-6;
  ASSERT_EQ(one.redundancy, other.redundancy);
  EXPECT_NEAR(one.sumOfSquares, other.sumOfSquares, within * one.sumOfSquares);
  for (std::size_t o = 0; o < one.observations.size(); ++o) {
    const AdjustedObservation &a = *one.observations[o], &b = *other.observations[o];
    EXPECT_NEAR(a.residual.norm(), b.residual.norm(), 1e-9);
    EXPECT_NEAR(a.redundancy.sum(), b.redundancy.sum(), within);
    EXPECT_NEAR(a.leastRedundancy, b.leastRedundancy, within);
    EXPECT_NEAR(*a.statistic, *b.statistic, within * std::max(1.0, *a.statistic));
    EXPECT_NEAR(*a.detectable, *b.detectable, within * *a.detectable);
    EXPECT_NEAR(a.leftOut->error.norm(), b.leftOut->error.norm(), within * a.leftOut->error.norm());
  }
}

TEST(StatementsOnResiduals, AreTheSameUnderEveryDatum) {
  const RandomNetwork random = randomNetwork(hall(Fixing::free), 10);
  const Adjustment free = adjust(random.network);
  for (std::size_t base = 0; base < 4; ++base) {
    Network held = random.network;
    held.stations[base].held = true;
    SCOPED_TRACE(base);
    expectSameStatements(free, adjust(held));
  }
}

TEST(StatementsOnResiduals, AreTheSameAfterARigidMotionOfAStationsSystem) {
  const RandomNetwork random = randomNetwork(hall(Fixing::base), 11);
  Network moved = random.network;
  const Eigen::Matrix3d turn = Eigen::AngleAxisd(1.3, Vector3d(1.0, 2.0, -1.0).normalized()).toRotationMatrix();
  for (Observation& seen : moved.observations) {
    if (seen.station == 2) seen.place = turn * seen.place + Vector3d(1234567.0, -7654321.0, 99.0);
  }
  expectSameStatements(adjust(random.network), adjust(moved));
}

TEST(Adjustment, IsTheSameToTheLastBitOnEveryRun) {
  Kind kind = hall(Fixing::free, Levels::some);
  kind.isWeighted = true;
  const RandomNetwork random = randomNetwork(kind, 12);
  const Adjustment one = adjust(random.network), other = adjust(random.network);
  EXPECT_EQ(one.sumOfSquares, other.sumOfSquares);
  EXPECT_EQ(one.network.stiffness, other.network.stiffness);
  EXPECT_EQ(one.certificate->eigenvalue, other.certificate->eigenvalue);
  for (std::size_t s = 0; s < one.stations.size(); ++s) {
    EXPECT_EQ(one.poses[s]->rotation, other.poses[s]->rotation);
    EXPECT_EQ(one.stations[s]->covariance, other.stations[s]->covariance);
  }
  for (std::size_t o = 0; o < one.observations.size(); ++o) {
    EXPECT_EQ(*one.observations[o]->statistic, *other.observations[o]->statistic);
  }
}

}  // namespace
}  // namespace tiepoint::workbench::analysis::testing
