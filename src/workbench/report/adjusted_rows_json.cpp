#include "workbench/report/adjusted_rows_json.h"

#include <vector>

namespace tiepoint::workbench {

namespace {

/// Pairs of names: a target, and the one that it would be taken for. Only a search that ran to its end
/// knows the next best way of naming.
OrderedJson jsonNaming(const AdjustedSurvey& survey, const std::optional<analysis::NamingMargin>& naming) {
  OrderedJson exchanged = OrderedJson::array();
  if (!naming || !naming->complete) return {{"margin", nullptr}, {"exchanged", std::move(exchanged)}};
  for (const auto& [target, takenFor] : naming->exchanged) {
    exchanged.push_back(OrderedJson::array({survey.targetNames[target], survey.targetNames[takenFor]}));
  }
  return {{"margin", jsonNumber(naming->margin)}, {"exchanged", std::move(exchanged)}};
}

OrderedJson jsonEffect(const Registration& registration, const std::optional<analysis::StationShift>& effect) {
  if (!effect) return {};
  return {{"station", registration.groups[effect->station].name},
          {"shift", jsonNumber(effect->shift)},
          {"rotation", jsonNumber(effect->rotation)}};
}

OrderedJson jsonLeftOut(const Registration& registration, const std::optional<analysis::LeftOut>& leftOut) {
  if (!leftOut) return {};
  return {{"error", jsonVector(leftOut->error)},
          {"station", registration.groups[leftOut->moved.station].name},
          {"shift", jsonNumber(leftOut->moved.shift)},
          {"rotation", jsonNumber(leftOut->moved.rotation)},
          {"displacement", jsonNumber(leftOut->displacement)}};
}

OrderedJson jsonObservation(const Registration& registration, const analysis::AdjustedObservation& told) {
  return {{"sigma", jsonNumber(told.sigma)},
          {"residual", jsonVector(told.residual)},
          {"redundancy", jsonVector(told.redundancy)},
          {"leastRedundancy", jsonNumber(told.leastRedundancy)},
          {"w", jsonVector(told.w)},
          {"statistic", jsonNumber(told.statistic)},
          {"p", jsonNumber(told.p)},
          {"rejected", told.rejected ? OrderedJson(*told.rejected) : OrderedJson()},
          {"detectablePerAxis", jsonVector(told.detectablePerAxis)},
          {"detectable", jsonNumber(told.detectable)},
          {"biasToNoise", jsonNumber(told.biasToNoise)},
          {"effect", jsonEffect(registration, told.effect)},
          {"leftOut", jsonLeftOut(registration, told.leftOut)}};
}

OrderedJson jsonGiven(const std::string& name, const analysis::Control& control) {
  return {{"name", name},
          {"position", jsonVector(control.place)},
          {"covariance", control.covariance ? jsonRows(*control.covariance) : OrderedJson()},
          {"held", !control.covariance}};
}

OrderedJson jsonControl(const Registration& registration, std::size_t target) {
  const AdjustedSurvey& survey = *registration.adjustment;
  const std::optional<analysis::AdjustedObservation>& told = survey.result.control[target];
  OrderedJson json = jsonGiven(survey.targetNames[target], *survey.network.targets[target].control);
  json["used"] = survey.result.targets[target].has_value();
  json["adjusted"] = told ? jsonObservation(registration, *told) : OrderedJson();
  return json;
}

OrderedJson jsonUnseenControl(const ControlTarget& unseen) {
  OrderedJson json = jsonGiven(unseen.name, unseen.control);
  json["used"] = false;
  json["adjusted"] = nullptr;
  return json;
}

std::vector<std::size_t> controlTargets(const analysis::Network& network) {
  std::vector<std::size_t> targets;
  for (std::size_t t = 0; t < network.targets.size(); ++t) {
    if (network.targets[t].control) targets.push_back(t);
  }
  return targets;
}

}  // namespace

OrderedJson jsonAdjustedStation(const Registration& registration, std::size_t group) {
  if (!registration.adjustment || !registration.adjustment->result.stations[group]) return {};
  const analysis::AdjustedStation& told = *registration.adjustment->result.stations[group];
  return {{"levelled", told.levelled},
          {"centre", jsonVector(told.centre)},
          {"covariance", jsonRows(told.covariance)},
          {"position", jsonVector(told.position)},
          {"positionCovariance", jsonRows(told.positionCovariance)},
          {"positionSigma", jsonNumber(told.positionSigma)},
          {"rotationSigma", jsonNumber(told.rotationSigma)},
          {"rotationAxis", jsonVector(told.rotationAxis)},
          {"largestPointSigma", jsonNumber(told.largestPointSigma)},
          {"redundancy", jsonNumber(told.redundancy)},
          {"geometry", jsonNumber(told.geometry)},
          {"naming", jsonNaming(*registration.adjustment, told.naming)}};
}

OrderedJson jsonAdjustedPoint(const Registration& registration, std::size_t point) {
  if (!registration.adjustment) return {};
  const analysis::AdjustedObservation* const told = registration.adjustment->ofPoint(point);
  return told ? jsonObservation(registration, *told) : OrderedJson();
}

void addControl(const Registration& registration, JsonMembers& json) {
  if (!registration.adjustment) return json.add("control", OrderedJson::array());
  const std::vector<ControlTarget>& unseen = registration.adjustment->unseenControl;
  const std::vector<std::size_t> targets = controlTargets(registration.adjustment->network);
  json.addArray("control", targets.size() + unseen.size(), [&](std::size_t row) {
    return row < targets.size() ? jsonControl(registration, targets[row])
                                : jsonUnseenControl(unseen[row - targets.size()]);
  });
}

}  // namespace tiepoint::workbench
