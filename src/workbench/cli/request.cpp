#include "workbench/cli/request.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "workbench/cli/exit_status.h"
#include "workbench/cli/picture_options.h"
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

constexpr Choices<RegistrationMethod, 2> methods{
    {{"pairwise", RegistrationMethod::pairwise}, {"iterative", RegistrationMethod::iterative}}};
constexpr Choices<Naming, 3> namings{
    {{"auto", Naming::automatic}, {"triangles", Naming::triangles}, {"distance", Naming::closeness}}};
constexpr Choices<MatrixFormat, 3> matrixFormats{
    {{"plain", MatrixFormat::plain}, {"4x4", MatrixFormat::fourByFour}, {"trf", MatrixFormat::trf}}};
constexpr Choices<ReportKind, 3> reportKinds{
    {{"results", ReportKind::results}, {"points", ReportKind::points}, {"groups", ReportKind::groups}}};
constexpr Choices<Unit, 2> units{{{"m", Unit::metre}, {"mm", Unit::millimetre}}};

void addFiles(std::vector<LayoutFiles>& runs, Layout layout, const std::vector<std::string>& paths) {
  if (paths.empty()) return;
  if (std::find(paths.begin(), paths.end(), "") != paths.end()) {
    refuse("a file name is empty; is a shell variable unset?");
  }
  auto run = std::find_if(runs.begin(), runs.end(), [&](const LayoutFiles& r) { return r.layout == layout; });
  if (run == runs.end()) run = runs.insert(runs.end(), LayoutFiles{layout, {}});
  run->paths.insert(run->paths.end(), paths.begin(), paths.end());
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
  const auto layout = layoutByName(options.layout);
  if (!layout) {
    refuse(fmt::format("--layout {}: unknown; choose NXYZ, XYZ, XYZW or NXYZW", options.layout));
  }
  std::vector<LayoutFiles> runs;
  addFiles(runs, *layout, options.files);
  addFiles(runs, Layout::nxyz, options.nxyz);
  addFiles(runs, Layout::xyz, options.xyz);
  addFiles(runs, Layout::xyzw, options.xyzw);
  addFiles(runs, Layout::nxyzw, options.nxyzw);
  return runs;
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
  request.method =
      chosen(options.method, methods, fmt::format("--method {}: unknown; choose pairwise or iterative", options.method))
          .value_or(RegistrationMethod::pairwise);
  request.maxIterations = options.maxIterations;
  request.convergence = options.convergence;
  request.naming = namingOf(options);
  request.files = importRuns(options.files);
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
