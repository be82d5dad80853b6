#include "workbench/report/summary_json.h"

#include "workbench/geometry/rigid_motion.h"
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

OrderedJson jsonGroups(const Registration& registration) {
  OrderedJson groups = OrderedJson::array();
  for (const GroupOutcome& group : registration.groups) {
    groups.push_back({{"name", group.name},
                      {"base", group.inBase},
                      {"points", group.points},
                      {"active", group.active},
                      {"transform", jsonTransform(group.toCommon)},
                      {"discrepancies", jsonRms(group.discrepancies)},
                      {"atBase", jsonRms(group.atBase)}});
  }
  return groups;
}

OrderedJson jsonPoints(const Registration& registration) {
  OrderedJson points = OrderedJson::array();
  for (const PointOutcome& point : registration.points) {
    points.push_back({{"group", registration.groups[point.group].name},
                      {"name", point.name},
                      {"position", jsonPoint(point.position)},
                      {"weight", jsonNumber(point.weight)},
                      {"active", point.active},
                      {"reason", point.reason ? OrderedJson(reasonKey(*point.reason)) : OrderedJson()},
                      {"registered", point.registered ? jsonPoint(*point.registered) : OrderedJson()},
                      {"discrepancy", jsonNumber(point.discrepancy)},
                      {"atBase", jsonNumber(point.atBase)}});
  }
  return points;
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

OrderedJson jsonTargets(const std::vector<MergedTarget>& targets) {
  OrderedJson all = OrderedJson::array();
  for (const MergedTarget& target : targets) {
    all.push_back(
        {{"name", target.name}, {"position", jsonPoint(target.position)}, {"weight", jsonNumber(target.weight)}});
  }
  return all;
}

/// Null, or empty, when not registered.
void addResults(OrderedJson& json, const Registration& registration) {
  const Registered none;
  const Registered* const found = registration.registered();
  const Registered& registered = found ? *found : none;
  json["discrepancies"] = jsonRms(registered.discrepancies);
  json["atBase"] = jsonRms(registered.atBase);
  json["standOut"] = jsonOutlier(registration, registered);
  json["spread"] = found ? jsonSpread(registered.spread) : OrderedJson();
  json["commonPoints"] = jsonTargets(registered.targets);
}

OrderedJson jsonParts(const Registration& registration) {
  OrderedJson parts = OrderedJson::array();
  for (const Part& part : registration.links.parts) {
    OrderedJson groups = OrderedJson::array();
    for (const GroupId group : part.groups) groups.push_back(registration.group(group).name);
    parts.push_back(
        {{"cluster", part.cluster ? OrderedJson(*part.cluster) : OrderedJson()}, {"groups", std::move(groups)}});
  }
  return parts;
}

OrderedJson jsonLinks(const LinkReport& report) {
  OrderedJson links = OrderedJson::array();
  for (const Link& link : report.links) {
    links.push_back({{"parts", OrderedJson::array({link.first, link.second})}, {"commonNames", link.names}});
  }
  return links;
}

OrderedJson jsonClouds(const std::vector<CloudReport>& reports) {
  OrderedJson clouds = OrderedJson::array();
  for (const CloudReport& cloud : reports) clouds.push_back(jsonCloud(cloud));
  return clouds;
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

void addWritten(OrderedJson& json, const Registration& registration) {
  const WrittenFiles& files = registration.files;
  json["clouds"] = jsonClouds(registration.clouds);
  json["commonPointsFile"] = textOrNull(files.commonPoints);
  json["storedGroup"] = textOrNull(registration.storedGroup);
  json["matrixFiles"] = files.matrices;
  json["transformsFile"] = textOrNull(files.transforms);
  json["reportFile"] = textOrNull(files.report);
  json["pictureFile"] = textOrNull(files.picture);
}

}  // namespace

OrderedJson summaryJson(const Registration& registration) {
  OrderedJson json;
  json["outcome"] = outcomeKey(registration);
  json["method"] = std::string(registration.method == RegistrationMethod::iterative ? "iterative" : "pairwise") +
                   (registration.usesBase ? " with base" : "");
  json["iterations"] = jsonIterations(registration.iterations);
  json["document"] = textOrNull(registration.document);
  json["import"] = jsonImport(registration.import);
  json["match"] = registration.naming ? jsonMatch(registration, *registration.naming) : OrderedJson();
  json["keptCluster"] = registration.keptCluster ? OrderedJson(*registration.keptCluster) : OrderedJson();
  json["groups"] = jsonGroups(registration);
  json["points"] = jsonPoints(registration);
  addResults(json, registration);
  json["parts"] = jsonParts(registration);
  json["links"] = jsonLinks(registration.links);
  addWritten(json, registration);
  json["warnings"] = OrderedJson::array();
  for (const Finding& finding : registration.findings) json["warnings"].push_back(findingText(finding));
  return json;
}

}  // namespace tiepoint::workbench
