#include "workbench/survey/delivery.h"

#include <algorithm>
#include <boost/filesystem/path.hpp>
#include <map>
#include <set>

#include "workbench/io/line_ends.h"
#include "workbench/io/stand_in_names.h"
#include "workbench/io/text_encoding.h"
#include "workbench/session/common_points_text.h"
#include "workbench/session/module_outputs.h"
#include "workbench/session/shown_groups.h"
#include "workbench/survey/adjusted_drawing.h"
#include "workbench/survey/cloud_moves.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;
namespace fs = boost::filesystem;

namespace {

bool isPlain(const OutputRequest& outputs) {
  return outputs.matrixFormat.value_or(MatrixFormat::plain) == MatrixFormat::plain;
}

/// A matrix and the group that it is of.
struct MatrixFile {
  std::string group;
  OutputTarget target;
};

/// Throws Refused (groupNotPortable) for a group after which no file can be named.
std::vector<MatrixFile> matrixFiles(const Registration& registration, const OutputRequest& outputs) {
  std::vector<MatrixFile> files;
  if (outputs.matrices.empty()) return files;
  for (const GroupOutcome& group : registration.groups) {
    // The module has no transformation of a base.
    const bool isExpected = isPlain(outputs) ? group.motion().has_value() : group.toCommon.has_value();
    if (!isExpected) continue;
    if (!fs::windows_name(group.name)) {
      throw Refused({RefusalKind::groupNotPortable, Field::matrices, outputs.matrices, group.name});
    }
    files.push_back({group.name, {Field::matrices, joinedPath(outputs.matrices, group.name + ".txt")}});
  }
  return files;
}

/// One delivery, step by step.
class Delivery {
 public:
  Delivery(Workbench& workbench_, OpenSurvey& survey_, const ResolvedRequest& resolved_, Progress& progress_)
      : workbench(workbench_),
        survey(survey_),
        registration(survey_.registration),
        resolved(resolved_),
        wanted(resolved_.request.outputs),
        progress(progress_),
        matrices(matrixFiles(survey_.registration, wanted)) {}

  void carryOut(const std::vector<OutputFile>& outputs) {
    requireFree();
    moveClouds();
    if (!resolved.request.changes.store.empty()) storeTargets();
    std::vector<OutputFile> files = moduleFiles();
    files.insert(files.end(), outputs.begin(), outputs.end());
    std::stable_sort(files.begin(), files.end(),
                     [](const OutputFile& a, const OutputFile& b) { return a.target.field < b.target.field; });
    const auto isCommon = [](const OutputFile& file) { return file.target.field <= Field::commonPoints; };
    const auto later = std::stable_partition(files.begin(), files.end(), isCommon);
    for (auto file = files.begin(); file != later; ++file) write(*file);
    if (!wanted.moved.empty()) writeCopies(registration.clouds, wanted.moved, wanted.force, progress);
    if (!wanted.matrices.empty()) makeFolder(Field::matrices, wanted.matrices);
    for (auto file = later; file != files.end(); ++file) write(*file);
  }

 private:
  void requireFree() {
    places = resolved.targets;
    for (const MatrixFile& file : matrices) {
      places.push_back(file.target);
      requireReplaceable(resolved.replacing, file.target);
    }
    requireDifferent(places);
  }

  /// Which copies there will be is known once the drawing has its clouds. Two of one name are refused
  /// when their turn comes.
  void requireFreeForCopies() {
    if (wanted.moved.empty()) return;
    std::set<std::string> copies;
    for (const CloudReport& cloud : registration.clouds) {
      if (!cloud.source.empty()) copies.insert(copyPath(cloud, wanted.moved));
    }
    for (const std::string& copy : copies) {
      places.emplace_back(Field::moved, copy);
      requireNotRead(resolved.replacing, places.back());
    }
    requireDifferent(places);
  }

  void moveClouds() {
    const OdDbDatabasePtr database = workbench.requireActiveDocument().database();
    addClouds(*database, resolved.clouds);
    const bool apply = resolved.request.changes.apply;
    registration.clouds = plannedMoves(*database, registration.groups);
    if (apply) applyMoves(*database);
    for (CloudReport& cloud : registration.clouds) {
      if (!apply) cloud.move = CloudMove::notAsked;
    }
    requireFreeForCopies();
  }

  /// The module knows the motions that it has found itself.
  void applyMoves(OdDbDatabase& database) {
    if (registration.adjustment) {
      tiepoint::workbench::applyMoves(database, registration.groups, registration.clouds, wanted.force);
    } else {
      tiepoint::workbench::applyMoves(database, survey.session().operations(), registration.clouds, wanted.force);
    }
  }

  void storeTargets() {
    const std::string& name = resolved.request.changes.store;
    const bool isStored = registration.adjustment
                              ? storeAdjustedTargets(*workbench.requireActiveDocument().database(), name,
                                                     registration.registered()->targets)
                              : survey.session().operations().storeCommonPoints(moduleGroupName(name));
    if (!isStored) throw Refused({RefusalKind::storeNameForbidden, Field::store, name});
    registration.storedGroup = name;
  }

  /// Of an adjustment, of which the module knows nothing.
  std::vector<OutputFile> adjustedFiles() {
    std::vector<OutputFile> files;
    if (resolved.commonPoints) {
      files.push_back({resolved.commonPoints->target,
                       [this] { return withSystemLineEnds(commonPointsText(registration.registered()->targets)); }});
    }
    return files;
  }

  /// What the module writes of itself.
  std::vector<OutputFile> moduleFiles() {
    if (registration.adjustment) return adjustedFiles();
    iMultiRegistrator& session = survey.session().operations();
    std::vector<OutputFile> files;
    if (resolved.commonPoints) {
      files.push_back({resolved.commonPoints->target, [&] {
                         const CommonPointsTarget& common = *resolved.commonPoints;
                         return commonPointsContent(session, common.name, common.target.path,
                                                    registration.registered()->targets);
                       }});
    }
    if (!isPlain(wanted)) addModuleMatrices(files);
    if (!wanted.report.empty()) {
      files.push_back({{Field::report, wanted.report}, [&] {
                         return reportContent(session, wanted.reportKind.value_or(ReportKind::results),
                                              survey.session().state(), wanted.report);
                       }});
    }
    return files;
  }

  void addModuleMatrices(std::vector<OutputFile>& files) {
    for (const MatrixFile& matrix : matrices) {
      files.push_back({matrix.target, [this, &matrix] { return moduleMatrix(matrix); }});
    }
  }

  /// The module writes all of them at once.
  std::string moduleMatrix(const MatrixFile& matrix) {
    if (moduleMatrices.empty()) {
      std::vector<std::string> groups;
      for (const MatrixFile& file : matrices) groups.push_back(file.group);
      moduleMatrices = matrixContents(survey.session().operations(), *wanted.matrixFormat, groups);
    }
    std::string content = moduleMatrices.at(matrix.group);
    if (!isWholeMatrix(content)) {
      throw Refused({RefusalKind::matrixCutShort, Field::matrices, matrix.target.path});
    }
    return content;
  }

  void write(const OutputFile& file) {
    putFile(resolved.replacing, file.target, file.content());
    const std::string& path = file.target.path;
    switch (file.target.field) {
      case Field::commonPoints:
        registration.files.commonPoints = path;
        break;
      case Field::matrices:
        registration.files.matrices.push_back(path);
        break;
      case Field::transforms:
        registration.files.transforms = path;
        break;
      case Field::report:
        registration.files.report = path;
        break;
      default:
        registration.files.picture = path;
    }
  }

  Workbench& workbench;
  OpenSurvey& survey;
  Registration& registration;
  const ResolvedRequest& resolved;
  const OutputRequest& wanted;
  Progress& progress;
  std::vector<MatrixFile> matrices;
  /// All that are named so far.
  std::vector<OutputTarget> places;
  std::map<std::string, std::string> moduleMatrices;
};

}  // namespace

namespace {

/// What shows an adjustment makes a drawing of its own, which a running transaction doesn't allow.
std::vector<OutputFile> withPicturesDrawn(std::vector<OutputFile> outputs) {
  for (OutputFile& file : outputs) {
    if (file.target.field != Field::picture) continue;
    file.content = [picture = file.content()] { return picture; };
  }
  return outputs;
}

}  // namespace

void deliver(Workbench& workbench, OpenSurvey& survey, const ResolvedRequest& resolved,
             const std::vector<OutputFile>& files, Progress& progress) {
  if (!survey.registration.registered()) return;
  const DrawingChanges& changes = resolved.request.changes;
  const std::vector<OutputFile> outputs = survey.registration.adjustment ? withPicturesDrawn(files) : files;
  const auto action = [&] { Delivery(workbench, survey, resolved, progress).carryOut(outputs); };
  if (changes.clouds.empty() && !changes.apply && changes.store.empty()) {
    action();
  } else {
    workbench.inTransaction(action);
  }
}

std::string withRegisteredShown(
    Workbench& workbench, OpenSurvey& survey,
    const std::function<std::string(const ShownGroups&, const std::vector<const OdGiDrawable*>&)>& use) {
  DrivenSession& session = survey.session();
  GroupIdSet hidden;
  for (const GroupOutcome& group : survey.registration.groups) {
    // A session is shown in every drawing that becomes active, where its own results would stand.
    if (survey.registration.adjustment || !group.motion()) hidden.insert(group.id);
  }
  session.operations().setGroupsVisible(hidden, false);
  std::string result = survey.registration.adjustment
                           ? withAdjustedShown(workbench, survey.registration, use)
                           : use(shownGroups(workbench, session.state(), hidden), drawablesOf(workbench));
  session.operations().setGroupsVisible(hidden, true);
  return result;
}

}  // namespace tiepoint::workbench
