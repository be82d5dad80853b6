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
