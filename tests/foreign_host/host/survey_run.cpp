#include "survey_run.h"

#include <algorithm>

#include "result_files.h"

namespace foreign {

using namespace ZOR::reg;

namespace {

constexpr std::uint64_t htmlReport = 1;
constexpr const char* matrixLayout = "PolyWorks 4x4 Matrix Files (*.txt)";
constexpr const char* targetsName = "merged";

std::string probeOf(const std::string& group) { return "probe " + group; }

}  // namespace

SurveyRun::SurveyRun(Host& host_, const Module& module_, const Options& options_, Steps& steps_)
    : host(host_), module(module_), options(options_), steps(steps_) {
  std::filesystem::remove_all(options.folder);
  std::filesystem::create_directories(options.folder);
  host.messageLine.lines.clear();
}

SurveyRun::~SurveyRun() { endSession(); }

void SurveyRun::runAll() {
  importFiles();
  beginSession();
  choose();
  look();
  solve();
  takeResults();
  solveAgain();
  endSession();
}

void SurveyRun::importFiles() {
  for (const ImportFiles& files : options.imports) {
    host.dialog.filterIndex = files.filterIndex;
    host.dialog.paths.clear();
    for (const std::filesystem::path& path : files.paths) host.dialog.paths.push_back(path.wstring());
    steps.take("import", [&] {
      if (!host.commands.has(importCommand)) return false;
      host.commands.run(importCommand);
      return true;
    });
  }
  found.messages = host.messageLine.lines;
}

void SurveyRun::beginSession() {
  for (int i = 0; i < 2 && !session; ++i) {
    steps.take("beginning a session", [&] {
      session = module.newSession();
      return session != nullptr;
    });
  }
}

void SurveyRun::choose() {
  if (!session) return;
  steps.take("limits from the profile", [&] {
    std::uint64_t iterations = 0;
    double criterion = 0.0;
    session->getIterationLimits(iterations, criterion);
    return host.hasProfile ? iterations == profileIterations && criterion == profileConvergence
                           : iterations == 100 && criterion == 0.001;
  });
  steps.take("available groups", [&] { return session->getAvailableGroups(found.groups); });
  steps.take("adding groups", [&] {
    GroupIdSet inactiveGroups;
    return session->addGroups(groupIds(), found.points, inactiveGroups, found.inactivePoints);
  });
  steps.take("names", [&] { return session->getCommonPointNames(found.names); });
  steps.take("a base", [&] {
    GroupIdSet chosen, inactiveGroups;
    for (const auto& [group, name] : found.groups) {
      if (name == options.base) chosen.insert(group);
    }
    RefPointIdSet basePoints;
    session->setBaseGroups(chosen, found.baseGroups, basePoints, inactiveGroups, found.inactivePoints);
    return found.baseGroups == chosen && !chosen.empty();
  });
  switchPoint();
}

void SurveyRun::switchPoint() {
  if (found.points.empty()) return;
  const RefPointIdSet one = {found.points.back().id};
  GroupIdSet excludedGroups, inactiveGroups;
  steps.take("excluding a point", [&] {
    session->excludePoints(one, excludedGroups, inactiveGroups, found.inactivePoints);
    return found.inactivePoints.count(*one.begin()) != 0;
  });
  steps.take("including a point", [&] {
    session->includePoints(one, excludedGroups, inactiveGroups, found.inactivePoints);
    return true;
  });
}

void SurveyRun::look() {
  if (!session || found.points.empty()) return;
  const RefPoint& point = found.points.front();
  const auto zoom = [&](const char* name, auto operation) {
    steps.take(name, [&] {
      operation();
      return true;
    });
  };
  zoom("hiding a group", [&] { session->setGroupsVisible({point.groupId}, false); });
  zoom("showing a group", [&] { session->setGroupsVisible({point.groupId}, true); });
  zoom("zoom to a group", [&] { session->zoomToGroup(point.groupId); });
  zoom("zoom to a point", [&] { session->zoomToPoint(point.id); });
  zoom("zoom to all", [&] { session->zoomToAll(); });
}

void SurveyRun::solve() {
  if (!session) return;
  steps.take("registering", [&] { return session->registerPairwise(found.discrepancies); });
  steps.take("drawing", [&] {
    Document* const document = host.activeDocument();
    if (!document) return false;
    const Drawn drawn = document->service().draw();
    return drawn.lines == 3 * found.points.size() && drawn.texts == found.points.size() && drawn.withoutPlace == 0;
  });
}

void SurveyRun::takeResults() {
  if (!session || !host.activeDocument()) return;
  probeTransforms();
  moveClouds();
  steps.take("spread", [&] {
    found.maxSpread = session->getMaxPointSpread();
    return session->getPointSpreadHistogram(found.spreadCounts, found.spreadEdges);
  });
  storeTargets();
  takeReports();
  saveFiles();
}

void SurveyRun::solveAgain() {
  if (!session) return;
  steps.take("solving again", [&] {
    std::map<RefPointId, double> discrepancies;
    session->clearResults();
    return session->registerPairwise(discrepancies) && discrepancies == found.discrepancies;
  });
}

void SurveyRun::endSession() {
  if (!session) return;
  steps.take("ending the session", [&] {
    session.reset();
    return true;
  });
}

void SurveyRun::probeTransforms() {
  Document& document = *host.activeDocument();
  for (const auto& [group, name] : found.groups) {
    document.addCloud(name);
    document.addCloud(probeOf(name));
  }
  steps.take("clouds", [&] {
    session->getPointClouds(clouds);
    return clouds.size() == 2 * found.groups.size();
  });
  for (const auto& [group, name] : found.groups) {
    // The base stays where it is, and has no transformation.
    const bool isBase = found.baseGroups.count(group) != 0;
    steps.take("moving a probe", [&, id = group, probe = probeOf(name)] {
      const bool isMoved = session->applyTransformToCloud(id, cloudNumber(probe));
      if (isMoved) found.transforms.emplace(id, document.cloudMatrix(probe));
      return isMoved != isBase;
    });
  }
}

void SurveyRun::moveClouds() {
  const Document& document = *host.activeDocument();
  steps.take("moving the clouds", [&] {
    if (!session->applyTransformations()) return false;
    return std::all_of(found.groups.begin(), found.groups.end(), [&](const auto& group) {
      const auto motion = found.transforms.find(group.first);
      const OdGeMatrix3d expected = motion == found.transforms.end() ? OdGeMatrix3d() : motion->second;
      return document.cloudMatrix(group.second) == expected;
    });
  });
}

void SurveyRun::storeTargets() {
  const Document& document = *host.activeDocument();
  steps.take("storing the merged targets", [&] {
    const bool isStored = session->storeCommonPoints(targetsName);
    found.commonPoints = document.groupPoints(targetsName);
    return isStored && document.groupCount() == found.groups.size() + 1;
  });
}

void SurveyRun::takeReports() {
  steps.take("report of points", [&] {
    RefPointIdSet ids;
    for (const RefPoint& point : found.points) ids.insert(point.id);
    return !session->getPointsReport(ids).empty();
  });
  steps.take("report of groups", [&] { return !session->getGroupsReport(groupIds()).empty(); });
  steps.take("report of results", [&] {
    const std::filesystem::path file = options.folder / "report.html";
    const std::wstring report = session->getResultsReport();
    return session->saveReport(file.string(), htmlReport) && reportFileHolds(file, report);
  });
}

void SurveyRun::saveFiles() {
  steps.take("matrix files", [&] {
    std::map<std::uint64_t, std::string> formats;
    session->getMatrixFormats(formats);
    const auto format =
        std::find_if(formats.begin(), formats.end(), [](const auto& entry) { return entry.second == matrixLayout; });
    return format != formats.end() && session->saveAllMatrices(options.folder.string(), format->first) &&
           matrixFilesHold(options.folder, found);
  });
  steps.take("file of merged targets", [&] {
    return session->saveCommonPointsFile(targetsName, options.folder.string()) &&
           commonPointsFileHolds(options.folder / (std::string(targetsName) + ".txt"), found);
  });
}

/// Beyond all clouds when there is none of that name.
std::uint64_t SurveyRun::cloudNumber(const std::string& name) {
  const auto cloud =
      std::find_if(clouds.begin(), clouds.end(), [&](const NamedId& named) { return named.name == name; });
  return cloud == clouds.end() ? clouds.size() : cloud->id;
}

GroupIdSet SurveyRun::groupIds() const {
  GroupIdSet ids;
  for (const auto& entry : found.groups) ids.insert(entry.first);
  return ids;
}

}  // namespace foreign
