#include "workbench/report/summary_json.h"

#include "workbench/geometry/rigid_motion.h"
#include "workbench/report/adjusted_rows_json.h"
#include "workbench/report/adjustment_json.h"
#include "workbench/report/finding_text.h"
#include "workbench/report/json_parts.h"
#include "workbench/report/match_text.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

const char* outcomeKey(const Registration& registration) {
  struct Key {
    const char* operator()(const Registered&) const { return "registered"; }
    const char* operator()(const NotConnected&) const { return "not-linked"; }
    const char* operator()(const BaseNotShared&) const { return "base-lost"; }
    const char* operator()(const NotNamed&) const { return "not-named"; }
    const char* operator()(const Undetermined&) const { return "undetermined"; }
  };
  return std::visit(Key(), registration.outcome);
}

OrderedJson jsonTransform(const std::optional<OdGeMatrix3d>& toCommon) {
  if (!toCommon) return {};
  const AxisAngleShift motion = axisAngleShift(*toCommon);
  const auto triple = [](const std::array<double, 3>& v) { return jsonPoint({v[0], v[1], v[2]}); };
  return {{"matrix", jsonMatrix(*toCommon)},
          {"angleDegrees", jsonNumber(motion.angleDegrees)},
          {"axis", triple(motion.axis)},
          {"shift", triple(motion.shift)}};
}

OrderedJson jsonGroup(const Registration& registration, std::size_t index) {
  const GroupOutcome& group = registration.groups[index];
  return {{"name", group.name},
          {"base", group.inBase},
          {"points", group.points},
          {"active", group.active},
          {"transform", jsonTransform(group.toCommon)},
          {"discrepancies", jsonRms(group.discrepancies)},
          {"atBase", jsonRms(group.atBase)},
          {"adjusted", jsonAdjustedStation(registration, index)}};
}

OrderedJson jsonResidual(const std::optional<OdGeVector3d>& residual) {
  return residual ? jsonPoint({residual->x, residual->y, residual->z}) : OrderedJson();
}

OrderedJson jsonPointOutcome(const Registration& registration, std::size_t index) {
  const PointOutcome& point = registration.points[index];
  return {{"group", registration.groups[point.group].name},
          {"name", point.name},
          {"position", jsonPoint(point.position)},
          {"weight", jsonNumber(point.weight)},
          {"active", point.active},
          {"reason", point.reason ? OrderedJson(reasonKey(*point.reason)) : OrderedJson()},
          {"registered", point.registered ? jsonPoint(*point.registered) : OrderedJson()},
          {"discrepancy", jsonNumber(point.discrepancy)},
          {"residual", jsonResidual(point.residual)},
          {"atBase", jsonNumber(point.atBase)},
          {"adjusted", jsonAdjustedPoint(registration, index)}};
}

/// The figures of an RMS, and of how many stations.
OrderedJson jsonProtocol(const std::optional<ProtocolFigures>& protocol) {
  if (!protocol) return {};
  OrderedJson json = jsonRms(protocol->discrepancies);
  json["stations"] = protocol->stations;
  return json;
}

OrderedJson jsonOutlier(const Registration& registration, const Registered& registered) {
  if (!registered.outlier) return {};
  const PointOutcome& point = registration.points[registered.outlier->point];
  return {{"group", registration.groups[point.group].name},
          {"name", point.name},
          {"timesMedian", jsonNumber(registered.outlier->timesMedian)}};
}

OrderedJson jsonSpread(const PointSpread& spread) {
  OrderedJson histogram = OrderedJson::array();
  for (std::size_t bin = 0; bin < spread.counts.size(); ++bin) {
    histogram.push_back({{"from", jsonNumber(spread.edges[bin])},
                         {"to", jsonNumber(spread.edges[bin + 1])},
                         {"distances", spread.counts[bin]}});
  }
  return {{"largest", jsonNumber(spread.largest)}, {"histogram", std::move(histogram)}};
}

OrderedJson jsonTarget(const MergedTarget& target) {
  return {{"name", target.name},
          {"position", jsonPoint(target.position)},
          {"weight", jsonNumber(target.weight)},
          {"sightings", target.sightings ? OrderedJson(*target.sightings) : OrderedJson()},
          {"covariance", target.covariance ? jsonRows(*target.covariance) : OrderedJson()}};
}

OrderedJson jsonComponent(const Registration& registration, const Component& component) {
  OrderedJson groups = OrderedJson::array();
  for (const GroupId group : component.groups) groups.push_back(registration.group(group).name);
  return {{"cluster", component.cluster ? OrderedJson(*component.cluster) : OrderedJson()},
          {"groups", std::move(groups)}};
}

OrderedJson jsonLink(const Link& link) {
  return {{"parts", OrderedJson::array({link.first, link.second})}, {"commonNames", link.names}};
}

OrderedJson jsonIterations(const std::optional<IterationCourse>& course) {
  if (!course) return {};
  return {{"actual", course->iterations},
          {"limit", course->limit},
          {"movement", jsonNumber(course->movement)},
          {"criterion", jsonNumber(course->criterion)},
          {"converged", course->converged()}};
}

OrderedJson textOrNull(const std::string& text) { return text.empty() ? OrderedJson() : OrderedJson(text); }

template <class List, class Describe>
void addList(JsonMembers& json, const char* key, const List& list, Describe describe) {
  json.addArray(key, list.size(), [&](std::size_t i) { return describe(list[i]); });
}

void addHead(const Registration& registration, JsonMembers& json) {
  json.add("outcome", outcomeKey(registration));
  json.add("method", std::string(methodKey(registration.method)) + (registration.usesBase ? " with base" : ""));
  json.add("iterations", jsonIterations(registration.iterations));
  json.add("document", textOrNull(registration.document));
  json.add("import", jsonImport(registration.import));
  json.add("match", registration.naming ? jsonMatch(registration, *registration.naming) : OrderedJson());
  json.add("keptCluster", registration.keptCluster ? OrderedJson(*registration.keptCluster) : OrderedJson());
}

/// Null, or empty, when not registered.
void addResults(const Registration& registration, JsonMembers& json) {
  const Registered none;
  const Registered* const found = registration.registered();
  const Registered& registered = found ? *found : none;
  json.add("discrepancies", jsonRms(registered.discrepancies));
  json.add("atBase", jsonRms(registered.atBase));
  json.add("protocol", jsonProtocol(registered.protocol));
  json.add("standOut", jsonOutlier(registration, registered));
  json.add("spread", found ? jsonSpread(registered.spread) : OrderedJson());
  addList(json, "commonPoints", registered.targets, jsonTarget);
}

void addWritten(const Registration& registration, JsonMembers& json) {
  const WrittenFiles& files = registration.files;
  addList(json, "clouds", registration.clouds, jsonCloud);
  json.add("commonPointsFile", textOrNull(files.commonPoints));
  json.add("storedGroup", textOrNull(registration.storedGroup));
  json.add("matrixFiles", files.matrices);
  json.add("transformsFile", textOrNull(files.transforms));
  json.add("reportFile", textOrNull(files.report));
  json.add("pictureFile", textOrNull(files.picture));
}

void describe(const Registration& registration, JsonMembers& json) {
  addHead(registration, json);
  json.addArray("groups", registration.groups.size(),
                [&](std::size_t group) { return jsonGroup(registration, group); });
  json.addArray("points", registration.points.size(),
                [&](std::size_t point) { return jsonPointOutcome(registration, point); });
  addResults(registration, json);
  addControl(registration, json);
  addAdjustment(registration, json);
  addList(json, "parts", registration.links.components,
          [&](const Component& component) { return jsonComponent(registration, component); });
  addList(json, "links", registration.links.links, jsonLink);
  addWritten(registration, json);
  addList(json, "warnings", registration.findings, findingText);
}

}  // namespace

OrderedJson summaryJson(const Registration& registration) {
  JsonObjectTree tree;
  describe(registration, tree);
  return std::move(tree.object);
}

void writeSummaryJson(const Registration& registration, const TextSink& sink) {
  JsonObjectWriter writer(sink);
  describe(registration, writer);
  writer.end();
}

}  // namespace tiepoint::workbench
