#include "workbench/rpc/survey_requests.h"

#include <utility>
#include <variant>

#include "workbench/reading/header_columns.h"
#include "workbench/report/reading_text.h"

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
  files.isNamed = members.has("layout");
  if (files.isNamed) files.layout = members.read("layout", layoutFromJson);
  files.paths = members.read("paths", [](const Json& paths) { return elementsFromJson(paths, pathFromJson); });
  return files;
}

ColumnRequest columnsFromJson(const Json& value) {
  if (!value.is_string()) throw BadValue("must be a string");
  auto columns = columnRequestOf(value.get<std::string>());
  if (const auto* fault = std::get_if<ColumnsFault>(&columns)) {
    throw BadValue("names no columns: " + columnsFaultText(*fault));
  }
  return std::get<ColumnRequest>(columns);
}

DecimalMark decimalFromJson(const Json& value) {
  return chosen<DecimalMark>(value, {{"point", DecimalMark::point}, {"comma", DecimalMark::comma}});
}

TextEncoding encodingFromJson(const Json& value) {
  const auto encoding = value.is_string() ? encodingByName(value.get<std::string>()) : std::nullopt;
  if (!encoding) {
    throw BadValue("must be \"utf-8\", \"utf-16le\", \"utf-16be\", \"windows-1251\" or \"windows-1252\"");
  }
  return *encoding;
}

LengthUnit inputUnitFromJson(const Json& value) {
  return chosen<LengthUnit>(value, {{"m", LengthUnit::metre},
                                    {"mm", LengthUnit::millimetre},
                                    {"ft", LengthUnit::foot},
                                    {"usft", LengthUnit::usSurveyFoot}});
}

ReadingRequest readingFromJson(const Parameters& parameters) {
  ReadingRequest reading;
  if (parameters.has("columns")) reading.columns = parameters.read("columns", columnsFromJson);
  if (parameters.has("decimal")) reading.decimal = parameters.read("decimal", decimalFromJson);
  if (parameters.has("encoding")) reading.encoding = parameters.read("encoding", encodingFromJson);
  if (parameters.has("inputUnit")) reading.unit = parameters.read("inputUnit", inputUnitFromJson);
  return reading;
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

std::optional<double> numberOf(const Parameters& members, const char* name) {
  return members.has(name) ? std::optional(members.number(name)) : std::nullopt;
}

NamingRequest namingFromJson(const Json& value) {
  const Parameters members = membersOf(value, {"how", "limit", "sideTolerance", "minSideDifference", "closeness"});
  NamingRequest naming;
  naming.how = members.read("how", [](const Json& how) {
    return chosen<Naming>(
        how, {{"auto", Naming::automatic}, {"triangles", Naming::triangles}, {"distance", Naming::closeness}});
  });
  naming.limit = numberOf(members, "limit");
  naming.sideTolerance = numberOf(members, "sideTolerance");
  naming.minSideDifference = numberOf(members, "minSideDifference");
  naming.closeness = numberOf(members, "closeness");
  return naming;
}

RegistrationMethod methodFromJson(const Json& value) {
  return chosen<RegistrationMethod>(value, {{"adjust", RegistrationMethod::adjust},
                                            {"pairwise", RegistrationMethod::pairwise},
                                            {"iterative", RegistrationMethod::iterative}});
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

SigmaChoice sigmaFromJson(const Json& value) {
  const Parameters members = membersOf(value, {"group", "point", "sigma"});
  return {choiceOf(members), members.number("sigma")};
}

/// A point, never a whole group.
PointChoice tracedFromJson(const Json& value) {
  const Parameters members = membersOf(value, {"group", "point"});
  members.text("point");
  return choiceOf(members);
}

analysis::VarianceScale varianceFromJson(const Json& value) {
  return chosen<analysis::VarianceScale>(
      value, {{"a-priori", analysis::VarianceScale::aPriori}, {"a-posteriori", analysis::VarianceScale::aPosteriori}});
}

/// Names of groups, or the word for all of them.
void readLevel(const Parameters& parameters, AdjustmentRequest& adjustment) {
  if (!parameters.has("level")) return;
  adjustment.levelled = parameters.read("level", [&](const Json& level) {
    adjustment.allLevelled = level == "all";
    if (adjustment.allLevelled) return std::vector<std::string>();
    if (!level.is_array()) throw BadValue("must be an array of groups, or \"all\"");
    return elementsFromJson(level, textFromJson);
  });
}

AdjustmentRequest adjustmentFromJson(const Parameters& parameters) {
  AdjustmentRequest adjustment;
  adjustment.sigma = numberOf(parameters, "sigma");
  adjustment.sigmas = arrayOf(parameters, "sigmas", sigmaFromJson);
  adjustment.sigmasFile = pathOf(parameters, "sigmasFile");
  adjustment.controlFile = pathOf(parameters, "controlFile");
  readLevel(parameters, adjustment);
  adjustment.startFile = pathOf(parameters, "startFile");
  if (parameters.has("variance")) adjustment.variance = parameters.read("variance", varianceFromJson);
  adjustment.alpha = numberOf(parameters, "alpha");
  adjustment.power = numberOf(parameters, "power");
  adjustment.carryFile = pathOf(parameters, "carryFile");
  adjustment.trace = arrayOf(parameters, "trace", tracedFromJson);
  return adjustment;
}

}  // namespace

std::vector<std::string> registrationParameters() {
  return {"files",   "columns",     "decimal",     "encoding",    "inputUnit",     "base",        "exclude",
          "weights", "weightsFile", "naming",      "method",      "maxIterations", "convergence", "sigma",
          "sigmas",  "sigmasFile",  "controlFile", "level",       "startFile",     "variance",    "alpha",
          "power",   "carryFile",   "trace",       "keepCluster", "unit"};
}

RegistrationRequest registrationFromJson(const Parameters& parameters) {
  RegistrationRequest request;
  request.files = arrayOf(parameters, "files", filesFromJson);
  request.reading = readingFromJson(parameters);
  request.base = arrayOf(parameters, "base", textFromJson);
  request.exclude = arrayOf(parameters, "exclude", excludedFromJson);
  request.weights = arrayOf(parameters, "weights", weightFromJson);
  request.weightsFile = pathOf(parameters, "weightsFile");
  if (parameters.has("naming")) request.naming = parameters.read("naming", namingFromJson);
  if (parameters.has("method")) request.method = parameters.read("method", methodFromJson);
  if (parameters.has("maxIterations")) request.maxIterations = parameters.whole("maxIterations");
  request.convergence = numberOf(parameters, "convergence");
  request.adjustment = adjustmentFromJson(parameters);
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
