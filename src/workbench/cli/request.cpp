#include "workbench/cli/request.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>
#include <variant>

#include "workbench/cli/exit_status.h"
#include "workbench/cli/picture_options.h"
#include "workbench/reading/header_columns.h"
#include "workbench/report/reading_text.h"
#include "workbench/survey/line_fields.h"
#include "workbench/survey/weights_file.h"

namespace tiepoint::workbench::cli {

namespace {

[[noreturn]] void refuse(const std::string& message) { throw CommandError(ExitStatus::usage, message); }

template <class Value, std::size_t count>
using Choices = std::array<std::pair<const char*, Value>, count>;

/// The value of that name; nothing for an empty text. `complaint` is the message for an unknown one.
template <class Value, std::size_t count>
std::optional<Value> chosen(const std::string& text, const Choices<Value, count>& choices,
                            const std::string& complaint) {
  if (text.empty()) return std::nullopt;
  for (const auto& [name, value] : choices) {
    if (text == name) return value;
  }
  refuse(complaint);
}

constexpr Choices<RegistrationMethod, 3> methods{{{"adjust", RegistrationMethod::adjust},
                                                  {"pairwise", RegistrationMethod::pairwise},
                                                  {"iterative", RegistrationMethod::iterative}}};
constexpr Choices<analysis::VarianceScale, 2> variances{
    {{"a-priori", analysis::VarianceScale::aPriori}, {"a-posteriori", analysis::VarianceScale::aPosteriori}}};
constexpr Choices<Naming, 3> namings{
    {{"auto", Naming::automatic}, {"triangles", Naming::triangles}, {"distance", Naming::closeness}}};
constexpr Choices<MatrixFormat, 3> matrixFormats{
    {{"plain", MatrixFormat::plain}, {"4x4", MatrixFormat::fourByFour}, {"trf", MatrixFormat::trf}}};
constexpr Choices<ReportKind, 3> reportKinds{
    {{"results", ReportKind::results}, {"points", ReportKind::points}, {"groups", ReportKind::groups}}};
constexpr Choices<DecimalMark, 2> decimalMarks{{{"point", DecimalMark::point}, {"comma", DecimalMark::comma}}};
constexpr Choices<Unit, 2> units{{{"m", Unit::metre}, {"mm", Unit::millimetre}}};

void addFiles(std::vector<LayoutFiles>& runs, Layout layout, const std::vector<std::string>& paths, bool isNamed) {
  if (paths.empty()) return;
  if (std::find(paths.begin(), paths.end(), "") != paths.end()) {
    refuse("a file name is empty; is a shell variable unset?");
  }
  auto run = std::find_if(runs.begin(), runs.end(),
                          [&](const LayoutFiles& r) { return r.layout == layout && r.isNamed == isNamed; });
  if (run == runs.end()) run = runs.insert(runs.end(), LayoutFiles{layout, {}, isNamed});
  run->paths.insert(run->paths.end(), paths.begin(), paths.end());
}

ColumnRequest requestedColumns(const FileOptions& options) {
  const bool namesLayout = !options.layout.empty() || !options.nxyz.empty() || !options.xyz.empty() ||
                           !options.xyzw.empty() || !options.nxyzw.empty();
  if (namesLayout) refuse("--columns says what the columns are, and so does a layout; leave one of the two out");
  auto columns = columnRequestOf(options.columns);
  if (const auto* fault = std::get_if<ColumnsFault>(&columns)) {
    refuse(fmt::format("--columns {}: {}", options.columns, columnsFaultText(*fault)));
  }
  return std::get<ColumnRequest>(columns);
}

TextEncoding textEncoding(const std::string& name) {
  if (const auto encoding = encodingByName(name)) return *encoding;
  refuse(fmt::format("--encoding {}: no such encoding; choose utf-8, utf-16le, utf-16be, windows-1251 or windows-1252",
                     name));
}

LengthUnit lengthUnit(const std::string& name) {
  if (const auto unit = lengthUnitByName(name)) return *unit;
  refuse(fmt::format("--input-unit {}: no such unit; choose m, mm, ft (0.3048 m) or usft (1200/3937 m)", name));
}

NamingRequest namingOf(const RegisterOptions& options) {
  NamingRequest naming;
  naming.how = chosen(options.match, namings,
                      fmt::format("--match {}: unknown; choose auto, triangles or distance", options.match))
                   .value_or(Naming::none);
  naming.limit = options.matchLimit;
  naming.sideTolerance = options.sideTolerance;
  naming.minSideDifference = options.minSideDifference;
  naming.closeness = options.tolerance;
  return naming;
}

/// A number for all measurements, or "GROUP=NUMBER"; a name may hold "=" itself.
void readSigma(const std::string& text, AdjustmentRequest& adjustment) {
  const std::size_t equals = text.rfind('=');
  const bool isOfGroup = equals != std::string::npos;
  if (equals == 0) refuse(fmt::format("--sigma {}: must have the form S or GROUP=S", text));
  const std::optional<double> sigma = numberOfText(isOfGroup ? text.substr(equals + 1) : text);
  if (!sigma) refuse(fmt::format("--sigma {}: not a number", text));
  if (isOfGroup) {
    const std::string group = text.substr(0, equals);
    adjustment.sigmas.push_back({{{PointRef{group}}, group}, *sigma});
    return;
  }
  if (adjustment.sigma) refuse(fmt::format("--sigma {}: there is a sigma for all already; leave one out", text));
  adjustment.sigma = sigma;
}

/// A point, never a whole group.
PointChoice tracedPoint(const std::string& text) {
  PointChoice choice = pointChoice(text);
  choice.readings.erase(choice.readings.begin());
  if (choice.readings.empty()) refuse(fmt::format("--trace {}: must have the form GROUP:POINT", text));
  return choice;
}

AdjustmentRequest adjustmentOf(const AdjustOptions& options) {
  AdjustmentRequest adjustment;
  for (const std::string& text : options.sigma) readSigma(text, adjustment);
  adjustment.sigmasFile = options.sigmasFile;
  adjustment.controlFile = options.controlFile;
  for (const std::string& level : options.level) {
    if (level == "all") {
      adjustment.allLevelled = true;
    } else {
      adjustment.levelled.push_back(level);
    }
  }
  adjustment.startFile = options.startFile;
  adjustment.variance =
      chosen(options.variance, variances,
             fmt::format("--variance {}: unknown; choose a-priori or a-posteriori", options.variance));
  adjustment.alpha = options.alpha;
  adjustment.power = options.power;
  adjustment.carryFile = options.carryFile;
  for (const std::string& text : options.trace) adjustment.trace.push_back(tracedPoint(text));
  return adjustment;
}

OutputRequest outputsOf(const RegisterOptions& options) {
  OutputRequest outputs;
  outputs.commonPoints = options.commonPoints;
  outputs.moved = options.moved;
  outputs.matrices = options.matrices;
  outputs.matrixFormat =
      chosen(options.matrixFormat, matrixFormats,
             fmt::format("--matrix-format {}: unknown; choose plain, 4x4 or trf", options.matrixFormat));
  outputs.transforms = options.transforms;
  outputs.report = options.report;
  outputs.reportKind =
      chosen(options.reportKind, reportKinds,
             fmt::format("--report-kind {}: unknown; choose results, points or groups", options.reportKind));
  outputs.picture = options.picture.file;
  if (const auto picture = pictureRequest(options.picture, registerPictureNames)) {
    outputs.pictureArea = static_cast<double>(picture->size.width) * picture->size.height;
  }
  outputs.force = options.force;
  return outputs;
}

/// Points, and what is done with them.
void readChoices(const RegisterOptions& options, RegistrationRequest& request) {
  request.base = options.base;
  for (const std::string& text : options.exclude) request.exclude.push_back(pointChoice(text));
  for (const std::string& text : options.weight) request.weights.push_back(weightChoice(text));
  request.weightsFile = options.weightsFile;
  request.keepCluster = options.keepCluster;
}

}  // namespace

std::vector<LayoutFiles> importRuns(const FileOptions& options) {
  const bool isNamed = !options.layout.empty();
  const auto layout = isNamed ? layoutByName(options.layout) : Layout::nxyz;
  if (!layout) {
    refuse(fmt::format("--layout {}: unknown; choose NXYZ, XYZ, XYZW or NXYZW", options.layout));
  }
  std::vector<LayoutFiles> runs;
  addFiles(runs, *layout, options.files, isNamed);
  addFiles(runs, Layout::nxyz, options.nxyz, true);
  addFiles(runs, Layout::xyz, options.xyz, true);
  addFiles(runs, Layout::xyzw, options.xyzw, true);
  addFiles(runs, Layout::nxyzw, options.nxyzw, true);
  return runs;
}

ReadingRequest readingRequest(const FileOptions& options) {
  ReadingRequest request;
  if (!options.columns.empty()) request.columns = requestedColumns(options);
  request.decimal = chosen(options.decimal, decimalMarks,
                           fmt::format("--decimal {}: no such mark; choose point or comma", options.decimal));
  if (!options.encoding.empty()) request.encoding = textEncoding(options.encoding);
  if (!options.inputUnit.empty()) request.unit = lengthUnit(options.inputUnit);
  return request;
}

std::vector<CloudRequest> cloudRequests(const std::vector<std::string>& texts, const std::string& option) {
  std::vector<CloudRequest> clouds;
  for (const std::string& text : texts) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0 || equals + 1 == text.size()) {
      refuse(fmt::format("{} {}: must have the form NAME=FILE", option, text));
    }
    clouds.push_back({text.substr(0, equals), text.substr(equals + 1)});
  }
  return clouds;
}

PointChoice pointChoice(const std::string& text) {
  PointChoice choice{{PointRef{text}}, text};
  for (std::size_t colon = text.find(':'); colon != std::string::npos; colon = text.find(':', colon + 1)) {
    choice.readings.push_back({text.substr(0, colon), text.substr(colon + 1)});
  }
  return choice;
}

WeightChoice weightChoice(const std::string& text) {
  const std::size_t equals = text.rfind('=');
  if (equals == std::string::npos || equals == 0) {
    refuse(fmt::format("--weight {}: must have the form GROUP:POINT=WEIGHT", text));
  }
  const auto weight = weightOfText(text.substr(equals + 1));
  if (!weight) refuse(fmt::format("--weight {}: the weight must be a number from 0 to 1", text));
  return {pointChoice(text.substr(0, equals)), *weight};
}

Unit unitOf(const std::string& text) {
  return chosen(text, units, fmt::format("--unit {}: unknown; choose m or mm", text)).value_or(Unit::unknown);
}

RegistrationRequest requestOf(const RegisterOptions& options) {
  RegistrationRequest request;
  request.unit = unitOf(options.unit);
  request.method = chosen(options.method, methods,
                          fmt::format("--method {}: unknown; choose adjust, pairwise or iterative", options.method))
                       .value_or(RegistrationMethod::adjust);
  request.maxIterations = options.maxIterations;
  request.convergence = options.convergence;
  request.adjustment = adjustmentOf(options.adjust);
  request.naming = namingOf(options);
  request.files = importRuns(options.files);
  request.reading = readingRequest(options.files);
  request.document = options.host.document;
  request.alsoRead = {options.host.profile, options.host.module};
  readChoices(options, request);
  request.changes.clouds = cloudRequests(options.clouds, "--cloud");
  request.changes.apply = options.apply;
  request.changes.store = options.store;
  request.outputs = outputsOf(options);
  return request;
}

}  // namespace tiepoint::workbench::cli
