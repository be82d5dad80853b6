#include "workbench/rpc/survey_requests.h"

#include <utility>

namespace tiepoint::workbench {

namespace {

/// The value of that name. Throws BadValue that lists the names.
template <class Value>
Value chosen(const Json& value, const std::vector<std::pair<const char*, Value>>& choices) {
  std::string names;
  for (const auto& [name, choice] : choices) {
    if (value == name) return choice;
    names += (names.empty() ? "\"" : ", \"") + std::string(name) + "\"";
  }
  throw BadValue("must be one of " + names);
}

/// Each element of an array, or BadValue with its index.
template <class Convert>
auto elementsFromJson(const Json& value, Convert convert) {
  if (!value.is_array()) throw BadValue("must be an array");
  std::vector<decltype(convert(value))> elements;
  for (const Json& element : value) {
    try {
      elements.push_back(convert(element));
    } catch (const BadParameter& error) {
      throw BadValue("has a bad element at index " + std::to_string(elements.size()) + ": " + error.complaint());
    }
  }
  return elements;
}

Parameters membersOf(const Json& value, const std::vector<std::string>& known) {
  if (!value.is_object()) throw BadParameter("it", "must be an object");
  const Parameters members(value);
  members.requireKnown(known);
  return members;
}

LayoutFiles filesFromJson(const Json& value) {
  const Parameters members = membersOf(value, {"layout", "paths"});
  LayoutFiles files;
  if (members.has("layout")) files.layout = members.read("layout", layoutFromJson);
  files.paths = members.read("paths", [](const Json& paths) { return elementsFromJson(paths, pathFromJson); });
  return files;
}

PointChoice choiceOf(const Parameters& members) {
  PointRef ref{members.text("group")};
  if (members.has("point")) ref.point = members.text("point");
  PointChoice choice{{ref}, ref.group};
  if (ref.point) choice.given += ":" + *ref.point;
  return choice;
}

PointChoice excludedFromJson(const Json& value) { return choiceOf(membersOf(value, {"group", "point"})); }

WeightChoice weightFromJson(const Json& value) {
  const Parameters members = membersOf(value, {"group", "point", "weight"});
  return {choiceOf(members), members.number("weight")};
}

std::optional<double> lengthOf(const Parameters& members, const char* name) {
  return members.has(name) ? std::optional(members.number(name)) : std::nullopt;
}

NamingRequest namingFromJson(const Json& value) {
  const Parameters members = membersOf(value, {"how", "limit", "sideTolerance", "minSideDifference", "closeness"});
  NamingRequest naming;
  naming.how = members.read("how", [](const Json& how) {
    return chosen<Naming>(
        how, {{"auto", Naming::automatic}, {"triangles", Naming::triangles}, {"distance", Naming::closeness}});
  });
  naming.limit = lengthOf(members, "limit");
  naming.sideTolerance = lengthOf(members, "sideTolerance");
  naming.minSideDifference = lengthOf(members, "minSideDifference");
  naming.closeness = lengthOf(members, "closeness");
  return naming;
}

RegistrationMethod methodFromJson(const Json& value) {
  return chosen<RegistrationMethod>(
      value, {{"pairwise", RegistrationMethod::pairwise}, {"iterative", RegistrationMethod::iterative}});
}

Unit unitFromJson(const Json& value) { return chosen<Unit>(value, {{"m", Unit::metre}, {"mm", Unit::millimetre}}); }

MatrixFormat matrixFormatFromJson(const Json& value) {
  return chosen<MatrixFormat>(
      value, {{"plain", MatrixFormat::plain}, {"4x4", MatrixFormat::fourByFour}, {"trf", MatrixFormat::trf}});
}

ReportKind reportKindFromJson(const Json& value) {
  return chosen<ReportKind>(
      value, {{"results", ReportKind::results}, {"points", ReportKind::points}, {"groups", ReportKind::groups}});
}

CloudRequest cloudFromJson(const Json& value) {
  const Parameters members = membersOf(value, {"name", "path"});
  return {members.text("name"), members.path("path")};
}

std::string pathOf(const Parameters& parameters, const char* name) {
  return parameters.has(name) ? parameters.path(name) : std::string();
}

template <class Convert>
auto arrayOf(const Parameters& parameters, const char* name, Convert convert) {
  const auto all = [&](const Json& value) { return elementsFromJson(value, convert); };
  return parameters.has(name) ? parameters.read(name, all) : decltype(parameters.read(name, all))();
}

}  // namespace

std::vector<std::string> registrationParameters() {
  return {"files",  "base",          "exclude",     "weights",     "weightsFile", "naming",
          "method", "maxIterations", "convergence", "keepCluster", "unit"};
}

RegistrationRequest registrationFromJson(const Parameters& parameters) {
  RegistrationRequest request;
  request.files = arrayOf(parameters, "files", filesFromJson);
  request.base = arrayOf(parameters, "base", textFromJson);
  request.exclude = arrayOf(parameters, "exclude", excludedFromJson);
  request.weights = arrayOf(parameters, "weights", weightFromJson);
  request.weightsFile = pathOf(parameters, "weightsFile");
  if (parameters.has("naming")) request.naming = parameters.read("naming", namingFromJson);
  if (parameters.has("method")) request.method = parameters.read("method", methodFromJson);
  if (parameters.has("maxIterations")) request.maxIterations = parameters.whole("maxIterations");
  request.convergence = lengthOf(parameters, "convergence");
  if (parameters.has("keepCluster")) request.keepCluster = parameters.whole("keepCluster");
  if (parameters.has("unit")) request.unit = parameters.read("unit", unitFromJson);
  return request;
}

std::vector<std::string> deliveryParameters() {
  return {"clouds",       "apply",      "store",  "commonPoints", "moved", "matrices",
          "matrixFormat", "transforms", "report", "reportKind",   "force"};
}

DrawingChanges changesFromJson(const Parameters& parameters) {
  DrawingChanges changes;
  changes.clouds = arrayOf(parameters, "clouds", cloudFromJson);
  changes.apply = parameters.has("apply") && parameters.flag("apply");
  if (parameters.has("store")) changes.store = parameters.text("store");
  return changes;
}

OutputRequest outputsFromJson(const Parameters& parameters) {
  OutputRequest outputs;
  outputs.commonPoints = pathOf(parameters, "commonPoints");
  outputs.moved = pathOf(parameters, "moved");
  outputs.matrices = pathOf(parameters, "matrices");
  if (parameters.has("matrixFormat")) outputs.matrixFormat = parameters.read("matrixFormat", matrixFormatFromJson);
  outputs.transforms = pathOf(parameters, "transforms");
  outputs.report = pathOf(parameters, "report");
  if (parameters.has("reportKind")) outputs.reportKind = parameters.read("reportKind", reportKindFromJson);
  outputs.force = parameters.has("force") && parameters.flag("force");
  return outputs;
}

}  // namespace tiepoint::workbench
