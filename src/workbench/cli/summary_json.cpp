#include "workbench/cli/summary_json.h"

#include "workbench/cli/json_parts.h"
#include "workbench/cli/naming/match_text.h"
#include "workbench/geometry/rigid_motion.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

const char* outcomeKey(Outcome outcome) {
  switch (outcome) {
    case Outcome::registered:
      return "registered";
    case Outcome::notLinked:
      return "not-linked";
    case Outcome::baseLost:
      return "base-lost";
    case Outcome::notNamed:
      return "not-named";
  }
  return "";
}

Json jsonRms(const std::optional<Rms>& rms) {
  if (!rms) return {};
  return {{"points", rms->count}, {"rms", jsonNumber(rms->value)}, {"largest", jsonNumber(rms->largest)}};
}

Json jsonTransform(const std::optional<OdGeMatrix3d>& toCommon) {
  if (!toCommon) return {};
  const AxisAngleShift motion = axisAngleShift(*toCommon);
  const auto triple = [](const std::array<double, 3>& v) { return jsonPoint({v[0], v[1], v[2]}); };
  return {{"matrix", jsonMatrix(*toCommon)},
          {"angleDegrees", jsonNumber(motion.angleDegrees)},
          {"axis", triple(motion.axis)},
          {"shift", triple(motion.shift)}};
}

Json jsonGroups(const Road& road) {
  const bool solved = road.outcome == Outcome::registered;
  Json groups = Json::array();
  for (std::size_t i = 0; i < road.state.groups.size(); ++i) {
    const SessionGroup& group = road.state.groups[i];
    std::size_t points = 0, active = 0;
    for (const SessionPoint& point : road.state.points) {
      if (point.record.groupId != group.id) continue;
      ++points;
      active += point.record.active ? 1 : 0;
    }
    const GroupResult result = solved ? road.results.groups[i] : GroupResult{};
    groups.push_back({{"name", group.name},
                      {"base", group.inBase},
                      {"points", points},
                      {"active", active},
                      {"transform", jsonTransform(result.toCommon)},
                      {"discrepancies", jsonRms(result.discrepancies)},
                      {"atBase", jsonRms(result.atBase)}});
  }
  return groups;
}

Json jsonPoints(const Road& road) {
  const bool solved = road.outcome == Outcome::registered;
  Json points = Json::array();
  for (std::size_t i = 0; i < road.state.points.size(); ++i) {
    const SessionPoint& point = road.state.points[i];
    const PointResult result = solved ? road.results.points[i] : PointResult{};
    points.push_back({{"group", road.state.group(point.record.groupId).name},
                      {"name", point.name},
                      {"position", jsonPoint(point.record.position)},
                      {"weight", jsonNumber(point.record.weight)},
                      {"active", point.record.active},
                      {"reason", road.reasons[i] ? Json(reasonKey(*road.reasons[i])) : Json()},
                      {"registered", result.registered ? jsonPoint(*result.registered) : Json()},
                      {"discrepancy", jsonNumber(result.discrepancy)},
                      {"atBase", jsonNumber(result.atBase)}});
  }
  return points;
}

Json jsonStandOut(const Road& road) {
  if (!road.results.standOut) return {};
  const SessionPoint& point = road.state.points[road.results.standOut->point];
  return {{"group", road.state.group(point.record.groupId).name},
          {"name", point.name},
          {"timesMedian", jsonNumber(road.results.standOut->timesMedian)}};
}

/// Null when not registered.
Json jsonSpread(const Road& road) {
  if (road.outcome != Outcome::registered) return {};
  const PointSpread& spread = road.results.spread;
  Json histogram = Json::array();
  for (std::size_t bin = 0; bin < spread.counts.size(); ++bin) {
    histogram.push_back({{"from", jsonNumber(spread.edges[bin])},
                         {"to", jsonNumber(spread.edges[bin + 1])},
                         {"distances", spread.counts[bin]}});
  }
  return {{"largest", jsonNumber(spread.largest)}, {"histogram", std::move(histogram)}};
}

Json jsonTargets(const Road& road) {
  Json targets = Json::array();
  for (const MergedTarget& target : road.targets) {
    targets.push_back(
        {{"name", target.name}, {"position", jsonPoint(target.position)}, {"weight", jsonNumber(target.weight)}});
  }
  return targets;
}

Json jsonParts(const Road& road) {
  Json parts = Json::array();
  for (const Part& part : road.links.parts) {
    Json groups = Json::array();
    for (const GroupId group : part.groups) groups.push_back(road.state.group(group).name);
    parts.push_back({{"cluster", part.cluster ? Json(*part.cluster) : Json()}, {"groups", std::move(groups)}});
  }
  return parts;
}

Json jsonLinks(const Road& road) {
  Json links = Json::array();
  for (const Link& link : road.links.links) {
    links.push_back({{"parts", Json::array({link.first, link.second})}, {"commonNames", link.names}});
  }
  return links;
}

Json jsonClouds(const Road& road) {
  Json clouds = Json::array();
  for (const CloudReport& cloud : road.clouds) clouds.push_back(jsonCloud(cloud));
  return clouds;
}

Json jsonIterations(const std::optional<IterationCourse>& course) {
  if (!course) return {};
  return {{"actual", course->iterations},
          {"limit", course->limit},
          {"movement", jsonNumber(course->movement)},
          {"criterion", jsonNumber(course->criterion)},
          {"converged", course->converged()}};
}

Json textOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

}  // namespace

std::string summaryJson(const Road& road, const std::vector<std::string>& warnings) {
  Json json;
  json["outcome"] = outcomeKey(road.outcome);
  json["method"] = std::string(road.isIterative ? "iterative" : "pairwise") + (road.usesBase ? " with base" : "");
  json["iterations"] = jsonIterations(road.iterations);
  json["document"] = textOrNull(road.document);
  json["import"] = jsonImport(road.import);
  json["match"] = road.match ? jsonMatch(road.state, *road.match) : Json();
  json["keptCluster"] = road.keptCluster ? Json(*road.keptCluster) : Json();
  json["groups"] = jsonGroups(road);
  json["points"] = jsonPoints(road);
  json["discrepancies"] = jsonRms(road.results.discrepancies);
  json["atBase"] = jsonRms(road.results.atBase);
  json["standOut"] = jsonStandOut(road);
  json["spread"] = jsonSpread(road);
  json["commonPoints"] = jsonTargets(road);
  json["parts"] = jsonParts(road);
  json["links"] = jsonLinks(road);
  json["clouds"] = jsonClouds(road);
  json["commonPointsFile"] = textOrNull(road.commonPointsFile);
  json["storedGroup"] = textOrNull(road.storedGroup);
  json["matrixFiles"] = road.files.matrices;
  json["transformsFile"] = textOrNull(road.files.transforms);
  json["reportFile"] = textOrNull(road.files.report);
  json["pictureFile"] = textOrNull(road.files.picture);
  json["warnings"] = warnings;
  return jsonText(json);
}

}  // namespace tiepoint::workbench::cli
