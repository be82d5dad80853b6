#include "workbench/analysis/adjustment.h"

#include <cmath>
#include <stdexcept>

#include "workbench/analysis/best_minimum.h"
#include "workbench/analysis/cofactors.h"
#include "workbench/analysis/levels.h"
#include "workbench/analysis/network.h"
#include "workbench/analysis/observation_statements.h"
#include "workbench/analysis/station_statements.h"
#include "workbench/analysis/stiffness.h"

namespace tiepoint::workbench::analysis {

namespace {

bool isShare(double number) { return number > 0.0 && number < 1.0; }

void requireSound(const AdjustmentOptions& options, const Network& network) {
  if (!isShare(options.alpha) || !isShare(options.power)) throw std::invalid_argument("a level isn't between 0 and 1");
  for (const CarriedPoint& point : options.carry) {
    if (point.station >= network.stations.size()) throw std::invalid_argument("a point of no station to carry");
  }
  for (const std::size_t observation : options.trace) {
    if (observation >= network.observations.size()) throw std::invalid_argument("no such observation to trace");
  }
}

/// Rows for all of the network, none filled.
Adjustment emptyAdjustment(const Network& network, const AdjustmentOptions& options) {
  Adjustment adjustment;
  adjustment.poses.resize(network.stations.size());
  adjustment.stations.resize(network.stations.size());
  adjustment.targets.resize(network.targets.size());
  adjustment.observations.resize(network.observations.size());
  adjustment.control.resize(network.targets.size());
  adjustment.scale = options.scale;
  return adjustment;
}

void describeNumbers(const Survey& survey, const Minimum& minimum, Adjustment& adjustment) {
  adjustment.datum.kind = survey.datum;
  adjustment.datum.defect = survey.defect;
  for (const SurveyStation& station : survey.stations) {
    if (station.held) adjustment.datum.stations.push_back(station.index);
    if (station.frame) adjustment.datum.frame = station.index;
  }
  adjustment.observationCount = survey.observationCount();
  adjustment.unknownCount = survey.unknownCount();
  if (adjustment.observationCount > adjustment.unknownCount) {
    adjustment.redundancy = adjustment.observationCount - adjustment.unknownCount;
  }
  adjustment.sumOfSquares = minimum.elimination.sumOfSquares;
  if (adjustment.redundancy > 0) {
    adjustment.varianceFactor = adjustment.sumOfSquares / static_cast<double>(adjustment.redundancy);
  }
  adjustment.iterations = minimum.iterations;
  adjustment.converged = minimum.converged;
}

TestSetting testSettingOf(const AdjustmentOptions& options, const Adjustment& adjustment) {
  TestSetting setting;
  setting.scale = options.scale;
  setting.redundancy = adjustment.redundancy;
  setting.levels = testLevels(options.alpha, options.power, options.scale, adjustment.redundancy);
  if (options.scale == VarianceScale::aPosteriori) setting.unit = std::sqrt(adjustment.varianceFactor.value_or(0.0));
  return setting;
}

/// Of the cofactors. Where nothing is left over to estimate a variance from, they stand for themselves.
double varianceOf(const Adjustment& adjustment) {
  return adjustment.scale == VarianceScale::aPosteriori ? adjustment.varianceFactor.value_or(1.0) : 1.0;
}

void describeStatistics(const Solution& solution, const AdjustmentOptions& options, Adjustment& adjustment) {
  const Cofactors cofactors(solution);
  const TestSetting setting = testSettingOf(options, adjustment);
  adjustment.levels = setting.levels;
  describeObservations(solution, cofactors, setting, adjustment);
  if (options.measurementsAlone) return;
  describeStations(solution, cofactors, varianceOf(adjustment), options.carry, adjustment);
  describeNaming(solution, adjustment);
  for (const std::size_t observation : options.trace) {
    adjustment.traces.push_back(traceOf(solution, cofactors, setting, observation));
  }
  if (options.scale == VarianceScale::aPriori && adjustment.redundancy > 0) {
    adjustment.globalTest = globalTest(adjustment.sumOfSquares, adjustment.redundancy);
  }
}

}  // namespace

Adjustment adjust(const Network& network, const AdjustmentOptions& options) {
  requireSound(network);
  requireSound(options, network);
  Adjustment adjustment = emptyAdjustment(network, options);
  const Survey survey = surveyOf(network, participationOf(network));
  NormalEquations equations(survey);
  if (equations.matrix().size() == 0) return adjustment;
  SparseFactor factor(equations.matrix());
  const BestMinimum best = bestMinimum(network, survey, options, equations, factor);
  const Minimum& minimum = best.minimum;
  equations.build(minimum.placements, minimum.elimination);
  factor.factorize(equations.matrix());
  const Solution solution{survey, minimum.placements, minimum.elimination, equations, factor};
  describeNumbers(survey, minimum, adjustment);
  describePlaces(solution, adjustment);
  adjustment.certificate = best.certificate;
  adjustment.otherStartWon = best.otherStartWon;
  const Softness softness = softnessOf(solution);
  adjustment.network = softness.network;
  adjustment.open = softness.open;
  adjustment.outcome = softness.open ? AdjustmentOutcome::undetermined : AdjustmentOutcome::adjusted;
  if (!softness.open) describeStatistics(solution, options, adjustment);
  return adjustment;
}

}  // namespace tiepoint::workbench::analysis
