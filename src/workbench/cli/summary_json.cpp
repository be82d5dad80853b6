#include "workbench/cli/summary_json.h"

#include <unordered_map>

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

struct PointCounts {
  std::size_t all = 0;
  std::size_t active = 0;
};

std::unordered_map<GroupId, PointCounts> pointCounts(const SessionState& state) {
  std::unordered_map<GroupId, PointCounts> counts;
  for (const SessionPoint& point : state.points) {
    PointCounts& count = counts[point.record.groupId];
    ++count.all;
    count.active += point.record.active ? 1 : 0;
  }
  return counts;
}

Json jsonGroupOf(const Road& road, std::size_t i, const PointCounts& count) {
  const SessionGroup& group = road.state.groups[i];
  const GroupResult result = road.outcome == Outcome::registered ? road.results.groups[i] : GroupResult{};
  return {{"name", group.name},
          {"base", group.inBase},
          {"points", count.all},
          {"active", count.active},
          {"transform", jsonTransform(result.toCommon)},
          {"discrepancies", jsonRms(result.discrepancies)},
          {"atBase", jsonRms(result.atBase)}};
}

Json jsonPointOf(const Road& road, std::size_t i) {
  const SessionPoint& point = road.state.points[i];
  const PointResult result = road.outcome == Outcome::registered ? road.results.points[i] : PointResult{};
  return {{"group", road.state.group(point.record.groupId).name},
          {"name", point.name},
          {"position", jsonPoint(point.record.position)},
          {"weight", jsonNumber(point.record.weight)},
          {"active", point.record.active},
          {"reason", road.reasons[i] ? Json(reasonKey(*road.reasons[i])) : Json()},
          {"registered", result.registered ? jsonPoint(*result.registered) : Json()},
          {"discrepancy", jsonNumber(result.discrepancy)},
          {"atBase", jsonNumber(result.atBase)}};
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

Json jsonTarget(const MergedTarget& target) {
  return {{"name", target.name}, {"position", jsonPoint(target.position)}, {"weight", jsonNumber(target.weight)}};
}

Json jsonPart(const Road& road, const Part& part) {
  Json groups = Json::array();
  for (const GroupId group : part.groups) groups.push_back(road.state.group(group).name);
  return {{"cluster", part.cluster ? Json(*part.cluster) : Json()}, {"groups", std::move(groups)}};
}

Json jsonLink(const Link& link) {
  return {{"parts", Json::array({link.first, link.second})}, {"commonNames", link.names}};
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

template <class List, class Describe>
void addList(JsonObjectWriter& json, const char* key, const List& list, Describe describe) {
  json.addArray(key, list.size(), [&](std::size_t i) { return describe(list[i]); });
}

void addHead(const Road& road, JsonObjectWriter& json) {
  json.add("outcome", outcomeKey(road.outcome));
  json.add("method", std::string(road.isIterative ? "iterative" : "pairwise") + (road.usesBase ? " with base" : ""));
  json.add("iterations", jsonIterations(road.iterations));
  json.add("document", textOrNull(road.document));
  json.add("import", jsonImport(road.import));
  json.add("match", road.match ? jsonMatch(road.state, *road.match) : Json());
  json.add("keptCluster", road.keptCluster ? Json(*road.keptCluster) : Json());
}

void addResults(const Road& road, JsonObjectWriter& json) {
  auto counts = pointCounts(road.state);
  const auto group = [&](std::size_t i) { return jsonGroupOf(road, i, counts[road.state.groups[i].id]); };
  json.addArray("groups", road.state.groups.size(), group);
  json.addArray("points", road.state.points.size(), [&](std::size_t i) { return jsonPointOf(road, i); });
  json.add("discrepancies", jsonRms(road.results.discrepancies));
  json.add("atBase", jsonRms(road.results.atBase));
  json.add("standOut", jsonStandOut(road));
  json.add("spread", jsonSpread(road));
  addList(json, "commonPoints", road.targets, jsonTarget);
  addList(json, "parts", road.links.parts, [&](const Part& part) { return jsonPart(road, part); });
  addList(json, "links", road.links.links, jsonLink);
}

void addOutputs(const Road& road, JsonObjectWriter& json) {
  addList(json, "clouds", road.clouds, jsonCloud);
  json.add("commonPointsFile", textOrNull(road.commonPointsFile));
  json.add("storedGroup", textOrNull(road.storedGroup));
  json.add("matrixFiles", road.files.matrices);
  json.add("transformsFile", textOrNull(road.files.transforms));
  json.add("reportFile", textOrNull(road.files.report));
  json.add("pictureFile", textOrNull(road.files.picture));
}

}  // namespace

void writeSummaryJson(const Road& road, const std::vector<std::string>& warnings, const TextSink& sink) {
  JsonObjectWriter json(sink);
  addHead(road, json);
  addResults(road, json);
  addOutputs(road, json);
  json.add("warnings", warnings);
  json.end();
}

}  // namespace tiepoint::workbench::cli
