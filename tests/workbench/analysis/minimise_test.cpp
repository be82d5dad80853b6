#include "workbench/analysis/minimise.h"

#include <gtest/gtest.h>
#include <Eigen/Geometry>

#include "workbench/analysis/own_start.h"
#include "workbench/analysis/random_networks.h"

namespace tiepoint::workbench::analysis::testing {
namespace {

using Eigen::Vector3d;

/// A survey with its start, and the minimum from there.
struct Prepared {
  explicit Prepared(const Network& network)
      : survey(surveyOf(network, participationOf(network))), equations(survey), factor(equations.matrix()) {
    minimum = minimise(survey, startOf(network, survey), equations, factor);
  }

  Survey survey;
  NormalEquations equations;
  SparseFactor factor;
  Minimum minimum;
};

Network twoStations(double startTurn) {
  const std::vector<Vector3d> targets{{0, 0, 0}, {10, 0, 1}, {10, 8, 0}, {0, 8, 3}, {5, 4, 2}, {-3, 4, 1}};
  Network network;
  network.targets.resize(targets.size());
  network.stations.resize(2);
  network.stations[0].held = true;
  network.stations[0].start = Pose{};
  const Eigen::Matrix3d turn = Eigen::AngleAxisd(0.4, Vector3d(1, 2, 3).normalized()).toRotationMatrix();
  for (std::size_t t = 0; t < targets.size(); ++t) {
    network.observations.push_back({0, t, targets[t], 0.001, 1.0});
    network.observations.push_back({1, t, turn.transpose() * targets[t], 0.001, 1.0});
  }
  const Eigen::Matrix3d wrong = Eigen::AngleAxisd(startTurn, Vector3d(3, -1, 2).normalized()).toRotationMatrix();
  network.stations[1].start = Pose{wrong * turn, Vector3d(1.0, 2.0, 3.0)};
  return network;
}

TEST(Minimise, FindsTheMinimumFromStartsThatAreTurnedAway) {
  for (const double turn : {0.1, 1.0, 2.0, 3.0, 3.1}) {
    const Prepared prepared(twoStations(turn));
    EXPECT_TRUE(prepared.minimum.converged) << turn;
    EXPECT_LT(prepared.minimum.elimination.sumOfSquares, 1e-15) << turn;
    EXPECT_LT(prepared.minimum.iterations, 60) << turn;
  }
}

/// The largest pull that a station feels, against what the single measurements pull at it.
double imbalance(Prepared& prepared) {
  prepared.equations.build(prepared.minimum.placements, prepared.minimum.elimination);
  double single = 0.0;
  for (std::size_t s = 0; s < prepared.survey.sightings.size(); ++s) {
    const double pull = prepared.survey.sightings[s].information * prepared.minimum.elimination.residuals[s].norm();
    single = std::max(single, pull);
  }
  const double lever = prepared.survey.stations.back().lever;
  return prepared.equations.gradient().cwiseAbs().maxCoeff() / (single * lever);
}

TEST(Minimise, EndsWhereNothingPulls) {
  for (const Shape shape : {Shape::hall, Shape::chain, Shape::ring, Shape::far}) {
    Kind kind;
    kind.shape = shape;
    kind.grossErrors = 2;
    kind.noise = 0.05;
    Prepared prepared(randomNetwork(kind, 61).network);
    EXPECT_TRUE(prepared.minimum.converged);
    EXPECT_LT(imbalance(prepared), 1e-9);
  }
}

/// Residuals as large as the survey: in several stations the names of two targets are exchanged.
Network withExchangedNames(std::uint64_t seed) {
  Kind kind;
  kind.stations = 4;
  kind.targets = 10;
  kind.noise = 0.01;
  Network network = randomNetwork(kind, seed).network;
  for (std::size_t s = 1; s < network.stations.size(); ++s) {
    std::vector<Observation*> seen;
    for (Observation& o : network.observations) {
      if (o.station == s) seen.push_back(&o);
    }
    std::swap(seen.at(0)->place, seen.at(2)->place);
    if (s % 2 == 1) std::swap(seen.at(1)->place, seen.at(4)->place);
  }
  return network;
}

TEST(Minimise, DoesNotCreepWhereResidualsAreAsLargeAsTheSurvey) {
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    Prepared prepared(withExchangedNames(seed));
    EXPECT_TRUE(prepared.minimum.converged) << seed;
    EXPECT_LT(prepared.minimum.iterations, 100) << seed;
    EXPECT_LT(imbalance(prepared), 1e-9) << seed;
  }
}

/// The gradient after a small motion along one unknown.
Eigen::VectorXd gradientBeside(Prepared& prepared, Eigen::Index unknown, double by) {
  Eigen::VectorXd motion = Eigen::VectorXd::Zero(prepared.equations.gradient().size());
  motion(unknown) = by;
  Placements there = prepared.minimum.placements;
  for (const std::size_t s : prepared.equations.stationOfNode()) {
    there[s] = moved(there[s], prepared.equations.partOf(motion, s));
  }
  prepared.equations.build(there, eliminateTargets(prepared.survey, there));
  return prepared.equations.gradient();
}

TEST(NormalEquations, OfTheWholeCurvatureAreTheSecondDerivative) {
  for (const Levels levels : {Levels::none, Levels::some}) {
    Kind kind;
    kind.stations = 4;
    kind.levels = levels;
    kind.grossErrors = 2;
    kind.noise = 0.5;
    Prepared prepared(randomNetwork(kind, 5).network);
    ASSERT_TRUE(prepared.minimum.converged);
    prepared.equations.build(prepared.minimum.placements, prepared.minimum.elimination, Curvature::whole);
    const Eigen::MatrixXd found = Eigen::MatrixXd(prepared.equations.matrix().lower()).selfadjointView<Eigen::Lower>();
    Eigen::MatrixXd wanted(found.rows(), found.cols());
    constexpr double by = 1e-5;
    for (Eigen::Index j = 0; j < wanted.cols(); ++j) {
      wanted.col(j) = (gradientBeside(prepared, j, by) - gradientBeside(prepared, j, -by)) / (2.0 * by);
    }
    EXPECT_LT((found - wanted).cwiseAbs().maxCoeff(), 1e-6 * wanted.cwiseAbs().maxCoeff());
  }
}

TEST(EliminateTargets, SeesWhatADoubleOfAFarCentreCantHold) {
  Network network = twoStations(0.0);
  const Survey survey = surveyOf(network, participationOf(network));
  Placements placements(2);
  for (Placement& placement : placements) placement.centre.x() = 1e9;
  placements[1].remainder.x() = 2e-8;
  Survey same = survey;
  for (Sighting& seen : same.sightings) seen.local = Vector3d(1.0, 2.0, 3.0);
  const Elimination elimination = eliminateTargets(same, placements);
  for (std::size_t s = 0; s < same.sightings.size(); ++s) {
    const double wanted = same.sightings[s].station == 1 ? 1e-8 : -1e-8;
    EXPECT_NEAR(elimination.residuals[s].x(), wanted, 1e-15);
  }
}

}  // namespace
}  // namespace tiepoint::workbench::analysis::testing
