#include "workbench/survey/survey_network.h"

#include <algorithm>
#include <map>
#include <set>

#include "workbench/analysis/participation.h"
#include "workbench/geometry/linked_sets.h"
#include "workbench/survey/point_choice.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

Eigen::Vector3d vectorOf(const OdGePoint3d& p) { return {p.x, p.y, p.z}; }

/// A place that isn't finite has been refused already where the session's rules put it in use.
bool isUsable(const RefPoint& point) { return isEligible(point) && point.weight > 0.0 && hasFinitePosition(point); }

std::size_t stationOf(const SessionState& state, GroupId group) {
  const auto found = std::lower_bound(state.groups.begin(), state.groups.end(), group,
                                      [](const SessionGroup& g, GroupId wanted) { return g.id < wanted; });
  return static_cast<std::size_t>(found - state.groups.begin());
}

std::size_t stationNamed(const SessionState& state, const std::string& name, Field field) {
  return stationOf(state, chosenGroup(state, name, field));
}

void addStations(const SessionState& state, const AdjustmentRequest& request, AdjustedSurvey& survey) {
  for (const SessionGroup& group : state.groups) {
    analysis::Station& station = survey.network.stations.emplace_back();
    station.held = group.inBase;
    station.levelled = request.allLevelled;
  }
  for (const std::string& name : request.levelled) {
    survey.network.stations[stationNamed(state, name, Field::level)].levelled = true;
  }
}

/// The target of each name that a measurement bears.
std::map<CommonPointId, std::size_t> addTargets(const SessionState& state, AdjustedSurvey& survey) {
  std::map<CommonPointId, const std::string*> names;
  for (const SessionPoint& point : state.points) {
    if (isUsable(point.record)) names.emplace(point.record.commonId, &point.name);
  }
  std::map<CommonPointId, std::size_t> targets;
  for (const auto& [id, name] : names) {
    targets.emplace(id, survey.targetNames.size());
    survey.targetNames.push_back(*name);
  }
  survey.network.targets.resize(targets.size());
  return targets;
}

void addControl(const std::vector<ControlTarget>& control, AdjustedSurvey& survey) {
  std::map<std::string, std::size_t> indexOf;
  for (std::size_t t = 0; t < survey.targetNames.size(); ++t) indexOf.emplace(survey.targetNames[t], t);
  for (const ControlTarget& given : control) {
    const auto target = indexOf.find(sessionName(given.name));
    if (target == indexOf.end()) {
      survey.unseenControl.push_back(given);
    } else {
      survey.network.targets[target->second].control = given.control;
    }
  }
}

/// The standard deviation of each point's coordinates: what is said of the point goes before what is said of
/// its station, and that before what is said of all.
class Sigmas {
 public:
  Sigmas(const SessionState& state, const ResolvedRequest& resolved)
      : ofAll(resolved.request.adjustment.sigma.value_or(1.0)) {
    for (const SigmaChoice& choice : resolved.sigmas) {
      const ChosenPoints chosen = chosenPoints(state, choice.points, Field::sigma);
      for (const RefPointId point : chosen.points) (chosen.wholeGroup ? byStation : byPoint)[point] = choice.sigma;
    }
  }

  double of(RefPointId point) const {
    const auto own = byPoint.find(point);
    if (own != byPoint.end()) return own->second;
    const auto stations = byStation.find(point);
    return stations != byStation.end() ? stations->second : ofAll;
  }

 private:
  double ofAll;
  std::map<RefPointId, double> byStation, byPoint;
};

void addObservations(const SessionState& state, const std::map<CommonPointId, std::size_t>& targets,
                     const Sigmas& sigmas, AdjustedSurvey& survey) {
  survey.observationOf.resize(state.points.size());
  for (std::size_t i = 0; i < state.points.size(); ++i) {
    const RefPoint& record = state.points[i].record;
    if (!isUsable(record)) continue;
    survey.observationOf[i] = survey.network.observations.size();
    survey.pointOf.push_back(i);
    survey.network.observations.push_back({stationOf(state, record.groupId), targets.at(record.commonId),
                                           vectorOf(record.position), sigmas.of(record.id), record.weight});
  }
}

/// The measurement that is meant, where several of the station bear the name: the one that takes part.
std::optional<std::size_t> tracedObservation(const SessionState& state, const AdjustedSurvey& survey,
                                             const PointChoice& choice) {
  const ChosenPoints chosen = chosenPoints(state, choice, Field::trace);
  std::optional<std::size_t> last;
  for (std::size_t i = 0; i < state.points.size(); ++i) {
    if (chosen.points.count(state.points[i].record.id) != 0 && survey.observationOf[i]) last = survey.observationOf[i];
  }
  return last;
}

bool givesSigmas(const ResolvedRequest& resolved) {
  return resolved.request.adjustment.sigma.has_value() || !resolved.sigmas.empty();
}

}  // namespace

AdjustedSurvey surveyNetwork(const SessionState& state, const ResolvedRequest& resolved) {
  AdjustedSurvey survey;
  addStations(state, resolved.request.adjustment, survey);
  const std::map<CommonPointId, std::size_t> targets = addTargets(state, survey);
  addControl(resolved.control, survey);
  addObservations(state, targets, Sigmas(state, resolved), survey);
  survey.used = analysis::participationOf(survey.network).observations;
  return survey;
}

analysis::AdjustmentOptions adjustmentOptions(const SessionState& state, const ResolvedRequest& resolved,
                                              const AdjustedSurvey& survey) {
  using analysis::VarianceScale;
  const AdjustmentRequest& request = resolved.request.adjustment;
  analysis::AdjustmentOptions options;
  options.scale =
      request.variance.value_or(givesSigmas(resolved) ? VarianceScale::aPriori : VarianceScale::aPosteriori);
  options.alpha = request.alpha.value_or(options.alpha);
  options.power = request.power.value_or(options.power);
  for (const StationPlace& place : resolved.carry) {
    options.carry.push_back({stationNamed(state, place.group, Field::carryFile), place.place});
  }
  for (const PointChoice& choice : request.trace) {
    if (const auto observation = tracedObservation(state, survey, choice)) options.trace.push_back(*observation);
  }
  return options;
}

/// What is held, bases and control, is one body.
bool hangsTogether(const analysis::Network& network) {
  const analysis::Participation part = analysis::participationOf(network);
  std::vector<std::set<std::string>> seen(network.stations.size() + 1);
  const std::size_t body = network.stations.size();
  for (std::size_t t = 0; t < network.targets.size(); ++t) {
    if (part.targets[t] && network.targets[t].control) seen[body].insert(std::to_string(t));
  }
  for (std::size_t o = 0; o < network.observations.size(); ++o) {
    const analysis::Observation& observation = network.observations[o];
    if (!part.observations[o]) continue;
    seen[network.stations[observation.station].held ? body : observation.station].insert(
        std::to_string(observation.target));
  }
  seen.erase(std::remove_if(seen.begin(), seen.end(), [](const auto& names) { return names.empty(); }), seen.end());
  return !seen.empty() && linkedSets(seen, 1).size() == 1;
}

}  // namespace tiepoint::workbench
