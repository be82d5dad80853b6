#include "workbench/survey/resolve.h"

#include <boost/filesystem.hpp>
#include <boost/filesystem/path.hpp>

#include "workbench/io/stand_in_names.h"
#include "workbench/io/text_encoding.h"
#include "workbench/survey/carry_file.h"
#include "workbench/survey/cloud_moves.h"
#include "workbench/survey/control_file.h"
#include "workbench/survey/file_survey.h"
#include "workbench/survey/import_files.h"
#include "workbench/survey/point_choice.h"
#include "workbench/survey/request_checks.h"
#include "workbench/survey/sigmas_file.h"
#include "workbench/survey/start_file.h"
#include "workbench/survey/weights_file.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

namespace fs = boost::filesystem;

namespace {

constexpr const char* ending = ".txt";

std::string withoutEnding(const std::string& name) {
  const std::size_t length = name.size();
  return length > 4 && name.compare(length - 4, 4, ending) == 0 ? name.substr(0, length - 4) : name;
}

std::vector<std::string> inputsOf(const RegistrationRequest& request) {
  const AdjustmentRequest& adjustment = request.adjustment;
  std::vector<std::string> paths{request.weightsFile,    request.document,     adjustment.sigmasFile,
                                 adjustment.controlFile, adjustment.startFile, adjustment.carryFile};
  paths.insert(paths.end(), request.alsoRead.begin(), request.alsoRead.end());
  for (const LayoutFiles& run : request.files) paths.insert(paths.end(), run.paths.begin(), run.paths.end());
  for (const CloudRequest& cloud : request.changes.clouds) paths.push_back(cloud.path);
  return paths;
}

CommonPointsTarget commonPointsTarget(const std::string& file, const Replacing& replacing) {
  const fs::path path(wideFromUtf8(file));
  const std::string name = withoutEnding(path.filename().string());
  const std::string whole = (path.parent_path() / fs::path(wideFromUtf8(name + ending))).string();
  CommonPointsTarget common{moduleGroupName(name), {Field::commonPoints, whole, file}};
  if (!fs::windows_name(name)) {
    throw Refused({RefusalKind::nameNotPortable, Field::commonPoints, file, name});
  }
  requireFolder({Field::commonPoints, file});
  requireReplaceable(replacing, common.target);
  return common;
}

void addTarget(ResolvedRequest& resolved, Field field, const std::string& file) {
  if (file.empty()) return;
  resolved.targets.push_back({field, file});
  requireFolder(resolved.targets.back());
  requireReplaceable(resolved.replacing, resolved.targets.back());
}

void resolveTargets(ResolvedRequest& resolved) {
  const OutputRequest& outputs = resolved.request.outputs;
  resolved.replacing = {inputsOf(resolved.request), outputs.force};
  if (!outputs.commonPoints.empty()) {
    resolved.commonPoints = commonPointsTarget(outputs.commonPoints, resolved.replacing);
    resolved.targets.push_back(resolved.commonPoints->target);
  }
  addTarget(resolved, Field::transforms, outputs.transforms);
  addTarget(resolved, Field::report, outputs.report);
  addTarget(resolved, Field::picture, outputs.picture);
  requireDifferent(resolved.targets);
  if (!outputs.moved.empty() && !resolved.request.changes.apply) {
    throw Refused({RefusalKind::movedNeedsApply, Field::moved});
  }
}

/// The groups that the drawing will hold.
KnownNames groupsToCome(Workbench& workbench, const RegistrationRequest& request) {
  KnownNames names = storedNames(workbench);
  for (const std::string& group : groupsOfFiles(request.files)) names.pointsOf(sessionName(group));
  return names;
}

void checkGroups(const KnownNames& names, const RegistrationRequest& request) {
  for (const std::string& base : request.base) requireGroup(names, base, base, Field::base);
  for (const CloudRequest& cloud : request.changes.clouds) {
    requireGroup(names, cloud.name, cloud.name + "=" + cloud.path, Field::cloud);
  }
  for (const std::string& level : request.adjustment.levelled) requireGroup(names, level, level, Field::level);
}

/// Reads the files that give numbers to groups, points and targets.
void readNumbers(const KnownNames& groups, ResolvedRequest& resolved) {
  const RegistrationRequest& request = resolved.request;
  const AdjustmentRequest& adjustment = request.adjustment;
  if (!request.weightsFile.empty()) resolved.weights = readWeightsFile(request.weightsFile);
  resolved.weights.insert(resolved.weights.end(), request.weights.begin(), request.weights.end());
  if (!adjustment.sigmasFile.empty()) resolved.sigmas = readSigmasFile(adjustment.sigmasFile);
  resolved.sigmas.insert(resolved.sigmas.end(), adjustment.sigmas.begin(), adjustment.sigmas.end());
  if (!adjustment.controlFile.empty()) resolved.control = readControlFile(adjustment.controlFile);
  if (!adjustment.startFile.empty()) resolved.start = readStartFile(adjustment.startFile);
  if (!adjustment.carryFile.empty()) resolved.carry = readCarryFile(adjustment.carryFile);
  for (const StationPlace& place : resolved.carry) {
    requireGroup(groups, place.group, adjustment.carryFile, Field::carryFile);
  }
}

/// A group that the drawing has already stays as it is.
KnownNames namesToCome(Workbench& workbench, const KnownNames& ofFiles) {
  KnownNames names = storedNames(workbench);
  for (const std::string& group : ofFiles.groups()) {
    if (!names.find(group)) names.pointsOf(group) = *ofFiles.find(group);
  }
  return names;
}

void checkPoints(const KnownNames& names, const ResolvedRequest& resolved) {
  const RegistrationRequest& request = resolved.request;
  const auto toCome = request.naming.how == Naming::none ? NamesToCome::none : NamesToCome::some;
  for (const PointChoice& choice : request.exclude) requireKnown(names, choice, Field::exclude, toCome);
  for (const WeightChoice& choice : resolved.weights) requireKnown(names, choice.points, Field::weight, toCome);
  for (const SigmaChoice& choice : resolved.sigmas) requireKnown(names, choice.points, Field::sigma, toCome);
  for (const PointChoice& choice : request.adjustment.trace) requireKnown(names, choice, Field::trace, toCome);
  const std::string& store = request.changes.store;
  if (!store.empty() && names.find(sessionName(store))) {
    throw Refused({RefusalKind::storeNameTaken, Field::store, store});
  }
}

}  // namespace

ResolvedRequest resolve(Workbench& workbench, const RegistrationRequest& request, Findings& findings) {
  checkRequest(request);
  ResolvedRequest resolved;
  resolved.request = request;
  if (request.reading.unit) resolved.request.unit = Unit::metre;
  resolved.clouds = cloudsToAdd(request.changes.clouds);
  resolveTargets(resolved);
  openDrawing(workbench, request.document, !request.files.empty());
  const KnownNames groups = groupsToCome(workbench, request);
  for (const LayoutFiles& run : request.files) {
    for (const std::string& path : run.paths) requirePlainFile(path);
  }
  checkGroups(groups, request);
  readNumbers(groups, resolved);
  KnownNames ofFiles;
  if (!request.files.empty()) {
    ImportRehearsal rehearsal = rehearseImport(workbench, request.files, request.reading, findings);
    resolved.import = std::move(rehearsal.report);
    resolved.files = std::move(rehearsal.files);
    ofFiles = std::move(rehearsal.names);
  }
  const KnownNames names = namesToCome(workbench, ofFiles);
  if (names.groups().empty()) throw Refused({RefusalKind::drawingEmpty, Field::document});
  checkPoints(names, resolved);
  return resolved;
}

void openDrawing(Workbench& workbench, const std::string& document, bool hasFiles) {
  if (document.empty() && workbench.activeDocument()) return;
  if (document.empty() && !hasFiles) throw Refused({RefusalKind::nothingToRegister, Field::files});
  boost::system::error_code error;
  const bool isThere = !document.empty() && fs::exists(fs::path(wideFromUtf8(document)), error);
  if (isThere || !hasFiles) workbench.openDocument(document, false);
}

void makeDrawing(Workbench& workbench, const std::string& document) {
  if (workbench.activeDocument()) return;
  if (document.empty()) {
    workbench.openTemporaryDocument();
  } else {
    workbench.openDocument(document);
  }
}

}  // namespace tiepoint::workbench
