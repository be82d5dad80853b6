#include "workbench/analysis/observation_statements.h"

#include <cmath>

#include "workbench/analysis/levels.h"
#include "workbench/analysis/station_reach.h"

namespace tiepoint::workbench::analysis {

namespace {

/// One measurement of a target, with what its statements need.
struct Measurement {
  std::size_t target = 0;
  /// None for control.
  std::optional<std::size_t> sighting;
  TestedResidual tested;
  const ObservationCofactors* cofactors = nullptr;
};

TestedResidual testedSighting(const Solution& solution, std::size_t sighting, const Eigen::Matrix3d& cofactor) {
  const double information = solution.survey.sightings[sighting].information;
  return testedResidual(solution.elimination.residuals[sighting], information * Eigen::Matrix3d::Identity(),
                        Eigen::Matrix3d::Identity() / information, cofactor);
}

class Statements {
 public:
  Statements(const Solution& solution_, const TestSetting& setting_) : solution(solution_), setting(setting_) {}

  AdjustedObservation on(const Measurement& measurement) const {
    AdjustedObservation statements = statementsOn(measurement.tested, setting);
    if (measurement.sighting) {
      statements.sigma = 1.0 / std::sqrt(solution.survey.sightings[*measurement.sighting].information);
    }
    if (!measurement.tested.isControlled() || setting.redundancy == 0) return statements;
    statements.effect = largestEffect(measurement);
    statements.leftOut = leftOut(measurement);
    return statements;
  }

 private:
  const std::vector<std::size_t>& observers(const Measurement& measurement) const {
    return solution.survey.targets[measurement.target].sightings;
  }

  const SurveyStation& stationOf(std::size_t sighting) const {
    return solution.survey.stations[solution.survey.sightings[sighting].station];
  }

  StationShift largestEffect(const Measurement& measurement) const {
    const double reach = setting.unit * std::sqrt(setting.levels.noncentralityPoint);
    const Eigen::Matrix3d pull = measurement.tested.hiddenPull();
    std::optional<StationShift> largest;
    for (std::size_t a = 0; a < observers(measurement).size(); ++a) {
      const SurveyStation& station = stationOf(observers(measurement)[a]);
      if (station.held) continue;
      const StationShift effect = effectOn(station.index, measurement.cofactors->stations[a], pull, reach);
      if (!largest || effect.shift > largest->shift) largest = effect;
    }
    return *largest;
  }

  LeftOut leftOut(const Measurement& measurement) const {
    std::optional<LeftOut> result;
    const bool isOfFreeStation = measurement.sighting && !stationOf(*measurement.sighting).held;
    for (std::size_t a = 0; a < observers(measurement).size(); ++a) {
      const std::size_t sighting = observers(measurement)[a];
      if (isOfFreeStation ? sighting != *measurement.sighting : stationOf(sighting).held) continue;
      const StationVector motion = motionWithout(measurement.cofactors->stations[a], measurement.tested);
      const StationShift moved = shiftOf(stationOf(sighting).index, motion);
      if (result && moved.shift <= result->moved.shift) continue;
      result = LeftOut{measurement.tested.hiddenError(), moved,
                       displacementOf(solution, solution.survey.sightings[sighting].station, motion)};
    }
    return *result;
  }

  const Solution& solution;
  const TestSetting& setting;
};

/// The smallest p, which is that of the largest statistic.
class SuspectSearch {
 public:
  void look(bool isControl, std::size_t index, const AdjustedObservation& statements) {
    if (!statements.statistic) return;
    ++tests;
    if (!statements.p) return;
    if (found && !(*statements.statistic > statistic)) return;
    found = Suspect{isControl, index, *statements.p};
    statistic = *statements.statistic;
  }

  void tell(Adjustment& adjustment) const {
    adjustment.levels.tests = tests;
    if (tests == 0) return;
    adjustment.levels.familyAlpha = familyAlpha(tests);
    if (found && found->p < *adjustment.levels.familyAlpha) adjustment.suspect = found;
  }

 private:
  std::size_t tests = 0;
  double statistic = 0.0;
  std::optional<Suspect> found;
};

void describeTarget(const Solution& solution, const Cofactors& cofactors, const Statements& statements, std::size_t t,
                    Adjustment& adjustment) {
  const SurveyTarget& target = solution.survey.targets[t];
  const std::vector<ObservationCofactors> ofTarget = cofactors.ofTarget(t);
  for (std::size_t a = 0; a < target.sightings.size(); ++a) {
    const std::size_t sighting = target.sightings[a];
    Measurement measurement{t, sighting, testedSighting(solution, sighting, ofTarget[a].own), &ofTarget[a]};
    adjustment.observations[solution.survey.sightings[sighting].observation] = statements.on(measurement);
  }
  if (target.kind != TargetKind::controlled) return;
  const TestedResidual tested = testedResidual(solution.elimination.controlResiduals[t], target.information,
                                               target.covariance, ofTarget.back().own);
  adjustment.control[target.index] = statements.on({t, std::nullopt, tested, &ofTarget.back()});
}

}  // namespace

void describeObservations(const Solution& solution, const Cofactors& cofactors, TestSetting setting,
                          Adjustment& adjustment) {
  const Statements statements(solution, setting);
  for (std::size_t t = 0; t < solution.survey.targets.size(); ++t) {
    describeTarget(solution, cofactors, statements, t, adjustment);
  }
  SuspectSearch search;
  for (std::size_t o = 0; o < adjustment.observations.size(); ++o) {
    if (adjustment.observations[o]) search.look(false, o, *adjustment.observations[o]);
  }
  for (std::size_t t = 0; t < adjustment.control.size(); ++t) {
    if (adjustment.control[t]) search.look(true, t, *adjustment.control[t]);
  }
  search.tell(adjustment);
}

Trace traceOf(const Solution& solution, const Cofactors& cofactors, const TestSetting& setting,
              std::size_t observation) {
  Trace trace;
  trace.observation = observation;
  const Survey& survey = solution.survey;
  std::size_t sighting = 0;
  while (sighting < survey.sightings.size() && survey.sightings[sighting].observation != observation) ++sighting;
  if (sighting == survey.sightings.size() || setting.redundancy == 0) return trace;
  const std::size_t target = survey.sightings[sighting].target;
  const auto& ofTarget = survey.targets[target].sightings;
  std::size_t place = 0;
  while (ofTarget[place] != sighting) ++place;
  const TestedResidual tested = testedSighting(solution, sighting, cofactors.ofTarget(target)[place].own);
  if (!tested.isControlled()) return trace;
  const double reach = setting.unit * std::sqrt(setting.levels.noncentralityPoint);
  const std::vector<StationRows> rows = cofactors.reachOf(sighting);
  for (std::size_t s = 0; s < survey.stations.size(); ++s) {
    if (survey.stations[s].held) continue;
    const std::size_t index = survey.stations[s].index;
    const StationVector motion = motionWithout(rows[s], tested);
    trace.stations.push_back({index, effectOn(index, rows[s], tested.hiddenPull(), reach), shiftOf(index, motion),
                              displacementOf(solution, s, motion)});
  }
  return trace;
}

}  // namespace tiepoint::workbench::analysis
