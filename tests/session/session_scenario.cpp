#include "session/session_scenario.h"

#include "module/import_command.h"

namespace tiepoint::testing {

using namespace ZOR::reg;

namespace {

/// A target that two groups have without its name, so that the matchings find something to do.
const Target unnamed{"?", 4, 9, -3};

std::vector<Target> with(std::vector<Target> targets, const Target& further) {
  targets.push_back(further);
  return targets;
}

void setBase(Scene& scene) {
  scene.session->setBaseGroups({0}, scene.out.groups, scene.out.points, scene.out.inactiveGroups,
                               scene.out.inactivePoints);
}

void addGroups(Scene& scene, const GroupIdSet& groups) {
  std::list<RefPoint> added;
  scene.session->addGroups(groups, added, scene.out.inactiveGroups, scene.out.inactivePoints);
}

std::vector<ScenarioStep> beginning() {
  return {
      {"construction", [](Scene& s) { s.session = std::make_unique<MultiRegistrator>(); }},
      {"getAvailableGroups",
       [](Scene& s) {
         std::map<GroupId, std::string> groups;
         s.session->getAvailableGroups(groups);
       }},
      {"getPointClouds",
       [](Scene& s) {
         std::list<NamedId> clouds;
         s.session->getPointClouds(clouds);
       }},
      {"addGroups",
       [](Scene& s) {
         addGroups(s, {0, 1, 2});
       }},
      {"addGroups of a further group", [](Scene& s) { addGroups(s, {3}); }},
  };
}

std::vector<ScenarioStep> editing() {
  return {
      {"setBaseGroups", setBase},
      {"unsetBaseGroups",
       [](Scene& s) {
         s.session->unsetBaseGroups({0}, s.out.groups, s.out.points, s.out.inactiveGroups, s.out.inactivePoints);
       }},
      {"excludePoints",
       [](Scene& s) {
         s.session->excludePoints({0, 1}, s.out.groups, s.out.inactiveGroups, s.out.inactivePoints);
       }},
      {"includePoints",
       [](Scene& s) {
         s.session->includePoints({0, 1}, s.out.groups, s.out.inactiveGroups, s.out.inactivePoints);
       }},
      {"setPointsWeight",
       [](Scene& s) { s.session->setPointsWeight({2}, 0.5, s.out.inactiveGroups, s.out.inactivePoints); }},
      {"excludeGroups",
       [](Scene& s) { s.session->excludeGroups({1}, s.out.points, s.out.inactiveGroups, s.out.inactivePoints); }},
      {"includeGroups",
       [](Scene& s) { s.session->includeGroups({1}, s.out.points, s.out.inactiveGroups, s.out.inactivePoints); }},
      {"renameGroup", [](Scene& s) { s.session->renameGroup(2, "renamed", s.out.points); }},
      {"renamePoint",
       [](Scene& s) {
         GroupId group = 0;
         s.session->renamePoint(12, "new", group, s.out.inactiveGroups, s.out.inactivePoints);
       }},
      {"removePoints",
       [](Scene& s) { s.session->removePoints({12}, s.out.groups, s.out.inactiveGroups, s.out.inactivePoints); }},
      {"removeGroups",
       [](Scene& s) { s.session->removeGroups({3}, s.out.points, s.out.inactiveGroups, s.out.inactivePoints); }},
      {"setGroupsVisible", [](Scene& s) { s.session->setGroupsVisible({1}, false); }},
      {"zoomToGroup", [](Scene& s) { s.session->zoomToGroup(0); }},
      {"zoomToPoint", [](Scene& s) { s.session->zoomToPoint(1); }},
      {"zoomToAll", [](Scene& s) { s.session->zoomToAll(); }},
      {"getCommonPointNames",
       [](Scene& s) {
         std::list<NamedId> names;
         s.session->getCommonPointNames(names);
       }},
      {"getIterationLimits",
       [](Scene& s) {
         std::uint64_t iterations = 0;
         double criteria = 0.0;
         s.session->getIterationLimits(iterations, criteria);
       }},
      {"hasUnnamedPoints", [](Scene& s) { s.session->hasUnnamedPoints(); }},
  };
}

std::vector<ScenarioStep> solving() {
  return {
      {"matchGroupsByTriangles",
       [](Scene& s) {
         std::map<RefPointId, std::string> names;
         s.session->matchGroupsByTriangles({0, 1}, 1e-6, 0.1, names, s.out.inactiveGroups, s.out.inactivePoints);
       }},
      {"matchAllGroupsByTriangles",
       [](Scene& s) {
         std::map<RefPointId, std::string> names;
         s.session->matchAllGroupsByTriangles(1e-6, 0.1, names, s.out.inactiveGroups, s.out.inactivePoints);
       }},
      {"addGroups of one that doesn't link",
       [](Scene& s) {
         addGroups(s, {4, 5});
       }},
      {"registerPairwise of what doesn't link", [](Scene& s) { s.session->registerPairwise(s.discrepancies); }},
      {"getGroupClusters",
       [](Scene& s) {
         std::map<std::uint64_t, GroupIdSet> clusters;
         s.session->getGroupClusters(clusters);
       }},
      {"keepGroupCluster",
       [](Scene& s) { s.session->keepGroupCluster(0, s.out.points, s.out.inactiveGroups, s.out.inactivePoints); }},
      {"registerIterative", [](Scene& s) { s.session->registerIterative(20, 1e-3, s.discrepancies); }},
      {"clearResults", [](Scene& s) { s.session->clearResults(); }},
      {"setBaseGroups before a solve", setBase},
      {"registerPairwise", [](Scene& s) { s.session->registerPairwise(s.discrepancies); }},
      {"hasUnnamedPointsInRegisteredGroups", [](Scene& s) { s.session->hasUnnamedPointsInRegisteredGroups(); }},
      {"matchPointsByDistance",
       [](Scene& s) {
         std::map<RefPointId, std::string> names;
         s.session->matchPointsByDistance(0.1, names, s.out.inactiveGroups, s.out.inactivePoints);
       }},
      {"getMaxPointSpread", [](Scene& s) { s.session->getMaxPointSpread(); }},
      {"getPointSpreadHistogram",
       [](Scene& s) {
         std::vector<std::uint64_t> counts;
         std::vector<double> edges;
         s.session->getPointSpreadHistogram(counts, edges);
       }},
      {"zoomToGroup of a registered one", [](Scene& s) { s.session->zoomToGroup(1); }},
  };
}

std::vector<ScenarioStep> output() {
  return {
      {"getMatrixFormats",
       [](Scene& s) {
         std::map<std::uint64_t, std::string> formats;
         s.session->getMatrixFormats(formats);
       }},
      {"saveGroupMatrices", [](Scene& s) { s.session->saveGroupMatrices({1}, s.folder.narrow(), 1); }},
      {"saveAllMatrices", [](Scene& s) { s.session->saveAllMatrices(s.folder.narrow(), 0); }},
      {"getPointsReport",
       [](Scene& s) {
         s.session->getPointsReport({0, 1, 2});
       }},
      {"getGroupsReport",
       [](Scene& s) {
         s.session->getGroupsReport({0, 1});
       }},
      {"getResultsReport", [](Scene& s) { s.session->getResultsReport(); }},
      {"getReportFormats",
       [](Scene& s) {
         std::map<std::uint64_t, std::string> formats;
         s.session->getReportFormats(formats);
       }},
      {"saveReport", [](Scene& s) { s.session->saveReport((s.folder.path() / "report.html").string(), 1); }},
      {"saveCommonPointsFile", [](Scene& s) { s.session->saveCommonPointsFile("merged", s.folder.narrow()); }},
      {"storeCommonPoints", [](Scene& s) { s.session->storeCommonPoints("merged"); }},
      {"applyTransformToCloud", [](Scene& s) { s.session->applyTransformToCloud(1, 0); }},
      {"applyTransformations", [](Scene& s) { s.session->applyTransformations(); }},
  };
}

std::vector<ScenarioStep> ending() {
  return {
      {"import", [](Scene&) { importReferencePoints(); }},
      {"destruction", [](Scene& s) { s.session.reset(); }},
      {"construction of another session", [](Scene& s) { s.session = std::make_unique<MultiRegistrator>(); }},
      {"a document that comes", [](Scene& s) { s.host.openDocument(); }},
      {"a document that goes", [](Scene& s) { s.host.closeDocument(); }},
      {"destruction without a document of its own", [](Scene& s) { s.session.reset(); }},
  };
}

}  // namespace

Scene::Scene(const TemporaryFolder& files) : folder(files) {
  TestDocument& document = host.document();
  document.storeGroup("A", with(triangle("T1", "T2", "T3"), unnamed));
  document.storeGroup("B", with(triangle("T1", "T2", "T3", 5), {"?", 9, 9, -3}));
  document.storeGroup("C", triangle("T1", "T2", "T3", 9));
  document.storeGroup("D", triangle("T1", "T2", "T3", -4));
  document.storeGroup("E", triangle("U1", "U2", "U3", -4));
  document.storeGroup("F", triangle("U1", "U2", "U3", 2));
  document.addCloud("B");
  host.dialogAnswer.accepted = true;
  host.dialogAnswer.filterIndex = 1;
  host.dialogAnswer.paths = {(folder.path() / "imported.txt").wstring()};
}

const std::vector<ScenarioStep>& scenario() {
  static const std::vector<ScenarioStep> steps = [] {
    std::vector<ScenarioStep> all;
    for (const auto& part : {beginning(), editing(), solving(), output(), ending()}) {
      all.insert(all.end(), part.begin(), part.end());
    }
    return all;
  }();
  return steps;
}

std::string healthOf(RecordingHost& host) {
  MultiRegistrator session;
  std::map<GroupId, std::string> groups;
  session.getAvailableGroups(groups);
  std::list<RefPoint> added;
  Outputs out;
  session.addGroups({0, 1, 2}, added, out.inactiveGroups, out.inactivePoints);
  std::map<RefPointId, double> discrepancies;
  const bool isRegistered = session.registerPairwise(discrepancies);
  // The triangles are equal but for rounding.
  const bool fits = session.getMaxPointSpread() < 1e-9;
  return std::string(isRegistered ? "registered" : "not registered") + (fits ? ", all fits, " : ", not all fits, ") +
         std::to_string(added.size()) + " points, " + std::to_string(host.drawables().size()) + " shown";
}

}  // namespace tiepoint::testing
