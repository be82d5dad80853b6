#include "workbench/report/adjustment_json.h"

#include "workbench/report/json_parts.h"

namespace tiepoint::workbench {

using analysis::Adjustment;

namespace {

const char* datumKey(analysis::DatumKind kind) {
  switch (kind) {
    case analysis::DatumKind::base:
      return "base";
    case analysis::DatumKind::control:
      return "control";
    case analysis::DatumKind::baseAndControl:
      return "base and control";
    case analysis::DatumKind::free:
      return "free";
  }
  return "";
}

const char* scaleKey(analysis::VarianceScale scale) {
  return scale == analysis::VarianceScale::aPriori ? "a-priori" : "a-posteriori";
}

OrderedJson jsonDatum(const Registration& registration, const analysis::Datum& datum) {
  OrderedJson stations = OrderedJson::array();
  for (const std::size_t station : datum.stations) stations.push_back(registration.groups[station].name);
  return {{"kind", datumKey(datum.kind)},
          {"stations", std::move(stations)},
          {"frame", datum.frame ? OrderedJson(registration.groups[*datum.frame].name) : OrderedJson()},
          {"defect", datum.defect}};
}

OrderedJson jsonGlobalTest(const std::optional<analysis::GlobalTest>& test) {
  if (!test) return {};
  return {{"lower", jsonNumber(test->lower)}, {"upper", jsonNumber(test->upper)}, {"passed", test->passed}};
}

OrderedJson jsonLevels(const analysis::TestLevels& levels) {
  return {{"alpha", jsonNumber(levels.alpha)},
          {"power", jsonNumber(levels.power)},
          {"criticalAxis", jsonNumber(levels.criticalAxis)},
          {"criticalPoint", jsonNumber(levels.criticalPoint)},
          {"noncentralityAxis", jsonNumber(levels.noncentralityAxis)},
          {"noncentralityPoint", jsonNumber(levels.noncentralityPoint)},
          {"tests", levels.tests},
          {"familyAlpha", jsonNumber(levels.familyAlpha)}};
}

/// The point that was measured as an observation.
const PointOutcome& pointOf(const Registration& registration, std::size_t observation) {
  return registration.points[registration.adjustment->pointOf[observation]];
}

const std::string& groupOf(const Registration& registration, const PointOutcome& point) {
  return registration.groups[point.group].name;
}

OrderedJson jsonSuspect(const Registration& registration, const std::optional<analysis::Suspect>& suspect) {
  if (!suspect) return {};
  if (suspect->isControl) {
    const std::string& name = registration.adjustment->targetNames[suspect->index];
    return {{"group", nullptr}, {"name", name}, {"p", jsonNumber(suspect->p)}};
  }
  const PointOutcome& point = pointOf(registration, suspect->index);
  return {{"group", groupOf(registration, point)}, {"name", point.name}, {"p", jsonNumber(suspect->p)}};
}

OrderedJson jsonStiffness(const Registration& registration, const analysis::Stiffness& network) {
  OrderedJson mode = OrderedJson::array();
  for (const analysis::ModeShare& share : network.mode) {
    mode.push_back({{"station", registration.groups[share.station].name}, {"share", jsonNumber(share.share)}});
  }
  return {{"stiffness", jsonNumber(network.stiffness)}, {"mode", std::move(mode)}};
}

OrderedJson jsonCertificate(const std::optional<analysis::Certificate>& certificate) {
  if (!certificate) return {};
  return {{"eigenvalue", jsonNumber(certificate->eigenvalue)},
          {"columns", certificate->columns},
          {"certified", certificate->certified},
          {"unique", certificate->unique},
          {"gap", jsonNumber(certificate->gap)},
          {"lowerBound", jsonNumber(certificate->lowerBound)}};
}

OrderedJson jsonCarried(const Registration& registration, const analysis::CarriedPosition& carried) {
  return {{"group", registration.groups[carried.point.station].name},
          {"point", jsonVector(carried.point.place)},
          {"position", jsonVector(carried.position)},
          {"covariance", jsonRows(carried.covariance)}};
}

OrderedJson jsonTracedStation(const Registration& registration, const analysis::TracedStation& traced) {
  return {{"name", registration.groups[traced.station].name},
          {"effect", {{"shift", jsonNumber(traced.effect.shift)}, {"rotation", jsonNumber(traced.effect.rotation)}}},
          {"leftOut",
           {{"shift", jsonNumber(traced.leftOut.shift)},
            {"rotation", jsonNumber(traced.leftOut.rotation)},
            {"displacement", jsonNumber(traced.displacement)}}}};
}

OrderedJson jsonTrace(const Registration& registration, const analysis::Trace& trace) {
  const PointOutcome& point = pointOf(registration, trace.observation);
  OrderedJson stations = OrderedJson::array();
  for (const analysis::TracedStation& traced : trace.stations) {
    stations.push_back(jsonTracedStation(registration, traced));
  }
  return {{"group", groupOf(registration, point)}, {"name", point.name}, {"stations", std::move(stations)}};
}

OrderedJson jsonOpenMotion(const std::optional<analysis::OpenMotion>& open) {
  if (!open) return {};
  return {{"turns", open->turns},
          {"axis", jsonVector(open->axis)},
          {"place", jsonVector(open->place)},
          {"lineOfTargets", open->isLineOfTargets}};
}

void addNumbers(const Registration& registration, const Adjustment& result, JsonMembers& json) {
  json.add("datum", jsonDatum(registration, result.datum));
  json.add("observations", result.observationCount);
  json.add("unknowns", result.unknownCount);
  json.add("redundancy", result.redundancy);
  json.add("sumOfSquares", jsonNumber(result.sumOfSquares));
  json.add("varianceFactor", jsonNumber(result.varianceFactor));
  json.add("scale", scaleKey(result.scale));
  json.add("iterations", result.iterations);
  json.add("converged", result.converged);
}

/// The levels of tests that weren't made say nothing, nor does it that no other poses fit better where others
/// fit as well.
void addStatements(const Registration& registration, const Adjustment& result, JsonMembers& json) {
  const bool isDetermined = result.outcome == analysis::AdjustmentOutcome::adjusted;
  json.add("globalTest", jsonGlobalTest(result.globalTest));
  json.add("levels", isDetermined ? jsonLevels(result.levels) : OrderedJson());
  json.add("suspect", jsonSuspect(registration, result.suspect));
  json.add("network", jsonStiffness(registration, result.network));
  json.add("certificate", isDetermined ? jsonCertificate(result.certificate) : OrderedJson());
  json.addArray("carried", result.carried.size(),
                [&](std::size_t i) { return jsonCarried(registration, result.carried[i]); });
  json.addArray("trace", result.traces.size(),
                [&](std::size_t i) { return jsonTrace(registration, result.traces[i]); });
  json.add("otherStartWon", result.otherStartWon);
  json.add("open", result.open ? OrderedJson(registration.groups[result.open->station].name) : OrderedJson());
  json.add("openMotion", jsonOpenMotion(result.open));
}

}  // namespace

void addAdjustment(const Registration& registration, JsonMembers& json) {
  const bool isThere = registration.adjustment &&
                       registration.adjustment->result.outcome != analysis::AdjustmentOutcome::nothingToAdjust;
  if (!isThere) return json.add("adjustment", OrderedJson());
  const Adjustment& result = registration.adjustment->result;
  json.addObject("adjustment", [&](JsonMembers& members) {
    addNumbers(registration, result, members);
    addStatements(registration, result, members);
  });
}

}  // namespace tiepoint::workbench
