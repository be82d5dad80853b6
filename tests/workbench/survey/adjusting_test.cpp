// Whole surveys by the adjustment: what stands in a drawing and in a request is the network that is adjusted.
#include "workbench/survey/adjusting.h"

#include <gmock/gmock.h>

#include <cmath>

#include "workbench/analysis/adjustment.h"
#include "workbench/analysis/random_networks.h"
#include "workbench/geometry/pose_matrix.h"
#include "workbench/survey/drawn_stations.h"
#include "workbench/survey/refusal_of.h"
#include "workbench/survey/register_survey.h"

namespace tiepoint::workbench {
namespace {

using analysis::testing::Fixing;
using analysis::testing::Kind;
using analysis::testing::Levels;
using analysis::testing::RandomNetwork;
using analysis::testing::Shape;
using testing::ElementsAre;

std::string stationName(std::size_t s) { return "S" + std::to_string(100 + s); }
std::string targetName(std::size_t t) { return "T" + std::to_string(100 + t); }

/// Stations that are adjusted in a drawing.
class AdjustedStations : public DrawnStations {
 protected:
  AdjustedStations() { request.method = RegistrationMethod::adjust; }

  /// The network as a surveyor has it: stations in a drawing, the rest in a request.
  void put(const analysis::Network& network) {
    std::vector<StationPoints> stations(network.stations.size());
    for (std::size_t s = 0; s < stations.size(); ++s) {
      stations[s].name = stationName(s);
      if (network.stations[s].held) request.base.push_back(stationName(s));
      if (network.stations[s].levelled) request.adjustment.levelled.push_back(stationName(s));
    }
    for (const analysis::Observation& o : network.observations) {
      const Eigen::Vector3d& p = o.place;
      stations[o.station].points.push_back({targetName(o.target), {p.x(), p.y(), p.z()}, o.weight});
      resolved.sigmas.push_back({choiceOf(stationName(o.station), targetName(o.target)), o.sigma});
    }
    for (std::size_t t = 0; t < network.targets.size(); ++t) {
      const auto& control = network.targets[t].control;
      if (control) resolved.control.push_back({targetName(t), *control});
    }
    store(stations);
  }

  const Registration& adjustThem() {
    survey = registerSurvey(workbench, resolved, findings, progress);
    return survey->registration;
  }

  std::size_t indexOf(const Registration& registration, std::size_t station, std::size_t target) const {
    for (std::size_t i = 0; i < registration.points.size(); ++i) {
      const PointOutcome& point = registration.points[i];
      if (point.group == station && point.name == targetName(target)) return i;
    }
    return registration.points.size();
  }

  ResolvedRequest resolved;
  RegistrationRequest& request = resolved.request;
  Findings findings;
  ToldProgress progress;
  std::unique_ptr<OpenSurvey> survey;
};

// ---- Every kind of survey ----

std::vector<Kind> kinds() {
  std::vector<Kind> all;
  for (const Fixing fixing : {Fixing::base, Fixing::twoBases, Fixing::heldControl, Fixing::roundControl,
                              Fixing::fullControl, Fixing::baseAndControl, Fixing::free}) {
    for (const Levels levels : {Levels::none, Levels::some, Levels::all}) {
      Kind kind;
      kind.shape = all.size() % 2 == 0 ? Shape::hall : Shape::chain;
      kind.fixing = fixing;
      kind.levels = levels;
      kind.isWeighted = all.size() % 3 != 0;
      kind.inMillions = all.size() % 4 == 1;
      kind.grossErrors = all.size() % 5 == 2 ? 1 : 0;
      all.push_back(kind);
    }
  }
  return all;
}

class EveryKind : public AdjustedStations, public testing::WithParamInterface<std::size_t> {};

void expectNear(double found, double wanted, double within) {
  EXPECT_NEAR(found, wanted, within * std::max(std::abs(wanted), 1e-12));
}

TEST_P(EveryKind, IsTheNetworkThatIsAdjusted) {
  const RandomNetwork random = analysis::testing::randomNetwork(kinds()[GetParam()], GetParam() + 1);
  put(random.network);
  const Registration& registration = adjustThem();
  ASSERT_TRUE(registration.registered());
  const analysis::Adjustment wanted = analysis::adjust(random.network);
  const AdjustedSurvey& found = *registration.adjustment;
  EXPECT_TRUE(found.result.converged);
  EXPECT_EQ(found.result.redundancy, wanted.redundancy);
  EXPECT_EQ(found.result.datum.kind, wanted.datum.kind);
  expectNear(found.result.sumOfSquares, wanted.sumOfSquares, 1e-6);
  for (std::size_t s = 0; s < random.network.stations.size(); ++s) {
    const analysis::Pose pose = poseOf(registration.groups[s].motion().value());
    EXPECT_LT((pose.rotation - wanted.poses[s]->rotation).cwiseAbs().maxCoeff(), 1e-9);
    EXPECT_LT((pose.shift - wanted.poses[s]->shift).norm(), 1e-9 * std::max(30.0, wanted.poses[s]->shift.norm()));
    EXPECT_EQ(registration.groups[s].toCommon.has_value(), !random.network.stations[s].held);
  }
  for (std::size_t o = 0; o < random.network.observations.size(); ++o) {
    const analysis::Observation& seen = random.network.observations[o];
    const std::size_t point = indexOf(registration, seen.station, seen.target);
    const analysis::AdjustedObservation* told = found.ofPoint(point);
    ASSERT_EQ(told != nullptr, wanted.observations[o].has_value());
    if (!told) continue;
    EXPECT_NEAR(*told->sigma, seen.sigma / std::sqrt(seen.weight), 1e-15);
    EXPECT_NEAR(*registration.points[point].discrepancy, told->residual.norm(), 1e-15);
    EXPECT_NEAR((told->residual - wanted.observations[o]->residual).norm(), 0.0, 1e-8);
    ASSERT_EQ(told->statistic.has_value(), wanted.observations[o]->statistic.has_value());
  }
}

INSTANTIATE_TEST_SUITE_P(OfSurvey, EveryKind, testing::Range<std::size_t>(0, 21));

// ---- What takes part ----

class FourInAHall : public AdjustedStations {
 protected:
  /// Four stations of one hall without errors, each shifted along x.
  void storeHall() {
    for (int s = 0; s < 4; ++s) {
      stations.push_back(hallFrom("S" + std::to_string(s + 1), 100.0 * s, {"T1", "T2", "T3", "T4", "T5"}));
    }
  }
  std::vector<StationPoints> stations;
};

TEST_F(FourInAHall, AreFoundExactly) {
  storeHall();
  store(stations);
  const Registration& registration = adjustThem();
  ASSERT_TRUE(registration.registered());
  EXPECT_EQ(registration.method, RegistrationMethod::adjust);
  EXPECT_EQ(registration.adjustment->result.datum.kind, analysis::DatumKind::free);
  EXPECT_EQ(registration.adjustment->result.datum.frame, 0u);
  for (std::size_t s = 0; s < 4; ++s) {
    ASSERT_TRUE(registration.groups[s].toCommon);
    EXPECT_NEAR((*registration.groups[s].toCommon)(0, 3), -100.0 * static_cast<double>(s), 1e-9);
  }
  EXPECT_FALSE(registration.registered()->outlier) << "rounding is no error";
}

TEST_F(FourInAHall, TheLastOfTwoPointsOfANameIsUsed) {
  storeHall();
  stations[1].points.insert(stations[1].points.begin(), {"T3", {9, 9, 9}});
  store(stations);
  const Registration& registration = adjustThem();
  ASSERT_TRUE(registration.registered());
  EXPECT_LT(registration.registered()->discrepancies->largest, 1e-9);
  EXPECT_EQ(registration.points[5].name, "T3");
  EXPECT_FALSE(registration.points[5].active);
  EXPECT_EQ(registration.points[5].reason, Reason::nameAgain);
  ASSERT_EQ(findings.all().size(), 1u);
  EXPECT_EQ(findings.all()[0].kind, FindingKind::nameTwice);
  EXPECT_THAT(findings.all()[0].groups, ElementsAre("S2"));
  EXPECT_THAT(findings.all()[0].points, ElementsAre("T3"));
}

TEST_F(FourInAHall, APlaceThatIsNotFiniteTakesNoPart) {
  storeHall();
  stations[1].points.push_back({"T9", {std::nan(""), 1, 1}});
  store(stations);
  EXPECT_TRUE(adjustThem().registered());
  request.adjustment.allLevelled = true;
  EXPECT_TRUE(adjustThem().registered());
}

TEST_F(FourInAHall, CoordinatesTooLargeForAnyMotionAreRefused) {
  storeHall();
  for (StationPoints& station : stations) {
    for (MeasuredPoint& point : station.points) point.position.x *= 1e200;
  }
  store(stations);
  EXPECT_EQ(refusalOf([&] { adjustThem(); }).kind, RefusalKind::notRigid);
}

TEST_F(FourInAHall, ATargetOfOneStationTakesNoPart) {
  storeHall();
  stations[2].points.push_back({"T9", {1, 1, 1}});
  store(stations);
  const Registration& registration = adjustThem();
  const std::size_t lone = 15;
  ASSERT_EQ(registration.points[lone].name, "T9");
  EXPECT_EQ(registration.points[lone].reason, Reason::loneName);
  EXPECT_TRUE(registration.points[lone].registered) << "its station has a place";
  EXPECT_FALSE(registration.points[lone].discrepancy);
  for (const MergedTarget& target : registration.registered()->targets) EXPECT_NE(target.name, "T9");
}

TEST_F(FourInAHall, ATargetSaysHowManyStationsSawItAndWhatTheyWeighOnAverage) {
  storeHall();
  stations[0].points[1].weight = 0.5;
  stations[3].points.pop_back();
  store(stations);
  const std::vector<MergedTarget>& targets = adjustThem().registered()->targets;
  ASSERT_EQ(targets.size(), 5u);
  EXPECT_EQ(targets[0].sightings, 4u);
  EXPECT_EQ(targets[4].sightings, 3u);
  EXPECT_EQ(targets[1].weight, 0.875);
  EXPECT_TRUE(targets[1].covariance);
}

TEST_F(FourInAHall, AWrongMeasurementStandsOutByWhatAllOthersSeeOfIt) {
  storeHall();
  stations[2].points[3].position.z += 0.060;
  for (std::size_t s = 0; s < 4; ++s) stations[s].points[s].position.x += 0.001;
  store(stations);
  const Registration& registration = adjustThem();
  const auto& outlier = registration.registered()->outlier;
  ASSERT_TRUE(outlier);
  EXPECT_EQ(registration.groups[registration.points[outlier->point].group].name, "S3");
  EXPECT_EQ(registration.points[outlier->point].name, "T4");
  ASSERT_TRUE(outlier->leftOut);
  EXPECT_NEAR(outlier->leftOut->z, 0.060, 0.003);
}

/// Two stations alone can't tell which of them is wrong.
TEST_F(FourInAHall, OfTwoThatAreSuspectAlikeTheFirstByNameIsAccused) {
  storeHall();
  stations.resize(2);
  stations[1].points[3].position.z += 0.060;
  for (const bool isReversed : {false, true}) {
    if (isReversed) std::swap(stations[0].name, stations[1].name);
    workbench.openTemporaryDocument();
    store(stations);
    request.adjustment.sigma = 0.001;
    const Registration& registration = adjustThem();
    ASSERT_TRUE(registration.registered()->outlier);
    const PointOutcome& accused = registration.points[registration.registered()->outlier->point];
    EXPECT_EQ(registration.groups[accused.group].name, "S1") << isReversed;
    EXPECT_EQ(accused.name, "T4");
    survey.reset();
  }
}

TEST_F(FourInAHall, ThePairwiseMethodIsJudgedByTheSameTests) {
  storeHall();
  stations[2].points[3].position.z += 0.060;
  for (std::size_t s = 0; s < 4; ++s) stations[s].points[s].position.x += 0.001;
  store(stations);
  request.method = RegistrationMethod::pairwise;
  const Registration& registration = adjustThem();
  EXPECT_FALSE(registration.adjustment);
  const auto& outlier = registration.registered()->outlier;
  ASSERT_TRUE(outlier);
  EXPECT_EQ(registration.points[outlier->point].name, "T4");
  EXPECT_EQ(registration.points[outlier->point].group, 2u);
}

// ---- What isn't determined ----

class LooseStations : public AdjustedStations {};

TEST_F(LooseStations, ThatShareTwoNamesArentLinked) {
  store({hallFrom("A", 0, {"T1", "T2", "T3"}), hallFrom("B", 100, {"T1", "T2", "U3", "U4"})});
  const Registration& registration = adjustThem();
  EXPECT_TRUE(std::holds_alternative<NotConnected>(registration.outcome));
  EXPECT_FALSE(registration.adjustment);
  EXPECT_EQ(registration.links.components.size(), 2u);
}

TEST_F(LooseStations, ThatAreLevelledAreJoinedByTwo) {
  store({hallFrom("A", 0, {"T1", "T2", "T3"}), hallFrom("B", 100, {"T1", "T2", "U3", "U4"})});
  request.adjustment.allLevelled = true;
  const Registration& registration = adjustThem();
  ASSERT_TRUE(registration.registered());
  EXPECT_NEAR((*registration.groups[1].toCommon)(0, 3), -100.0, 1e-9);
}

TEST_F(LooseStations, TiedByOneTargetTurnAboutIt) {
  store({hallFrom("A", 0, {"T1", "T2", "T3", "T4"}), hallFrom("B", 100, {"T1", "T2", "T3", "T4"}),
         hallFrom("C", 0, {"T1", "U2", "U3", "U4"}), hallFrom("D", 100, {"T1", "U2", "U3", "U4"})});
  const Registration& registration = adjustThem();
  ASSERT_TRUE(std::holds_alternative<Undetermined>(registration.outcome));
  ASSERT_TRUE(registration.adjustment->result.open);
  EXPECT_TRUE(registration.adjustment->result.open->turns);
  EXPECT_EQ(registration.links.components.size(), 2u) << "what is missing is told as well";
  EXPECT_FALSE(registration.groups[1].toCommon);
  EXPECT_TRUE(registration.points[0].active);
}

TEST_F(LooseStations, WithTargetsOnALineTurnAboutIt) {
  const auto line = [](const std::string& name, double east) {
    StationPoints station{name, {}};
    for (int i = 0; i < 4; ++i) station.points.push_back({"T" + std::to_string(i), {east + 5.0 * i, 0, 0}});
    return station;
  };
  store({line("A", 0), line("B", 100)});
  const Registration& registration = adjustThem();
  ASSERT_TRUE(std::holds_alternative<Undetermined>(registration.outcome));
  EXPECT_TRUE(registration.adjustment->result.open->isLineOfTargets);
}

TEST_F(LooseStations, OfWhichTheBaseSharesNothingAreRefusedForTheBase) {
  store({hallFrom("A", 0, {"U1", "U2", "U3"}), hallFrom("B", 0, {"T1", "T2", "T3"}),
         hallFrom("C", 100, {"T1", "T2", "T3"})});
  request.base = {"A"};
  EXPECT_TRUE(std::holds_alternative<BaseNotShared>(adjustThem().outcome));
}

TEST_F(LooseStations, WhoseBaseIsLostStandWhereControlHasThem) {
  store({hallFrom("A", 0, {"U1", "U2", "U3"}), hallFrom("B", 0, {"T1", "T2", "T3"}),
         hallFrom("C", 100, {"T1", "T2", "T3"})});
  request.base = {"A"};
  resolved.control = {{"T1", {{5, 0, 0}, {}}}, {"T2", {{13, 0, 0}, {}}}, {"T3", {{5, 6, 0}, {}}}};
  const Registration& registration = adjustThem();
  ASSERT_TRUE(registration.registered());
  EXPECT_EQ(registration.adjustment->result.datum.kind, analysis::DatumKind::control);
  EXPECT_NEAR((*registration.groups[2].toCommon)(0, 3), -95.0, 1e-9);
  EXPECT_EQ(findings.all().front().kind, FindingKind::baseTakesNoPart);
}

// ---- What a request says ----

class AskedFor : public AdjustedStations {
 protected:
  AskedFor() {
    store({hallFrom("A", 0, {"T1", "T2", "T3", "T4", "T5"}), hallFrom("B", 100, {"T1", "T2", "T3", "T4", "T5"})});
  }
  const analysis::Adjustment& result() { return adjustThem().adjustment->result; }
};

TEST_F(AskedFor, NothingEverySigmaIsOneAndTheVarianceEstimated) {
  EXPECT_EQ(result().scale, analysis::VarianceScale::aPosteriori);
  EXPECT_EQ(result().observations[0]->sigma, 1.0);
}

TEST_F(AskedFor, TheNarrowestSigmaHolds) {
  request.adjustment.sigma = 0.004;
  resolved.sigmas = {{choiceOf("B", "T2"), 0.001}, {choiceOf("B"), 0.002}};
  const analysis::Adjustment& found = result();
  EXPECT_EQ(found.scale, analysis::VarianceScale::aPriori);
  EXPECT_EQ(found.observations[0]->sigma, 0.004);
  EXPECT_EQ(found.observations[5]->sigma, 0.002);
  EXPECT_EQ(found.observations[6]->sigma, 0.001);
}

TEST_F(AskedFor, ASigmaOfOneStationIsGivenToo) {
  resolved.sigmas = {{choiceOf("B"), 0.002}};
  EXPECT_EQ(result().scale, analysis::VarianceScale::aPriori);
}

TEST_F(AskedFor, TheVarianceIsTheOneThatIsNamed) {
  request.adjustment.sigma = 0.004;
  request.adjustment.variance = analysis::VarianceScale::aPosteriori;
  EXPECT_EQ(result().scale, analysis::VarianceScale::aPosteriori);
}

TEST_F(AskedFor, LevelsArePassedOn) {
  request.adjustment.alpha = 0.01;
  request.adjustment.power = 0.9;
  EXPECT_EQ(result().levels.alpha, 0.01);
  EXPECT_EQ(result().levels.power, 0.9);
}

TEST_F(AskedFor, PointsAreCarriedAndMeasurementsTraced) {
  request.base = {"A"};
  resolved.carry = {{"B", {101, 2, 3}}};
  request.adjustment.trace = {choiceOf("B", "T3")};
  const analysis::Adjustment& found = result();
  ASSERT_EQ(found.carried.size(), 1u);
  EXPECT_NEAR(found.carried[0].position.x(), 1.0, 1e-9);
  ASSERT_EQ(found.traces.size(), 1u);
  EXPECT_EQ(found.traces[0].observation, 7u);
}

TEST_F(AskedFor, ControlThatNoStationMeasuredIsSaid) {
  resolved.control = {
      {"T1", {{0, 0, 0}, {}}}, {"T2", {{8, 0, 0}, {}}}, {"T3", {{0, 6, 0}, {}}}, {"K9", {{1, 2, 3}, {}}}};
  const Registration& registration = adjustThem();
  ASSERT_TRUE(registration.registered());
  EXPECT_EQ(registration.adjustment->result.datum.kind, analysis::DatumKind::control);
  ASSERT_EQ(registration.adjustment->unseenControl.size(), 1u);
  ASSERT_EQ(findings.all().size(), 1u);
  EXPECT_EQ(findings.all()[0].kind, FindingKind::controlNotSeen);
  EXPECT_THAT(findings.all()[0].points, ElementsAre("K9"));
}

TEST_F(AskedFor, AStartIsJudgedAndNotReplaced) {
  request.adjustment.startFile = "poses.json";
  resolved.start = {{"B", {Eigen::Matrix3d::Identity(), {-90, 0, 0}}}, {"Z", {}}};
  const Registration& registration = adjustThem();
  ASSERT_TRUE(registration.registered());
  EXPECT_TRUE(registration.adjustment->startWasGiven);
  EXPECT_NEAR((*registration.groups[1].toCommon)(0, 3), -100.0, 1e-9);
}

}  // namespace
}  // namespace tiepoint::workbench
