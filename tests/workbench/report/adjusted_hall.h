// A registration by adjustment, made by hand, for the tests of what is told of one.
#pragma once

#include <string>
#include <vector>

#include "workbench/values/registration.h"

namespace tiepoint::workbench {

inline const char* const adjustedNames[] = {"T1", "T2", "T3", "T4"};

/// Of a measurement that is fine: a residual of 2 mm along x, half of its error.
inline analysis::AdjustedObservation fineObservation() {
  analysis::AdjustedObservation told;
  told.sigma = 0.001;
  told.residual = {0.002, 0.0, 0.0};
  told.redundancy = {0.5, 0.5, 0.5};
  told.leastRedundancy = 0.5;
  told.statistic = 2.0;
  told.p = 0.4;
  told.rejected = false;
  told.detectable = 0.006;
  told.leftOut.emplace();
  told.leftOut->error = {0.004, 0.0, 0.0};
  return told;
}

inline analysis::AdjustedStation fineStation() {
  analysis::AdjustedStation told;
  told.positionSigma = 0.0015;
  told.rotationSigma = 0.0001;
  told.largestPointSigma = 0.002;
  told.redundancy = 6.0;
  told.geometry = 0.3;
  return told;
}

/// A point, with its observation and its target, which is that of the name's number.
inline void addAdjustedPoint(Registration& registration, std::size_t group, std::size_t target) {
  AdjustedSurvey& survey = *registration.adjustment;
  PointOutcome& point = registration.points.emplace_back();
  point.id = registration.points.size() - 1;
  point.group = group;
  point.name = adjustedNames[target];
  point.active = point.named = true;
  point.registered = OdGePoint3d(10.0 * static_cast<double>(target), 0, 0);
  point.discrepancy = 0.002;
  point.residual = OdGeVector3d(0.002, 0, 0);
  survey.observationOf.emplace_back(survey.pointOf.size());
  survey.pointOf.push_back(registration.points.size() - 1);
  analysis::Observation observation;
  observation.station = group;
  observation.target = target;
  observation.sigma = 0.001;
  survey.network.observations.push_back(observation);
  survey.result.observations.emplace_back(fineObservation());
}

inline void addAdjustedNumbers(analysis::Adjustment& result) {
  result.outcome = analysis::AdjustmentOutcome::adjusted;
  result.datum.kind = analysis::DatumKind::base;
  result.datum.stations = {0};
  result.observationCount = 36;
  result.unknownCount = 24;
  result.redundancy = 12;
  result.sumOfSquares = 17.28;
  result.varianceFactor = 1.44;
  result.iterations = 4;
  result.converged = true;
  result.globalTest = analysis::GlobalTest{4.32, 23.52, true};
  result.levels.alpha = 0.001;
  result.levels.power = 0.8;
  result.levels.criticalPoint = 16.27;
  result.levels.tests = 12;
  result.levels.familyAlpha = 0.004;
  result.network = {0.0123, {{2, 0.7}, {1, 0.2}, {0, 0.1}}};
  result.certificate = analysis::Certificate{0.2, 9, true, true, 0.0, 17.28};
}

/// The base S1 and the stations S2 and S3, each of which measured T1 to T4 with 1 mm. Metres. Points 0 to 3 are
/// S1's, 4 to 7 S2's, 8 to 11 S3's, and observations likewise.
inline Registration adjustedHall() {
  Registration registration;
  registration.method = RegistrationMethod::adjust;
  registration.usesBase = true;
  registration.adjustment.emplace();
  AdjustedSurvey& survey = *registration.adjustment;
  survey.targetNames.assign(std::begin(adjustedNames), std::end(adjustedNames));
  survey.network.targets.resize(4);
  survey.result.control.resize(4);
  for (std::size_t t = 0; t < 4; ++t) {
    analysis::AdjustedTarget& target = survey.result.targets.emplace_back().emplace();
    target.position.x() = 10.0 * static_cast<double>(t);
    target.sightings = 3;
  }
  for (std::size_t g = 0; g < 3; ++g) {
    GroupOutcome& group = registration.groups.emplace_back();
    group.id = g;
    group.name = "S" + std::to_string(g + 1);
    group.points = group.active = 4;
    group.inBase = g == 0;
    survey.network.stations.emplace_back().held = g == 0;
    survey.result.poses.emplace_back(analysis::Pose());
    survey.result.stations.emplace_back();
    if (g > 0) survey.result.stations.back() = fineStation();
    for (std::size_t t = 0; t < 4; ++t) addAdjustedPoint(registration, g, t);
  }
  addAdjustedNumbers(survey.result);
  Registered registered;
  registered.discrepancies = Rms{12, 0.002, 0.002, 0.002};
  registered.largest = 6;
  registration.outcome = registered;
  return registration;
}

inline analysis::Adjustment& resultOf(Registration& registration) { return registration.adjustment->result; }

inline analysis::AdjustedObservation& observationOf(Registration& registration, std::size_t observation) {
  return *resultOf(registration).observations[observation];
}

/// T3 of S2 is 60 mm off, of which its residual has 40, and stands out.
inline void makeSuspect(Registration& registration) {
  analysis::AdjustedObservation& told = observationOf(registration, 6);
  told.residual = {0.0, -0.04, 0.0};
  told.leftOut->error = {0.0, -0.06, 0.0};
  told.p = 1e-200;
  told.statistic = 900.0;
  told.rejected = true;
  resultOf(registration).suspect = analysis::Suspect{false, 6, 1e-200};
  std::get<Registered>(registration.outcome).outlier = Outlier{6, 20.0};
}

/// T2 has a given place with a sigma, which is 35 mm off.
inline void makeControlSuspect(Registration& registration) {
  registration.adjustment->network.targets[1].control = analysis::Control{{10, 0, 0}, Eigen::Matrix3d::Identity()};
  analysis::AdjustedObservation told = fineObservation();
  told.sigma.reset();
  told.residual = {0.0, 0.0, 0.02};
  told.leftOut->error = {0.0, 0.0, 0.035};
  told.p = 0.00021;
  told.rejected = true;
  resultOf(registration).control[1] = told;
  resultOf(registration).suspect = analysis::Suspect{true, 1, 0.00021};
}

}  // namespace tiepoint::workbench
