#include "workbench/analysis/survey.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>

namespace tiepoint::workbench::analysis {

namespace {

void addStations(const Network& network, const Participation& part, Survey& survey, std::vector<std::size_t>& place) {
  for (std::size_t s = 0; s < network.stations.size(); ++s) {
    if (!part.stations[s]) continue;
    place[s] = survey.stations.size();
    SurveyStation station;
    station.index = s;
    station.held = network.stations[s].held;
    station.levelled = network.stations[s].levelled && !station.held;
    survey.stations.push_back(station);
  }
}

void addTargets(const Network& network, const Participation& part, Survey& survey, std::vector<std::size_t>& place) {
  for (std::size_t t = 0; t < network.targets.size(); ++t) {
    if (!part.targets[t]) continue;
    place[t] = survey.targets.size();
    SurveyTarget target;
    target.index = t;
    if (const auto& control = network.targets[t].control) {
      target.kind = control->covariance ? TargetKind::controlled : TargetKind::held;
      target.place = control->place;
      if (control->covariance) {
        target.covariance = *control->covariance;
        target.information = control->covariance->inverse();
        target.information = (0.5 * (target.information + target.information.transpose())).eval();
      }
    }
    survey.targets.push_back(target);
  }
}

void addSightings(const Network& network, const Participation& part, const std::vector<std::size_t>& stationAt,
                  const std::vector<std::size_t>& targetAt, Survey& survey) {
  for (std::size_t o = 0; o < network.observations.size(); ++o) {
    if (!part.observations[o]) continue;
    const Observation& observation = network.observations[o];
    Sighting sighting;
    sighting.observation = o;
    sighting.station = stationAt[observation.station];
    sighting.target = targetAt[observation.target];
    sighting.local = observation.place;
    sighting.information = observation.weight / (observation.sigma * observation.sigma);
    survey.stations[sighting.station].sightings.push_back(survey.sightings.size());
    survey.targets[sighting.target].sightings.push_back(survey.sightings.size());
    survey.sightings.push_back(sighting);
  }
}

/// Coordinates in the millions would lose digits in every product; from the station's middle they don't.
void centre(SurveyStation& station, std::vector<Sighting>& sightings) {
  const double count = static_cast<double>(station.sightings.size());
  const Eigen::Vector3d first = sightings[station.sightings.front()].local;
  Eigen::Vector3d sum = Eigen::Vector3d::Zero();
  for (const std::size_t s : station.sightings) sum += sightings[s].local - first;
  station.middle = first + sum / count;
  double squares = 0.0;
  for (const std::size_t s : station.sightings) {
    sightings[s].local -= station.middle;
    squares += sightings[s].local.squaredNorm();
    station.information += sightings[s].information;
  }
  station.lever = std::sqrt(squares / count);
}

DatumKind datumOf(const Survey& survey) {
  const bool base = std::any_of(survey.stations.begin(), survey.stations.end(), [](const auto& s) { return s.held; });
  const bool control = std::any_of(survey.targets.begin(), survey.targets.end(),
                                   [](const auto& t) { return t.kind != TargetKind::adjusted; });
  if (base) return control ? DatumKind::baseAndControl : DatumKind::base;
  return control ? DatumKind::control : DatumKind::free;
}

void chooseFrame(Survey& survey) {
  if (survey.stations.empty()) return;
  auto frame = std::find_if(survey.stations.begin(), survey.stations.end(), [](const auto& s) { return s.levelled; });
  survey.defect = frame == survey.stations.end() ? 6 : 4;
  if (frame == survey.stations.end()) frame = survey.stations.begin();
  frame->frame = true;
}

/// A place amid what fixes the coordinates.
Eigen::Vector3d originOf(const Survey& survey) {
  for (const SurveyStation& station : survey.stations) {
    if (station.held || station.frame) return station.middle;
  }
  for (const SurveyTarget& target : survey.targets) {
    if (target.kind != TargetKind::adjusted) return target.place;
  }
  return Eigen::Vector3d::Zero();
}

}  // namespace

std::size_t Survey::observationCount() const {
  const auto controls =
      std::count_if(targets.begin(), targets.end(), [](const auto& t) { return t.kind == TargetKind::controlled; });
  return 3 * (sightings.size() + static_cast<std::size_t>(controls));
}

std::size_t Survey::unknownCount() const {
  std::size_t count = 0;
  for (const SurveyStation& station : stations)
    count += station.moves() ? static_cast<std::size_t>(station.width()) : 0;
  for (const SurveyTarget& target : targets) count += target.kind == TargetKind::held ? 0 : 3;
  return count;
}

Survey surveyOf(const Network& network, const Participation& participation) {
  Survey survey;
  std::vector<std::size_t> stationAt(network.stations.size()), targetAt(network.targets.size());
  addStations(network, participation, survey, stationAt);
  addTargets(network, participation, survey, targetAt);
  addSightings(network, participation, stationAt, targetAt, survey);
  for (SurveyStation& station : survey.stations) centre(station, survey.sightings);
  survey.datum = datumOf(survey);
  if (survey.datum == DatumKind::free) chooseFrame(survey);
  survey.origin = originOf(survey);
  for (SurveyTarget& target : survey.targets) {
    if (target.kind != TargetKind::adjusted) target.place -= survey.origin;
  }
  return survey;
}

}  // namespace tiepoint::workbench::analysis
